#include "runtime/users/win32/Win32Origin.h"

#include <windows.h>

#include <filesystem>
#include <string>

#include "base/Error.h"
#include "com/Text.h"
#include "runtime/users/win32/Win32Account.h"

namespace krx::runtime {
namespace {

String Station() {
  wchar_t name[256] = L"";
  DWORD size = 256;
  return GetComputerNameExW(ComputerNameDnsHostname, name, &size) ? com::FromWide(name) : String();
}

String Account() {
  try {
    return NameOfThisAccount();
  } catch (const Error&) {
    return {};
  }
}

String Process() {
  wchar_t file[32768] = L"";
  GetModuleFileNameW(nullptr, file, 32768);
  return std::filesystem::path(file).filename().u16string() + u" (" +
         ToString(static_cast<std::int32_t>(GetCurrentProcessId())) + u")";
}

}  // namespace

AuditOrigin OriginOfProcess() {
  return {Station(), Process(), Account()};
}

}  // namespace krx::runtime
