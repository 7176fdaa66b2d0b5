#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/Error.h"
#include "files/FileFilter.h"
#include "folders/FilePattern.h"
#include "folders/FolderPath.h"
#include "ports/headless/Operator.h"
#include "service/KRXDialog.h"
#include "ui/Keyboard.h"

// What callers pass to the selection dialogs: start directories, filters, names and titles. The
// first byte chooses the dialog and how its lists arrive, the second what the operator does; the
// rest is four texts, parted by line feeds.

namespace {

using krx::String;
using krx::StringView;
using krx::headless::Operator;

void Require(bool holds) {
  if (!holds) std::abort();
}

struct Texts : krx::host::TextService {
  String GetText(StringView key, std::int32_t) override { return String(key); }
  String ResolveText(StringView reference) override {
    if (reference.size() % 2 == 0) throw krx::RuntimeError(5, u"No such text");
    return String(reference.substr(1));
  }
};

struct Fonts : krx::host::FontService {
  void SelectFontClass(StringView) override {}
  krx::Font GetFont() override { return {}; }
};

struct Runtime : krx::host::Runtime {
  std::unique_ptr<krx::host::TextService> CreateTextService() override {
    return std::make_unique<::Texts>();
  }
  std::unique_ptr<krx::host::FontService> CreateFontService() override {
    return std::make_unique<::Fonts>();
  }
  std::unique_ptr<krx::host::UserSession> CreateUserSession() override { return nullptr; }
  std::unique_ptr<krx::host::UserAdministration> CreateUserAdministration() override {
    return nullptr;
  }
  std::unique_ptr<krx::host::UserClassAdministration> CreateUserClassAdministration() override {
    return nullptr;
  }
};

void Furnish(krx::headless::SimulatedFiles& machine) {
  machine.CurrentFolder = u"C:\\a\\b";
  machine.AddDrive(u"D:", krx::folders::DriveType::Optical, false);
  for (const StringView folder :
       {u"C:\\a\\b\\c", u"C:\\a b", u"C:\\a.", u"\\\\s\\t\\a", u"C:\\a\\shut"})
    machine.AddFolder(folder);
  machine.Deny(u"C:\\a\\shut");
  machine.AddLink(u"C:\\a\\l", u"C:\\a");
  for (const StringView file : {u"C:\\x.txt", u"C:\\a\\b\\y.bmp", u"C:\\a\\z"})
    machine.AddFile(file);
}

// The texts between line feeds; the last one takes the rest.
std::array<String, 4> TextsOf(const std::uint8_t* data, std::size_t size) {
  String all(size / sizeof(char16_t), u'\0');
  std::memcpy(all.data(), data, all.size() * sizeof(char16_t));
  std::array<String, 4> texts;
  StringView rest = all;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const std::size_t end =
        i + 1 < texts.size() ? std::min(rest.find(u'\n'), rest.size()) : rest.size();
    texts[i] = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return texts;
}

void Wander(Operator& op, unsigned choices) {
  auto& list = op.Get<krx::ui::RowList>(u"dirSelect");
  if (list.Visible()) {
    list.SetFocus();
    for (int i = 0; i < 4; ++i, choices >>= 2)
      op.Press(krx::ui::kKeyLeft + static_cast<int>(choices % 4));
    if (list.RowCount() > 0) op.ClickRow(u"dirSelect", list.RowCount() - 1);
    op.Wait(std::chrono::milliseconds(50));
  }
  op.Click(op.Get(u"keyOK").Enabled() ? u"keyOK" : u"keyCancel");
}

void OpenDialog(unsigned kind, unsigned choices, const std::array<String, 4>& texts) {
  krx::headless::HeadlessPlatform platform;
  Furnish(platform.Machine);
  platform.Machine.Slice = kind / 8 % 3;
  Runtime runtime;
  krx::service::Apartment apartment(platform, runtime);
  const auto dialog = krx::service::KRXDialog::Create(apartment);
  const auto& [start, filter, name, title] = texts;
  const bool free = (kind & 4) != 0;
  const bool directory = kind % 4 == 0;
  platform.Expect(directory ? u"FSelectDirectory" : u"FFileSelect",
                  [choices](Operator& op) { Wander(op, choices); });
  if (directory) {
    dialog->KRSelectDirectory({start, free, title});
  } else {
    const String file = dialog->KROpenFile({name, start, filter, free, title});
    Require(file.empty() == name.empty());
    Require(file.ends_with(u'\\' + name) || file.empty());
  }
  Require(platform.Complaints().empty());
}

void CheckFilter(const String& text) {
  const krx::files::FileTypes types = krx::files::ParseFilter(text);
  const auto bars = static_cast<std::size_t>(std::count(text.begin(), text.end(), u'|'));
  Require(types.Descriptions.size() == bars / 2 + 1);
  Require(types.Patterns.size() == (bars + 1) / 2);
  static const krx::headless::HeadlessPlatform platform;  // remembers what it has folded
  for (const String& pattern : types.Patterns) {
    const krx::folders::FilePattern compiled(pattern, platform.Folding());
    Require(!compiled.MatchesAll() || compiled.Matches(u"any"));
    compiled.Matches(text);
  }
}

void CheckPath(const String& text) {
  krx::headless::SimulatedFiles machine;
  machine.CurrentFolder = u"C:\\a";
  String full;
  try {
    full = krx::folders::FullPath(text, machine);
  } catch (const krx::Error&) {
    return;
  }
  Require(full.size() >= krx::folders::RootLength(full));
  Require(krx::folders::FullPath(full, machine) == full);
  Require(krx::folders::Levels(full).back() == full.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::array<String, 4> texts = TextsOf(data + 2, size - 2);
  CheckPath(texts[0]);
  CheckFilter(texts[1]);
  OpenDialog(data[0], data[1], texts);
  return 0;
}
