#include "ui/KRXIndex.h"

#include <algorithm>
#include <utility>

#include "ui/Form.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

constexpr float kWidestLine = 0.6f;  // of the work area

bool SplitsPair(StringView text, std::size_t at) {
  return at > 0 && at < text.size() && (text[at] & 0xFC00) == 0xDC00 &&
         (text[at - 1] & 0xFC00) == 0xD800;
}

// Largest prefix of a line that fits. Widths grow with the text, so the border is found by halving.
std::size_t FittingLength(StringView line, const std::function<bool(StringView)>& fits) {
  std::size_t good = 1;
  std::size_t bad = line.size() + 1;
  while (bad - good > 1) {
    const std::size_t middle = good + (bad - good) / 2;
    (fits(line.substr(0, middle)) ? good : bad) = middle;
  }
  if (!SplitsPair(line, good)) return good;
  return good > 1 ? good - 1 : good + 1;
}

void AppendWrapped(String& out, StringView line, const std::function<bool(StringView)>& fits) {
  while (!line.empty() && !fits(line)) {
    const std::size_t length = FittingLength(line, fits);
    if (length >= line.size()) break;
    // A blank right behind the fitting part still ends it; further left the last blank does.
    const std::size_t blank = line.rfind(u' ', length);
    const bool at_blank = blank != StringView::npos && blank > 0;
    const std::size_t end = at_blank ? blank : length;
    out.append(line.substr(0, end));
    line.remove_prefix(at_blank ? end + 1 : end);
    // A blank at the very end breaks nothing: there is no text left for another line.
    if (!line.empty()) out += u'\n';
  }
  out.append(line);
}

}  // namespace

String WrapLines(StringView text, const std::function<bool(StringView)>& fits) {
  String out;
  for (;;) {
    const std::size_t end = text.find(u'\n');
    AppendWrapped(out, text.substr(0, end), fits);
    if (end == StringView::npos) return out;
    out += u'\n';
    text.remove_prefix(end + 1);
  }
}

KRXIndex::KRXIndex(Form& parent, String name)
    : FontClassControl(parent, std::move(name), Kind::Index) {}

String KRXIndex::DisplayedText() const {
  const String text = NormalizeLineBreaks(ReplaceAll(Text(), u"\\n", u"\n"));
  Platform& platform = Parent().ThePlatform();
  const Twips widest = kWidestLine * platform.WorkArea().Width;
  return WrapLines(
      text, [&](StringView line) { return platform.MeasureText(Font(), line).Width <= widest; });
}

}  // namespace krx::ui
