#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "client/Dialogs.h"

namespace krx::client {

// What the selection dialogs are given.
struct Selection {
  const BasicString Folder;
  VARIANT_BOOL AllowChangeUp;
};

// A dialog method, called with arguments that suit any test; returns its status as an early-bound
// client gets it. `chosen` is the path that a selection dialog returns, or the words of a failure;
// other results are dropped.
struct Method {
  std::string Name;
  std::function<HRESULT(IKRXDialog&, const Selection&, std::wstring& chosen)> Open;
};

// Names it where a test fails.
inline void PrintTo(const Method& method, std::ostream* out) {
  *out << method.Name;
}

// All of them, in the order of the interface, as the component beside this program describes them.
const std::vector<Method>& Methods();

}  // namespace krx::client
