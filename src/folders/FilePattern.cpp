#include "folders/FilePattern.h"

#include <algorithm>

namespace krx::folders {

namespace {

StringView Trimmed(StringView text) {
  while (text.starts_with(u' '))
    text.remove_prefix(1);
  while (text.ends_with(u' '))
    text.remove_suffix(1);
  return text;
}

bool IsPair(StringView text, std::size_t at) {
  return at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
}

// Goes back to the last "*" alone: what an earlier one could take more, the last one can too.
bool Fits(StringView pattern, StringView name) {
  std::size_t p = 0;
  std::size_t n = 0;
  std::size_t star = StringView::npos;
  std::size_t resume = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == u'*') {
      star = p++;
      resume = n;
    } else if (p < pattern.size() && pattern[p] == u'?') {
      n += IsPair(name, n) ? 2 : 1;
      ++p;
    } else if (p < pattern.size() && pattern[p] == name[n]) {
      ++n;
      ++p;
    } else if (star != StringView::npos) {
      p = star + 1;
      n = ++resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of(u'*', p) == StringView::npos;
}

// What is left of a pattern for the name when its end, "." or ".*", means "no extension".
StringView BeforeLastDot(StringView pattern) {
  const std::size_t last = pattern.find_last_not_of(u'*');
  const bool dot = last != StringView::npos && pattern[last] == u'.';
  return dot ? pattern.substr(0, last) : pattern;
}

}  // namespace

FilePattern::FilePattern(StringView pattern, const CaseFolding& folding) : folding_(&folding) {
  while (!pattern.empty()) {
    const std::size_t end = std::min(pattern.find(u';'), pattern.size());
    String alternative = folding(Trimmed(pattern.substr(0, end)));
    pattern.remove_prefix(std::min(end + 1, pattern.size()));
    if (alternative.empty()) continue;
    alternatives_.push_back(std::move(alternative));
  }
  const auto everything = [](const String& a) { return a == u"*" || a == u"*.*"; };
  if (std::any_of(alternatives_.begin(), alternatives_.end(), everything)) alternatives_.clear();
}

bool FilePattern::Matches(StringView name) const {
  if (MatchesAll()) return true;
  folding_->Into(name, name_);
  const bool dotless = name.find(u'.') == StringView::npos;
  return std::any_of(alternatives_.begin(), alternatives_.end(), [&](StringView alternative) {
    if (Fits(alternative, name_)) return true;
    const StringView rest = BeforeLastDot(alternative);
    return dotless && rest.size() < alternative.size() && Fits(rest, name_);
  });
}

}  // namespace krx::folders
