// The packages register by tables, and those say what the components themselves would write.

#include <algorithm>
#include <cwctype>

#include "driver/Window.h"
#include "install/Installer.h"

namespace krx::install {
namespace {

namespace fs = std::filesystem;

// What is compared of a class's key: its name without regard to case, and for x86 without the
// folder of that width; nothing for what only the system writes where it registers a type library
// for both widths, and no table of a package for one width: where a component for x64 lies, for
// programs that cannot load it; the interfaces of a user's x86 programs, which some platforms have
// in one place with those of x64; and for x86 the part of x64.
std::wstring Compared(std::wstring path, Scope scope) {
  std::transform(path.begin(), path.end(), path.begin(), ::towlower);
  const std::wstring folder = L"\\wow6432node";
  const bool other = path.starts_with(folder + L"\\");
  // The folders of all classes may be new as well; whatever is ours has a dot or a brace in its
  // name.
  if (path.find_first_of(L"{.") == std::wstring::npos) return {};
#ifdef _WIN64
  const bool where = path.find(L"\\1.0\\0") != std::wstring::npos;
  return other && (where || scope == Scope::User) ? std::wstring() : path;
#else
  if (other) return path.substr(folder.size());
  const bool apart = path.starts_with(L"\\interface\\") || path.starts_with(L"\\clsid\\");
  return apart && scope == Scope::Machine ? std::wstring() : path;
#endif
}

// The classes that have come between two pictures, without the folder that the components lie in.
Picture Written(const Picture& before, const Picture& after, const fs::path& folder, Scope scope) {
  Picture written;
  for (const auto& [path, content] : after) {
    const std::wstring name = Compared(path, scope);
    if (name.empty() || before.contains(path) || path.starts_with(L"\\Installer\\")) continue;
    std::wstring text = content;
    if (const auto at = text.find(folder.wstring()); at != std::wstring::npos)
      text.replace(at, folder.wstring().size(), L"FOLDER");
    // Tables cannot name a folder without the backslash at its end.
    if (text.ends_with(L"\\")) text.pop_back();
    written[name] = text;
  }
  return written;
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
  // The components write for the machine: what the user's packages write differs in the place
  // alone.
  const Scope place = sizeof(void*) == 8 ? For() : Scope::Machine;
  const Picture registered =
      Written(bare, TakePictureOf(everybodys), drive::ProgramFolder(), place);
  EachComponent(L"/u");
  Install(Version::New);
  const Picture installed = Written(own_bare, TakePictureOf(Classes()), Folder(), For());
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
