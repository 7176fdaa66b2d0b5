#include "runtime/users/win32/Win32Account.h"

#include <windows.h>

#include "com/Errors.h"
#include "com/Text.h"

namespace krx::runtime {
namespace {

constexpr DWORD kLongestAccount = 256;

void CheckDone(BOOL done) {
  if (!done) com::Check(HRESULT_FROM_WIN32(GetLastError()));
}

}  // namespace

Sid OfThisAccount() {
  HANDLE token = nullptr;
  CheckDone(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
  Sid buffer(sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE);
  DWORD size = 0;
  const BOOL told = GetTokenInformation(token, TokenUser, buffer.data(),
                                        static_cast<DWORD>(buffer.size()), &size);
  const DWORD error = GetLastError();
  CloseHandle(token);
  SetLastError(error);
  CheckDone(told);
  auto* const sid =
      static_cast<std::uint8_t*>(reinterpret_cast<TOKEN_USER*>(buffer.data())->User.Sid);
  return {sid, sid + GetLengthSid(sid)};
}

// By its identifier: the library that tells names at once leaves memory behind with every loading
// on some systems.
String NameOfThisAccount() {
  Sid sid = OfThisAccount();
  wchar_t name[kLongestAccount] = L"";
  wchar_t domain[kLongestAccount] = L"";
  DWORD name_size = kLongestAccount;
  DWORD domain_size = kLongestAccount;
  SID_NAME_USE use{};
  CheckDone(LookupAccountSidW(nullptr, sid.data(), name, &name_size, domain, &domain_size, &use));
  return com::FromWide(domain) + u"\\" + com::FromWide(name);
}

}  // namespace krx::runtime
