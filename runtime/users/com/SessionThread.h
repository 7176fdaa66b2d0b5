#pragma once

#include "runtime/core/Languages.h"

namespace krx::runtime {

// Where the notices get their texts; to be called before anybody logs on.
void TellSessionsBy(Languages& (*languages)()) noexcept;

// Accompanies the session that has just begun, where the rules ask for anything that concerns it:
// on a thread of its own, because the client's may wait or work for long, and because what is shown
// there must not come between a dialog and its operator. The thread ends with the session and keeps
// the module's code until then; nothing waits for it. Never fails: a session that cannot be
// accompanied is recorded.
void AccompanySession() noexcept;

// To be called when the session has ended.
void SessionHasEnded() noexcept;

}  // namespace krx::runtime
