#include "panel/KeyboardLayout.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "base/Utf8.h"

namespace krx::panel {

namespace {

struct NamedAct {
  StringView Name;
  panel::Act Act;
};
constexpr NamedAct kActs[] = {
    {u"shift", Act::Shift},   {u"capslock", Act::CapsLock}, {u"page", Act::Page},
    {u"hide", Act::Hide},     {u"space", Act::Space},       {u"backspace", Act::Backspace},
    {u"delete", Act::Delete}, {u"enter", Act::Enter},       {u"tab", Act::Tab},
    {u"left", Act::Left},     {u"right", Act::Right},       {u"up", Act::Up},
    {u"down", Act::Down},     {u"home", Act::Home},         {u"end", Act::End},
};
// Without these a keyboard is a trap; they stand in rows that are always there.
constexpr Act kNeeded[] = {Act::Page, Act::Hide, Act::Space, Act::Backspace, Act::Enter};
constexpr float kNarrowest = 0.5f;
constexpr float kWidest = 12;
constexpr StringView kBlanks = u" \t\r";

StringView Trimmed(StringView text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// Takes the text up to the next separator, and it, from the front.
StringView TakeUpTo(StringView& text, StringView separators) {
  const std::size_t end = std::min(text.find_first_of(separators), text.size());
  const StringView taken = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return taken;
}

// Takes one character, which may be a pair of units.
String TakeCharacter(StringView& text) {
  const std::size_t units = (text[0] & 0xFC00) == 0xD800 ? 2 : 1;
  String character(text.substr(0, units));
  text.remove_prefix(units);
  return character;
}

class Parser {
 public:
  KeyboardLayout Parse(StringView text) {
    while (!text.empty()) {
      ++line_;
      const StringView line = Trimmed(TakeUpTo(text, u"\n"));
      if (!line.empty() && line[0] != u'#') Line(line);
    }
    Complete();
    return std::move(layout_);
  }

 private:
  [[noreturn]] void Refuse(const std::string& reason) const { throw LayoutError(line_, reason); }

  void Line(StringView line) {
    for (const char16_t unit : line)
      if (unit < u' ' && unit != u'\t') Refuse("the line contains a control character");
    for (const bool spare : {false, true}) {
      const StringView beginning = spare ? u"spare:" : u"row:";
      if (line.starts_with(beginning)) return Row(spare, line.substr(beginning.size()));
    }
    StringView rest = line;
    const StringView name = Trimmed(TakeUpTo(rest, u"="));
    const StringView value = Trimmed(rest);
    if (name.empty() || value.empty()) Refuse("neither a row nor a name, \"=\" and a text");
    if (!layout_.Names.emplace(name, value).second) Refuse(ToUtf8(name) + " is named twice");
  }

  void Row(bool spare, StringView keys) {
    LayoutRow row{spare, {}};
    float width = 0;
    for (keys = Trimmed(keys); !keys.empty(); keys = Trimmed(keys)) {
      row.Keys.push_back(Key(TakeUpTo(keys, u" \t")));
      width += row.Keys.back().Width;
    }
    if (row.Keys.empty()) Refuse("the row has no keys");
    if (layout_.Rows.empty()) layout_.Width = width;
    if (std::abs(width - layout_.Width) > 0.01f)
      Refuse("the row is as wide as " + Figure(width) + " keys, the first one as " +
             Figure(layout_.Width));
    layout_.Rows.push_back(std::move(row));
  }

  static std::string Figure(float width) {
    std::string text = std::to_string(width);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
  }

  LayoutKey Key(StringView token) const {
    const bool special = token.size() > 3 && token[0] == u'{' && token.back() == u'}';
    return special ? Special(token.substr(1, token.size() - 2)) : Typing(token);
  }

  LayoutKey Special(StringView words) const {
    const StringView name = TakeUpTo(words, u"*");
    const auto* const found = std::find_if(std::begin(kActs), std::end(kActs),
                                           [&](const NamedAct& act) { return act.Name == name; });
    if (found == std::end(kActs)) Refuse("no key is called " + ToUtf8(name));
    LayoutKey key;
    key.Act = found->Act;
    if (!words.empty()) key.Width = WidthOf(words);
    return key;
  }

  float WidthOf(StringView text) const {
    float width = 0;
    float digit = 1;
    bool point = false;
    for (const char16_t unit : text) {
      const bool is_digit = unit >= u'0' && unit <= u'9';
      if (!is_digit && (unit != u'.' || point)) Refuse(ToUtf8(text) + " is no width");
      point = point || unit == u'.';
      if (!is_digit) continue;
      if (point) digit /= 10;
      width = point ? width + digit * static_cast<float>(unit - u'0')
                    : width * 10 + static_cast<float>(unit - u'0');
    }
    if (!(width >= kNarrowest && width <= kWidest)) Refuse(ToUtf8(text) + " is no width of a key");
    return width;
  }

  // One or two characters of its own, then ":" and the characters of holding it, then ":" and those
  // of holding it with Shift.
  LayoutKey Typing(StringView token) const {
    LayoutKey key;
    key.Plain.Own = TakeCharacter(token);
    const bool alone = token.empty() || (token.size() > 1 && token[0] == u':' && token[1] != u':');
    key.Shifted.Own = alone ? key.Plain.Own : TakeCharacter(token);
    if (token.empty()) return key;
    if (token[0] != u':') Refuse("a key has two characters, then \":\"");
    token.remove_prefix(1);
    key.Plain.Held = Held(TakeUpTo(token, u":"));
    key.Shifted.Held = token.empty() ? key.Plain.Held : Held(TakeUpTo(token, u":"));
    if (key.Plain.Held.empty() || !token.empty()) Refuse("what a key offers when it is held");
    return key;
  }

  static std::vector<String> Held(StringView text) {
    std::vector<String> characters;
    while (!text.empty())
      characters.push_back(TakeCharacter(text));
    return characters;
  }

  void Complete() {
    for (const Act act : kNeeded) {
      const bool there =
          std::any_of(layout_.Rows.begin(), layout_.Rows.end(), [&](const LayoutRow& row) {
            return !row.Spare && std::any_of(row.Keys.begin(), row.Keys.end(),
                                             [&](const LayoutKey& key) { return key.Act == act; });
          });
      if (!there) Refuse("no row that is always there has the key {" + ToUtf8(NameOf(act)) + "}");
    }
    layout_.Page = std::exchange(layout_.Names[u"title"], String());
    layout_.Names.erase(u"title");
    if (layout_.Page.empty()) Refuse("the layout has no title");
  }

  KeyboardLayout layout_;
  int line_ = 0;
};

}  // namespace

LayoutError::LayoutError(int line, const std::string& reason)
    : std::runtime_error("line " + std::to_string(line) + ": " + reason) {}

std::size_t KeyboardLayout::RowCount(bool spare) const {
  return static_cast<std::size_t>(std::count_if(
      Rows.begin(), Rows.end(), [&](const LayoutRow& row) { return spare || !row.Spare; }));
}

StringView NameOf(Act act) {
  const auto* const found = std::find_if(std::begin(kActs), std::end(kActs),
                                         [&](const NamedAct& named) { return named.Act == act; });
  return found == std::end(kActs) ? StringView() : found->Name;
}

KeyboardLayout ParseLayout(std::string_view utf8) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (utf8.starts_with(kByteOrderMark)) utf8.remove_prefix(kByteOrderMark.size());
  const std::optional<String> text = FromUtf8(utf8);
  if (!text) throw LayoutError(1, "the file is not UTF-8");
  return Parser().Parse(*text);
}

}  // namespace krx::panel
