#include "runtime/core/TextTable.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "runtime/core/Failure.h"
#include "runtime/core/Utf8.h"

namespace krx::runtime {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Reads one text file line by line; every refusal names the place.
class Reader {
 public:
  Reader(const String& file, std::string_view bytes) : file_(file), rest_(bytes) {
    if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
  }

  std::map<TextTable::Name, String> Read() {
    while (!rest_.empty()) {
      ++line_;
      const std::size_t end = std::min(rest_.find('\n'), rest_.size());
      ReadLine(Trimmed(rest_.substr(0, end)));
      rest_.remove_prefix(std::min(end + 1, rest_.size()));
    }
    return std::move(entries_);
  }

 private:
  void ReadLine(std::string_view line) {
    if (line.empty() || line.front() == '#') return;
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) Refuse(u"\"=\" is missing between key and text");
    TextTable::Name name = ReadName(Trimmed(line.substr(0, equals)));
    String text = Unescaped(Decoded(Trimmed(line.substr(equals + 1))));
    if (text.empty()) Refuse(u"the text is empty");
    const auto [first, added] = lines_.emplace(name, line_);
    if (!added) Refuse(u"the key stands already in line " + ToString(first->second));
    entries_.emplace(std::move(name), std::move(text));
  }

  TextTable::Name ReadName(std::string_view name) {
    const std::size_t blank = std::min(name.find_first_of(kBlanks), name.size());
    const std::string_view group = name.substr(0, blank);
    const std::string_view key = Trimmed(name.substr(blank));
    std::int32_t number = 0;
    const auto [end, failure] = std::from_chars(group.data(), group.data() + group.size(), number);
    if (failure != std::errc() || end != group.data() + group.size()) {
      Refuse(u"the line does not begin with the number of a text group");
    }
    if (key.empty()) Refuse(u"the key is missing");
    if (key.find_first_of(kBlanks) != std::string_view::npos) Refuse(u"the key contains a blank");
    return {number, Decoded(key)};
  }

  String Decoded(std::string_view bytes) {
    std::optional<String> text = FromUtf8(bytes);
    if (!text) Refuse(u"the line is not UTF-8");
    for (const char16_t unit : *text) {
      if (unit < u' ' && unit != u'\t') Refuse(u"the line contains a control character");
    }
    return std::move(*text);
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
        Refuse(u"after \"\\\" only \"n\" or \"\\\" may stand");
      plain += escaped == u'n' ? u'\n' : u'\\';
    }
    return plain;
  }

  [[noreturn]] void Refuse(const String& reason) const {
    throw Failure(kMalformedTexts, file_ + u", line " + ToString(line_) + u": " + reason);
  }

  const String& file_;
  std::string_view rest_;
  std::int32_t line_ = 0;
  std::map<TextTable::Name, std::int32_t> lines_;
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
