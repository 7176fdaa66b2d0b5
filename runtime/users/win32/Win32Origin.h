#pragma once

#include "runtime/users/store/AuditTrail.h"

namespace krx::runtime {

// This machine, this program with its process's number, and the account that it runs under. What
// the system does not tell is empty.
AuditOrigin OriginOfProcess();

}  // namespace krx::runtime
