#include "Surroundings.h"

#include <windows.h>

#include <fstream>
#include <stdexcept>
#include <system_error>

#include "StoredUsers.h"
#include "client/Dialogs.h"
#include "com/ComPtr.h"

namespace krx::bench {

namespace {

std::filesystem::path MakeFolder(int files, int folders) {
  const auto root = std::filesystem::temp_directory_path() /
                    ("krx-bench-" + std::to_string(GetCurrentProcessId()));
  for (int i = 0; i < folders; ++i)
    std::filesystem::create_directories(root / ("folder" + std::to_string(100 + i)));
  for (int i = 0; i < files; ++i)
    std::ofstream(root / ("file" + std::to_string(100000 + i) + ".txt"));
  return root;
}

std::filesystem::path EnvironmentFolder() {
  wchar_t name[1024] = L"";
  GetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", name, 1024);
  return name;
}

}  // namespace

Surroundings::Surroundings(int users, int files, int folders)
    : folder_(MakeFolder(files, folders)) {
  HaveUsers(users);
}

Surroundings::~Surroundings() {
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void Surroundings::HaveUsers(int count) {
  constexpr int kOneByOne = 500;
  if (count > kOneByOne) {
    HaveUsers(kOneByOne);
    StoredUsers(EnvironmentFolder()).Fill(users_, count);
    users_ = count;
    return;
  }
  using client::BasicString;
  com::ComPtr<IUserAdministration> users;
  CoCreateInstance(__uuidof(UserAdministration), nullptr, CLSCTX_INPROC_SERVER,
                   __uuidof(IUserAdministration), users.PutVoid());
  if (!users) throw std::runtime_error("there is no user administration");
  for (; users_ < count; ++users_) {
    const std::wstring number = std::to_wstring(users_);
    LONG result = -1;
    users->CreateUser(BasicString(L"operator" + number), BasicString(L"Operator Number " + number),
                      BasicString(L"Shift of line 7"), BasicString(L"Line-seven-" + number),
                      BasicString(L"Operator"), 0, 0, &result);
    if (result != 0)
      throw std::runtime_error("user " + std::to_string(users_) +
                               " is refused: " + std::to_string(result));
  }
}

}  // namespace krx::bench
