#include <vector>

#include "Source.h"
#include "files/FileFilter.h"
#include "folders/FilePattern.h"
#include "ports/headless/HeadlessPlatform.h"

// File filters and the patterns in them, beside a matcher that tries out what each "*" may take.

namespace krx::fuzz {
namespace {

constexpr StringView kWords[] = {u"|", u"*.", u"*.*", u";",   u"*",
                                 u"?", u".",  u"txt", u"TXT", u"Text files (*.txt)",
                                 u"ß", u"ẞ",  u"İ",   u"ı",   u"\xD83D\xDE00",
                                 u" ", u"Σ",  u"ς"};

bool IsPair(StringView name, std::size_t at) {
  return at + 1 < name.size() && (name[at] & 0xFC00) == 0xD800 && (name[at + 1] & 0xFC00) == 0xDC00;
}

// Row by row: whether the first p characters of the pattern can take the first n of the name.
bool TakesAll(StringView pattern, StringView name) {
  std::vector<bool> reached(name.size() + 1);
  reached[0] = true;
  for (const char16_t unit : pattern) {
    std::vector<bool> next(name.size() + 1);
    for (std::size_t n = 0; n <= name.size(); ++n) {
      if (unit == u'*')
        next[n] = reached[n] || (n > 0 && next[n - 1]);
      else if (!reached[n] || n == name.size())
        continue;
      else if (unit == u'?')
        next[n + (IsPair(name, n) ? 2 : 1)] = true;
      else if (unit == name[n])
        next[n + 1] = true;
    }
    reached = next;
  }
  return reached[name.size()];
}

String Stripped(String text) {
  text.erase(0, std::min(text.find_first_not_of(u' '), text.size()));
  text.resize(text.find_last_not_of(u' ') + 1);
  return text;
}

// What a pattern means, said in another way: a name without a dot counts as ending in one.
bool Means(StringView pattern, StringView name, const CaseFolding& folding) {
  bool has_alternative = false;
  while (!pattern.empty()) {
    const std::size_t end = std::min(pattern.find(u';'), pattern.size());
    const String one = folding(Stripped(String(pattern.substr(0, end))));
    pattern.remove_prefix(std::min(end + 1, pattern.size()));
    if (one.empty()) continue;
    has_alternative = true;
    const String folded = folding(name);
    if (one == u"*.*" || TakesAll(one, folded)) return true;
    if (name.find(u'.') == StringView::npos && one[one.find_last_not_of(u'*') + 1 - 1] == u'.' &&
        TakesAll(one.substr(0, one.find_last_not_of(u'*')), folded))
      return true;
  }
  return !has_alternative;
}

void CheckFields(const String& filter, const files::FileTypes& types) {
  String joined;
  for (std::size_t i = 0; i < types.Descriptions.size(); ++i) {
    joined += (i == 0 ? u"" : u"|") + types.Descriptions[i];
    if (i < types.Patterns.size()) joined += u"|" + types.Patterns[i];
  }
  Require(joined == filter);
}

void CheckLastPass(std::size_t highest) {
  const std::size_t pass = files::LastPass(highest);
  Require(2 * pass + 1 >= highest && 2 * pass <= highest + 1);
  Require(highest % 2 == 0 || pass % 2 == 0);
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  static const krx::headless::HeadlessPlatform platform;  // remembers what it has folded
  Source source(data, size);
  const krx::String filter = source.Text(kWords);
  const krx::String name = source.Text(kWords);
  const krx::files::FileTypes types = krx::files::ParseFilter(filter);
  CheckFields(filter, types);
  CheckLastPass(filter.size());
  for (const krx::String& pattern : types.Patterns) {
    const krx::folders::FilePattern compiled(pattern, platform.Folding());
    Require(!compiled.MatchesAll() || compiled.Matches(name));
    Require(compiled.Matches(name) == Means(pattern, name, platform.Folding()));
  }
  return 0;
}
