#pragma once

#include "base/Error.h"

namespace krx::service {

// Runs one statement; when it fails, the failure is passed over and the caller goes on with its
// next statement. Returns whether the statement succeeded.
template <class Statement>
bool Skip(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace krx::service
