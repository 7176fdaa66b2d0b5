#include "SelfProcess.h"

#include <array>

namespace krx::test {

DWORD RunSelf(const std::wstring& filter, const wchar_t* variable, const std::wstring& value) {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  std::wstring command = L"\"" + std::wstring(path.data()) + L"\" --gtest_filter=" + filter;
  SetEnvironmentVariableW(variable, value.c_str());
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  DWORD code = 99;
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                     &process)) {
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  SetEnvironmentVariableW(variable, nullptr);
  return code;
}

std::optional<std::uint64_t> GivenNumber(const wchar_t* variable) {
  std::array<wchar_t, 32> text{};
  if (GetEnvironmentVariableW(variable, text.data(), static_cast<DWORD>(text.size())) == 0)
    return std::nullopt;
  return std::stoull(text.data());
}

}  // namespace krx::test
