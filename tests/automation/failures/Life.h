#pragma once

#include <string>

#include "client/Methods.h"

namespace krx::failures {

// What a call has come to.
struct Outcome {
  HRESULT Status = S_OK;
  std::string Words;  // of a failure
  bool Seen = false;  // a dialog
};

// One life of a client on its thread: it creates a dialog object, calls a method, whose dialog is
// given up, and lets the object go. The n-th call of the component into the system fails; 0: none.
struct Life {
  Life(const client::Method& method, long n, bool for_good);

  Outcome First;
  Outcome Next;    // of a second call, while nothing fails
  long Calls = 0;  // into the system, up to the end of the first one
};

}  // namespace krx::failures
