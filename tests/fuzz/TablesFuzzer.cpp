#include <map>

#include "Source.h"
#include "base/Utf8.h"
#include "panel/KeyboardLayout.h"
#include "runtime/core/FieldText.h"
#include "runtime/core/FontClasses.h"
#include "runtime/core/Languages.h"
#include "runtime/core/PanelFile.h"
#include "runtime/core/References.h"

// Files that a plant writes: texts of languages, settings of panels, layouts of keyboards; and the
// references and names that lead into them.

namespace krx::fuzz {
namespace {

using namespace krx::runtime;

constexpr std::string_view kLineWords[] = {"\n",
                                           "=",
                                           "-103 ",
                                           "-105 ",
                                           "#",
                                           "\\n",
                                           "\\\\",
                                           "key",
                                           " = ",
                                           "\r\n",
                                           "\t",
                                           "Keyboard = ",
                                           "touch",
                                           "Theme = ",
                                           "dark",
                                           "true",
                                           "false",
                                           "1",
                                           "0.5",
                                           "nan",
                                           "inf",
                                           "\xEF\xBB\xBF",
                                           "ä",
                                           "\xF0\x9F\x98\x80",
                                           "ShowCountdown = ",
                                           "FirstAnswerDelay = ",
                                           "e1",
                                           "-0",
                                           "99999999999"};
constexpr std::string_view kLayoutWords[] = {"\n",
                                             "row: ",
                                             "spare: ",
                                             " ",
                                             "{shift}",
                                             "{page*1.5} ",
                                             "{hide} ",
                                             "{space*6} ",
                                             "{enter*2.5}",
                                             "{backspace} ",
                                             "title = ABC\n",
                                             "keyboard = K\n",
                                             "aA:",
                                             "é",
                                             ":É ",
                                             "{",
                                             "}",
                                             "*",
                                             "=",
                                             ":",
                                             "1.5",
                                             "shift = Shift\n",
                                             "\xF0\x9F\x98\x80",
                                             "qQ wW eE ",
                                             "#",
                                             "hide = H\n",
                                             "nan",
                                             "inf",
                                             "-1",
                                             "row: {page} {hide} {space} {backspace} {enter}\n",
                                             "space = S\nbackspace = B\nenter = E\n"};
constexpr StringView kNameWords[] = {u"@", u":",     u"-103",        u"-105", u"key", u"de",
                                     u"-", u"pt-br", u"KRPanelText", u"\\",   u"n",   u"@@"};

std::string Serialized(const TextTable& table) {
  std::string text;
  for (const auto& [name, entry] : table.Entries()) {
    const String escaped = ReplaceAll(ReplaceAll(entry, u"\\", u"\\\\"), u"\n", u"\\n");
    text += std::to_string(name.first) + " " + ToUtf8(name.second) + " = " + ToUtf8(escaped) + "\n";
  }
  return text;
}

// What is written as the format says it is read as it was, and a refused file changes nothing.
void CheckTable(std::string_view bytes) {
  TextTable table;
  table.Add(u"first", "-103 key = text\n");
  const TextTable before = table;
  if (!Allowed([&] { table.Add(u"second", bytes); })) {
    Require(table.Entries() == before.Entries());
    return;
  }
  TextTable again;
  again.Add(u"again", Serialized(table));
  Require(again.Entries() == table.Entries());
}

struct Files : TextSource {
  std::vector<TextFile> Read(const String& language) override {
    const auto found = Known.find(language);
    return found == Known.end() ? std::vector<TextFile>() : std::vector<TextFile>{found->second};
  }
  String SystemLanguage() override { return System; }

  std::map<String, TextFile> Known;
  String System;
};

void CheckLanguages(Source& source, std::string_view bytes) {
  Files files;
  files.Known[u"en"] = {u"en.txt", "-103 key = English\n-105 key = Box\n"};
  files.Known[u"de"] = {u"de.txt", std::string(bytes)};
  files.System = source.Text(kNameWords);
  Languages languages(files);
  const String name = source.Text(kNameWords);
  Allowed([&] { languages.Select(name); });
  String current;
  if (!Allowed([&] { current = languages.Current(); })) return;
  const String reference = source.Text(kNameWords);
  String text;
  const bool resolved = Allowed([&] { text = ResolveReference(languages, reference); });
  Require(resolved == reference.starts_with(u"@"));
  Require(!resolved || !text.empty());
  Require(languages.Current() == current);
  const FontClass& font = FontClassOf(name);
  Require(font.Name == name || font.Name == FontClasses().front().Name);
}

void CheckPanelFile(std::string_view bytes) {
  krx::PanelSettings settings;
  if (!Allowed([&] { settings = ReadPanelFile(u"panel.conf", bytes, {}); })) return;
  Require(settings.FirstAnswerDelay >= 0 && settings.FirstAnswerDelay <= kLongestAnswerDelay);
  Require(KeyboardUseNamed(NameOf(settings.Keyboard)) == settings.Keyboard);
  Require(ThemeNamed(NameOf(settings.Theme)) == settings.Theme);
}

void CheckLayout(std::string_view bytes) {
  try {
    const panel::KeyboardLayout layout = panel::ParseLayout(bytes);
    Require(!layout.Rows.empty());
    for (const panel::LayoutRow& row : layout.Rows) {
      float width = 0;
      for (const panel::LayoutKey& key : row.Keys)
        width += key.Width;
      Require(width > layout.Width - 0.01f && width < layout.Width + 0.01f);
    }
  } catch (const panel::LayoutError&) {
  }
}

void CheckFields(std::string_view bytes) {
  if (const std::optional<String> text = FromUtf8(bytes)) {
    Require(ToUtf8(*text) == bytes);
    Require(UnescapedField(EscapedField(*text)) == *text);
  }
  if (const std::optional<String> text = UnescapedField(bytes))
    Require(!IsWellFormed(*text) || UnescapedField(EscapedField(*text)) == *text);
  if (const auto some = FromHex(bytes)) Require(FromHex(ToHex(*some)) == some);
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  const std::uint8_t kind = source.Byte();
  if (kind % 4 == 3) {
    CheckLayout(kind < 128 ? source.Bytes(kLayoutWords) : source.Raw(size));
    return 0;
  }
  const std::string bytes = kind < 192 ? source.Bytes(kLineWords) : source.Raw(size / 2);
  CheckTable(bytes);
  CheckPanelFile(bytes);
  CheckFields(bytes);
  CheckLanguages(source, bytes);
  return 0;
}
