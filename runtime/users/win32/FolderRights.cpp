#include "runtime/users/win32/FolderRights.h"

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <string>
#include <vector>

#include "com/Errors.h"
#include "com/Text.h"
#include "runtime/core/KorvelError.h"
#include "runtime/users/win32/Win32Account.h"

namespace krx::runtime {
namespace {

// Everything for administrators and the system, and what follows for the panel's account.
constexpr const wchar_t* kOthers = L"D:PAI(A;OICI;FA;;;BA)(A;OICI;FA;;;SY)";
constexpr const wchar_t* kInFolder = L"(A;;0x1200ab;;;";        // list, add a file; delete none
constexpr const wchar_t* kOfNewFiles = L"(A;OIIO;0x13019f;;;";  // read, write, delete: the journal
constexpr const wchar_t* kOfDatabase = L"(A;;0x12019f;;;";      // read and write
constexpr const wchar_t* kOfRules = L"(A;;0x120089;;;";         // read
constexpr const wchar_t* kOfKeys = L"(A;OICI;0x1200a9;;;";      // list and read

[[noreturn]] void Failed(const std::filesystem::path& file, DWORD error) {
  throw KorvelError(kUnableToProvision,
                    file.u16string() + u": " + com::SystemMessage(HRESULT_FROM_WIN32(error)));
}

[[noreturn]] void Refuse(const std::filesystem::path& file, const String& reason) {
  throw KorvelError(kUnableToProvision, file.u16string() + u": " + reason);
}

// Memory that the system's security functions hand out.
class Local {
 public:
  Local() = default;
  ~Local() { LocalFree(memory_); }
  Local(const Local&) = delete;
  Local& operator=(const Local&) = delete;
  void** Put() { return &memory_; }
  void* Get() const { return memory_; }

 private:
  void* memory_ = nullptr;
};

Sid OfAccount(const String& account) {
  Sid sid(SECURITY_MAX_SID_SIZE);
  std::wstring domain(256, L'\0');
  auto size = static_cast<DWORD>(sid.size());
  auto domain_size = static_cast<DWORD>(domain.size());
  SID_NAME_USE use{};
  if (!LookupAccountNameW(nullptr, com::ToWide(account).c_str(), sid.data(), &size, domain.data(),
                          &domain_size, &use)) {
    Refuse(std::filesystem::path(account), u"there is no such account");
  }
  return sid;
}

std::wstring Notation(Sid sid) {
  Local text;
  if (!ConvertSidToStringSidW(sid.data(), reinterpret_cast<LPWSTR*>(text.Put())))
    Failed({}, GetLastError());
  return static_cast<const wchar_t*>(text.Get());
}

// The end of an entry for the panel's account; empty: this account.
std::wstring NotationOf(const String& panel_account) {
  return Notation(panel_account.empty() ? OfThisAccount() : OfAccount(panel_account)) + L")";
}

bool IsTrusted(PSID owner) {
  Sid own = OfThisAccount();
  return EqualSid(owner, own.data()) || IsWellKnownSid(owner, WinBuiltinAdministratorsSid) ||
         IsWellKnownSid(owner, WinLocalSystemSid);
}

void RequireOwner(const std::filesystem::path& file) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) Failed(file, GetLastError());
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) Refuse(file, u"it points elsewhere");
  PSID owner = nullptr;
  Local descriptor;
  const DWORD error =
      GetNamedSecurityInfoW(file.c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                            nullptr, nullptr, nullptr, descriptor.Put());
  if (error != ERROR_SUCCESS) Failed(file, error);
  if (!IsTrusted(owner)) Refuse(file, u"it was prepared by somebody who is no administrator");
}

void SetAccess(const std::filesystem::path& file, const std::wstring& rights) {
  Local descriptor;
  if (!ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.c_str(), SDDL_REVISION_1,
                                                            descriptor.Put(), nullptr)) {
    Failed(file, GetLastError());
  }
  BOOL present = FALSE;
  BOOL defaulted = FALSE;
  PACL list = nullptr;
  GetSecurityDescriptorDacl(descriptor.Get(), &present, &list, &defaulted);
  std::wstring name = file.wstring();
  const DWORD error = SetNamedSecurityInfoW(
      name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION,
      nullptr, nullptr, list, nullptr);
  if (error != ERROR_SUCCESS) Failed(file, error);
}

}  // namespace

void PrepareFolder(const std::filesystem::path& folder) {
  std::error_code failure;
  std::filesystem::create_directories(folder, failure);
  if (failure) Refuse(folder, u"it cannot be made");
  RequireOwner(folder.parent_path());
  RequireOwner(folder);
  for (const auto& file : std::filesystem::directory_iterator(folder))
    RequireOwner(file.path());
}

void SetRights(const std::filesystem::path& folder, const String& panel_account) {
  const std::wstring panel = NotationOf(panel_account);
  SetAccess(folder, std::wstring(kOthers) + kInFolder + panel + kOfNewFiles + panel);
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    const bool is_database = file.path().filename() == "users.db";
    SetAccess(file.path(), std::wstring(kOthers) + (is_database ? kOfDatabase : kOfRules) + panel);
  }
}

void SetRightsOfKeys(const std::filesystem::path& folder, const String& panel_account) {
  const std::wstring rights = std::wstring(kOthers) + kOfKeys + NotationOf(panel_account);
  SetAccess(folder, rights);
  for (const auto& file : std::filesystem::directory_iterator(folder))
    SetAccess(file.path(), rights);
}

void SetAsideForAdministrators(const std::filesystem::path& file) {
  SetAccess(file, L"D:PAI(A;;FA;;;BA)(A;;FA;;;SY)");
}

}  // namespace krx::runtime
