#pragma once

#include <cstdint>
#include <utility>

#include "runtime/users/UserManagement.h"

namespace krx::runtime {

// Ends an operation with a result code; the reason goes to the audit records.
struct Refusal {
  std::int32_t Code;
  String Reason;
};

// The codes of an operation for what is no refusal.
struct FailureCodes {
  std::int32_t UnableToSave;
  std::int32_t CallFailed;
};

// Runs an operation that answers every failure by a result code and records why it did not
// succeed; until then the operation may complete `entry`. It records its own success together with
// what it changes.
template <class Operation>
std::int32_t Recorded(UserManagement& management, FailureCodes codes, AuditEntry& entry,
                      Operation&& operation) {
  std::int32_t code = codes.CallFailed;
  try {
    return operation();
  } catch (const Refusal& refusal) {
    code = refusal.Code;
    entry.Outcome = u"refused: " + refusal.Reason;
  } catch (const UnableToSave& failure) {
    code = codes.UnableToSave;
    entry.Outcome = u"failed: " + failure.Description();
  } catch (const Error& failure) {
    entry.Outcome = u"failed: " + failure.Description();
  }
  management.RecordFailure(entry);
  return code;
}

}  // namespace krx::runtime
