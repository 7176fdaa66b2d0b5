// A client that never has enough: opens one dialog method again as soon as it returns, until it is
// ended. Arguments: the method, and the folder for the selection dialogs, which confine the
// operator every other time. Prints a line when it is ready, one for each call that fails, and one
// for each path that a confined operator has chosen.

#include <windows.h>

#include <algorithm>
#include <exception>
#include <string>

#include "client/Methods.h"
#include "client/Report.h"
#include "driver/Window.h"
#include "soak/Administrator.h"

namespace {

using krx::client::Method;
using krx::client::Methods;
using krx::client::Say;

void SayFailed(const std::string& why) {
  Say("failed: " + why);
}

void Serve(const Method& method, const wchar_t* folder) {
  krx::client::Dialogs dialogs;
  if (!dialogs) return SayFailed("no dialog object");
  Say("ready");
  std::wstring chosen;
  for (bool confined = false;; confined = !confined) {
    const HRESULT status = method.Open(
        *dialogs.operator->(),
        {krx::client::BasicString(folder), confined ? VARIANT_FALSE : VARIANT_TRUE}, chosen);
    if (FAILED(status)) SayFailed(krx::client::Hex(status));
    if (confined && !chosen.empty()) Say("confined: " + krx::drive::Narrow(chosen));
  }
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count != 3) return 2;
  const std::wstring name = arguments[1];
  const auto method = std::find_if(Methods().begin(), Methods().end(), [&](const Method& m) {
    return std::wstring(m.Name.begin(), m.Name.end()) == name;
  });
  if (method == Methods().end()) return 2;
  const krx::client::Automation automation;
  try {
    // Some dialogs open for an administrator only.
    const krx::soak::Administrator administrator;
    Serve(*method, arguments[2]);
  } catch (const std::exception& error) {
    Say(error.what());
  }
  return 1;
}
