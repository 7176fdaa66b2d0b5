// The packages register by tables, and those say what the components themselves would write.

#include <algorithm>
#include <cwctype>

#include "driver/Window.h"
#include "install/Installer.h"

namespace krx::install {
namespace {

namespace fs = std::filesystem;

// The classes that have come between two pictures, without the folder that the components lie in.
Picture Written(const Picture& before, const Picture& after, const fs::path& folder) {
  Picture written;
  for (const auto& [path, content] : after) {
    if (before.contains(path) || path.starts_with(L"\\Installer\\")) continue;
    std::wstring text = content;
    if (const auto at = text.find(folder.wstring()); at != std::wstring::npos)
      text.replace(at, folder.wstring().size(), L"FOLDER");
    // Tables cannot name a folder without the backslash at its end.
    if (text.ends_with(L"\\")) text.pop_back();
    std::wstring name = path;
    std::transform(name.begin(), name.end(), name.begin(), ::towlower);
    // The folders of all classes may be new as well; whatever is ours has a dot or a brace in its
    // name.
    if (name.find_first_of(L"{.") != std::wstring::npos) written[name] = text;
  }
  return written;
}

// Written by the system where it registers a type library for both widths, and no table of a
// package for one width writes it: where a component for x64 lies, for programs that cannot load
// it; the interfaces of a user's x86 programs, where the platform has them in one place with those
// of x64; and for x86 the part of x64.
bool IsForTheOtherWidth(const std::wstring& path, [[maybe_unused]] Scope scope) {
  const bool other = path.starts_with(L"\\wow6432node\\");
#ifdef _WIN64
  return other && (scope == Scope::User || path.find(L"\\1.0\\0") != std::wstring::npos);
#else
  return !other;
#endif
}

class Tables : public InstallTest {
 protected:
  static void EachComponent(const std::wstring& option) {
    for (const wchar_t* name : {L"KorvelRuntime.dll", L"KRXDialogs.dll"})
      ASSERT_EQ(RunToEnd(L"regsvr32.exe /s " + option + L" \"" +
                         (drive::ProgramFolder() / name).wstring() + L"\""),
                0u);
  }
};

TEST_P(Tables, WriteWhatTheComponentsWouldWriteThemselves) {
  const std::wstring everybodys = L"HKLM\\Software\\Classes";
  const Picture bare = TakePictureOf(everybodys);
  const Picture own_bare = TakePictureOf(Classes());
  EachComponent(L"");
  Picture registered = Written(bare, TakePictureOf(everybodys), drive::ProgramFolder());
  EachComponent(L"/u");
  Install(Version::New);
  const Picture installed = Written(own_bare, TakePictureOf(Classes()), Folder());
  std::erase_if(registered,
                [this](const auto& entry) { return IsForTheOtherWidth(entry.first, GetParam()); });
  ASSERT_GT(registered.size(), 100u);
  for (const std::string& line : Changes(registered, installed))
    ADD_FAILURE() << line;
}

INSTANTIATE_TEST_SUITE_P(For, Tables, ::testing::Values(Scope::Machine, Scope::User),
                         [](const auto& scope) {
                           return scope.param == Scope::Machine ? "TheMachine" : "TheUser";
                         });

}  // namespace
}  // namespace krx::install
