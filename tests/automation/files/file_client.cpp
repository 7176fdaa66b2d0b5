// A client of the selection dialogs that passes and prints any text: method, start directory,
// filter, file name, "free" or "confined", title. Prints the result in UTF-8, or a failure's
// status.

#include <windows.h>

#include <string>
#include <vector>

#include "client/Dialogs.h"
#include "client/Report.h"
#include "com/Text.h"

namespace {

using krx::client::BasicString;
using krx::client::Hex;
using krx::client::Say;

HRESULT Open(krx::client::Dialogs& dialogs, const std::vector<std::wstring>& arguments,
             BSTR* result) {
  const BasicString start(arguments[1]);
  const BasicString filter(arguments[2]);
  const BasicString name(arguments[3]);
  const BasicString title(arguments[5]);
  const VARIANT_BOOL free = arguments[4] == L"free" ? VARIANT_TRUE : VARIANT_FALSE;
  if (arguments[0] == L"directory") return dialogs->KRSelectDirectory(start, free, title, result);
  if (arguments[0] == L"save")
    return dialogs->KRSaveFileAs(name, start, filter, free, title, result);
  return dialogs->KROpenFile(name, start, filter, free, title, result);
}

}  // namespace

int wmain(int count, wchar_t** values) {
  std::vector<std::wstring> arguments(values + 1, values + count);
  arguments.resize(6);
  const krx::client::Automation automation;
  krx::client::Dialogs dialogs;
  if (!dialogs) return 3;
  BSTR result = nullptr;
  const HRESULT status = Open(dialogs, arguments, &result);
  Say(FAILED(status) ? Hex(status) : '[' + krx::ToUtf8(krx::com::FromBstr(result)) + ']');
  SysFreeString(result);
  return 0;
}
