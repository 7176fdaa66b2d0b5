#include "runtime/core/TextTable.h"

#include <algorithm>

#include "runtime/core/FieldText.h"
#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"

namespace krx::runtime {
namespace {

// Reads one text file; every refusal names the place.
class Reader {
 public:
  Reader(const String& file, std::string_view bytes) : lines_(file, bytes, kMalformedTexts) {}

  std::map<TextTable::Name, String> Read() {
    while (lines_.Next())
      ReadLine(lines_.Line());
    return std::move(entries_);
  }

 private:
  void ReadLine(std::string_view line) {
    if (line.empty() || line.front() == '#') return;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) lines_.Refuse(u"\"=\" is missing between key and text");
    TextTable::Name name = ReadName(Trimmed(line.substr(0, equals)));
    String text = Unescaped(lines_.Text(Trimmed(line.substr(equals + 1))));
    if (text.empty()) lines_.Refuse(u"the text is empty");
    const auto [first, added] = first_lines_.emplace(name, lines_.Number());
    if (!added) lines_.Refuse(u"the key stands already in line " + ToString(first->second));
    entries_.emplace(std::move(name), std::move(text));
  }

  TextTable::Name ReadName(std::string_view name) {
    const std::size_t blank = std::min(name.find_first_of(LineReader::kBlanks), name.size());
    const std::string_view group = name.substr(0, blank);
    const std::string_view key = Trimmed(name.substr(blank));
    const auto number = WholeNumber<std::int32_t>(group);
    if (!number) lines_.Refuse(u"the line does not begin with the number of a text group");
    if (key.empty()) lines_.Refuse(u"the key is missing");
    if (key.find_first_of(LineReader::kBlanks) != std::string_view::npos)
      lines_.Refuse(u"the key contains a blank");
    return {*number, lines_.Text(key)};
  }

  String Unescaped(StringView text) {
    String plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] != u'\\') {
        plain += text[i];
        continue;
      }
      const char16_t escaped = ++i < text.size() ? text[i] : u'\0';
      if (escaped != u'n' && escaped != u'\\')
        lines_.Refuse(u"after \"\\\" only \"n\" or \"\\\" may stand");
      plain += escaped == u'n' ? u'\n' : u'\\';
    }
    return plain;
  }

  LineReader lines_;
  std::map<TextTable::Name, std::int32_t> first_lines_;
  std::map<TextTable::Name, String> entries_;
};

}  // namespace

void TextTable::Add(const String& file, std::string_view bytes) {
  std::map<Name, String> added = Reader(file, bytes).Read();
  added.merge(entries_);
  entries_ = std::move(added);
}

const String* TextTable::Find(StringView key, std::int32_t group) const {
  const auto found = entries_.find({group, String(key)});
  return found == entries_.end() ? nullptr : &found->second;
}

}  // namespace krx::runtime
