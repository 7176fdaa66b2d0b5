#include <array>

#include "Plant.h"
#include "Source.h"
#include "ports/headless/Operator.h"
#include "service/KRXDialog.h"
#include "ui/Keyboard.h"

// The selection dialogs with what callers pass to them: start directories, filters, names and
// titles; and an operator who wanders about.

namespace krx::fuzz {
namespace {

using headless::Operator;

constexpr StringView kWords[] = {
    u"C:\\", u"\\",       u"/",        u"..",          u".",           u"a", u"b",
    u"c",    u"C:\\a\\b", u"\\\\s\\t", u"\\\\s\\t\\a", u"D:\\",        u"|", u"*.txt",
    u"*.*",  u"*",        u"Text",     u"x.txt",       u"C:\\a\\shut", u" ", u"@"};

void Furnish(headless::SimulatedFiles& machine) {
  machine.CurrentFolder = u"C:\\a\\b";
  machine.AddDrive(u"D:", folders::DriveType::Optical, false);
  for (const StringView folder :
       {u"C:\\a\\b\\c", u"C:\\a b", u"C:\\a.", u"\\\\s\\t\\a", u"C:\\a\\shut"})
    machine.AddFolder(folder);
  machine.Deny(u"C:\\a\\shut");
  machine.AddLink(u"C:\\a\\l", u"C:\\a");
  for (const StringView file : {u"C:\\x.txt", u"C:\\a\\b\\y.bmp", u"C:\\a\\z"})
    machine.AddFile(file);
}

void Wander(Operator& op, unsigned choices) {
  auto& list = op.Get<ui::RowList>(u"dirSelect");
  if (list.Visible()) {
    list.SetFocus();
    for (int i = 0; i < 4; ++i, choices >>= 2)
      op.Press(ui::kKeyLeft + static_cast<int>(choices % 4));
    if (list.RowCount() > 0) op.ClickRow(u"dirSelect", list.RowCount() - 1);
    op.Wait(std::chrono::milliseconds(50));
  }
  op.Click(op.Get(u"keyOK").Enabled() ? u"keyOK" : u"keyCancel");
}

void OpenDialog(Source& source) {
  headless::HeadlessPlatform platform;
  Furnish(platform.Machine);
  const std::size_t kind = source.Byte();
  const unsigned choices = source.Byte();
  platform.Machine.Slice = kind / 8 % 3;
  Plant runtime;
  service::Apartment apartment(platform, runtime);
  const auto dialog = service::KRXDialog::Create(apartment);
  const bool free = (kind & 4) != 0;
  const bool directory = kind % 4 == 0;
  const String start = source.Text(kWords);
  const String title = source.Text(kWords);
  platform.Expect(directory ? u"FSelectDirectory" : u"FFileSelect",
                  [choices](Operator& op) { Wander(op, choices); });
  if (directory) {
    dialog->KRSelectDirectory({start, free, title});
  } else {
    const String name = source.Text(kWords);
    const String file = dialog->KROpenFile({name, start, source.Text(kWords), free, title});
    Require(file.empty() == name.empty());
    Require(file.ends_with(u'\\' + name) || file.empty());
  }
  Require(platform.Complaints().empty());
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krx::fuzz::Source source(data, size);
  krx::fuzz::OpenDialog(source);
  return 0;
}
