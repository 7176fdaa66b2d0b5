#include <algorithm>
#include <array>

#include "base/Error.h"
#include "ui/Keyboard.h"

namespace krx::ui {

namespace {

struct NamedKey {
  StringView Name;
  int Code;
};

constexpr std::array kNamedKeys{
    NamedKey{u"BACKSPACE", kKeyBack}, NamedKey{u"BS", kKeyBack},
    NamedKey{u"BKSP", kKeyBack},      NamedKey{u"TAB", kKeyTab},
    NamedKey{u"ENTER", kKeyEnter},    NamedKey{u"ESC", kKeyEscape},
    NamedKey{u"PGUP", kKeyPageUp},    NamedKey{u"PGDN", kKeyPageDown},
    NamedKey{u"END", kKeyEnd},        NamedKey{u"HOME", kKeyHome},
    NamedKey{u"LEFT", kKeyLeft},      NamedKey{u"UP", kKeyUp},
    NamedKey{u"RIGHT", kKeyRight},    NamedKey{u"DOWN", kKeyDown},
    NamedKey{u"INSERT", kKeyInsert},  NamedKey{u"INS", kKeyInsert},
    NamedKey{u"DELETE", kKeyDelete},  NamedKey{u"DEL", kKeyDelete},
};

constexpr std::int32_t kMostRepeats = 1000;
constexpr int kDeepestGroup = 100;  // groups and modifiers inside each other

[[noreturn]] void Malformed() {
  throw RuntimeError(5, u"Malformed keystroke notation");
}

int CodeOfName(StringView name) {
  const String upper = AsciiUpper(name);
  const auto named = std::find_if(kNamedKeys.begin(), kNamedKeys.end(),
                                  [&](const NamedKey& key) { return key.Name == upper; });
  if (named != kNamedKeys.end()) return named->Code;
  if (upper.size() < 2 || upper.size() > 3 || upper.front() != u'F') Malformed();
  const bool digits = std::all_of(upper.begin() + 1, upper.end(),
                                  [](char16_t c) { return c >= u'0' && c <= u'9'; });
  const std::int32_t number = digits ? ToLong(StringView(upper).substr(1)) : 0;
  if (number < 1 || number > 16) Malformed();
  return kKeyF1 + number - 1;
}

class Parser {
 public:
  explicit Parser(StringView notation) : rest_(notation) {}

  std::vector<Keystroke> Run() {
    while (!rest_.empty())
      Element(0);
    return std::move(keys_);
  }

 private:
  char16_t Take() {
    if (rest_.empty()) Malformed();
    const char16_t c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  void Element(int shift) {
    if (++depth_ > kDeepestGroup) Malformed();
    Single(shift);
    --depth_;
  }

  void Single(int shift) {
    const char16_t c = Take();
    switch (c) {
      case u'+':
        return Element(shift | kShift);
      case u'^':
        return Element(shift | kControl);
      case u'%':
        return Element(shift | kAlt);
      case u'~':
        return keys_.push_back({kKeyEnter, 0, shift});
      case u'{':
        return Braced(shift);
      case u'(':
        return Group(shift);
      case u')':
      case u'}':
        Malformed();
      default:
        return keys_.push_back({0, c, shift});
    }
  }

  void Group(int shift) {
    while (!rest_.empty() && rest_.front() != u')')
      Element(shift);
    Take();
  }

  void Braced(int shift) {
    // The first character belongs to the name whatever it is, so that {}} is a brace.
    const std::size_t end = rest_.size() < 2 ? StringView::npos : rest_.find(u'}', 1);
    if (end == StringView::npos) Malformed();
    StringView name = rest_.substr(0, end);
    rest_.remove_prefix(end + 1);
    std::int32_t repeats = 1;
    const std::size_t blank = name.find(u' ', 1);
    if (blank != StringView::npos) {
      repeats = Repeats(name.substr(blank + 1));
      name = name.substr(0, blank);
    }
    const Keystroke key = name.size() == 1 ? Keystroke{0, name.front(), shift}
                                           : Keystroke{CodeOfName(name), 0, shift};
    keys_.insert(keys_.end(), static_cast<std::size_t>(repeats), key);
  }

  static std::int32_t Repeats(StringView digits) {
    const bool plain = !digits.empty() && digits.size() < 5 &&
                       std::all_of(digits.begin(), digits.end(),
                                   [](char16_t c) { return c >= u'0' && c <= u'9'; });
    if (!plain) Malformed();
    const std::int32_t count = ToLong(digits);
    if (count > kMostRepeats) Malformed();
    return count;
  }

  StringView rest_;
  std::vector<Keystroke> keys_;
  int depth_ = 0;
};

}  // namespace

std::vector<Keystroke> ParseKeystrokes(StringView notation) {
  return Parser(notation).Run();
}

}  // namespace krx::ui
