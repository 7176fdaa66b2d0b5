#include "ports/win32/System.h"

#include <array>

namespace krx::win32 {

Error SystemError(StringView attempted, DWORD code) {
  std::array<wchar_t, 256> words{};
  const DWORD length =
      FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0,
                     words.data(), static_cast<DWORD>(words.size()), nullptr);
  String text(attempted);
  text += u": ";
  text += Narrow(words.data(), length);
  while (!text.empty() && (text.back() == u'\r' || text.back() == u'\n'))
    text.pop_back();
  return Error(static_cast<std::uint32_t>(HRESULT_FROM_WIN32(code)), std::move(text));
}

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(reinterpret_cast<const void*>(&ThisModule)), &module);
  return module;
}

}  // namespace krx::win32
