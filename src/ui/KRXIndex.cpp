#include "ui/KRXIndex.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/Form.h"
#include "ui/Keyboard.h"
#include "ui/Platform.h"

namespace krx::ui {

namespace {

constexpr float kWidestLine = 0.6f;     // of the work area
constexpr std::size_t kUsualLine = 64;  // characters
constexpr StringView kEllipsis = u"\u2026";

using Fits = std::function<bool(StringView)>;

bool SplitsPair(StringView text, std::size_t at) {
  return at > 0 && at < text.size() && (text[at] & 0xFC00) == 0xDC00 &&
         (text[at - 1] & 0xFC00) == 0xD800;
}

// Length of the largest prefix of a line that fits, one character at least. Widths grow with the
// text, so the border is found by halving, between two lengths that are found by going ever further
// from a guess: the rest of a long line is never looked at.
std::size_t FittingLength(StringView line, std::size_t guess, const Fits& fits) {
  std::size_t good = 1;
  std::size_t bad = line.size() + 1;
  const auto try_length = [&](std::size_t length) {
    const bool fitting = fits(line.substr(0, length));
    (fitting ? good : bad) = length;
    return fitting;
  };
  std::size_t step = 8;
  if (try_length(std::clamp<std::size_t>(guess, 1, line.size()))) {
    while (good < line.size() && try_length(std::min(good + step, line.size())))
      step *= 2;
  } else {
    while (bad > 2 && !try_length(bad > step ? bad - step : 1))
      step *= 2;
  }
  while (bad > good + 1)
    try_length(good + (bad - good) / 2);
  if (!SplitsPair(line, good)) return good;
  return good > 1 ? good - 1 : good + 1;
}

// Lines of a text are about equally long, so each begins with the guess that the last one leaves.
void AppendWrapped(String& out, StringView line, std::size_t& guess, const Fits& fits) {
  while (!line.empty()) {
    const std::size_t length = FittingLength(line, guess, fits);
    if (length >= line.size()) break;
    guess = length;
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

void AppendCut(String& out, StringView line, const Fits& fits) {
  const std::size_t length = line.empty() ? 0 : FittingLength(line, kUsualLine, fits);
  if (length >= line.size()) {
    out.append(line);
    return;
  }
  const std::size_t shown = FittingLength(line.substr(0, length), length, [&](StringView part) {
    return fits(String(part).append(kEllipsis));
  });
  out.append(line.substr(0, shown)).append(kEllipsis);
}

// Each line of a text, without its break, is appended; breaks stay.
template <class Append>
String ByLines(StringView text, Append append) {
  String out;
  for (;;) {
    const std::size_t end = text.find(u'\n');
    append(out, text.substr(0, end));
    if (end == StringView::npos) return out;
    out += u'\n';
    text.remove_prefix(end + 1);
  }
}

// The first lines of a text; where there are more, the last of them ends with an ellipsis.
String FirstLines(String text, int most) {
  std::size_t end = 0;
  for (int line = 0; line < most; ++line) {
    end = text.find(u'\n', line == 0 ? 0 : end + 1);
    if (end == String::npos) return text;
  }
  return text.substr(0, end).append(kEllipsis);
}

int CountLines(StringView text) {
  return static_cast<int>(std::count(text.begin(), text.end(), u'\n')) + 1;
}

}  // namespace

String WrapLines(StringView text, const Fits& fits) {
  std::size_t guess = kUsualLine;
  return ByLines(text,
                 [&](String& out, StringView line) { AppendWrapped(out, line, guess, fits); });
}

String CutLines(StringView text, const Fits& fits) {
  return ByLines(text, [&](String& out, StringView line) { AppendCut(out, line, fits); });
}

KRXIndex::KRXIndex(Form& parent, String name)
    : FontClassControl(parent, std::move(name), Kind::Index) {}

String KRXIndex::DisplayedText() const {
  return Show().Lines;
}

String KRXIndex::WholeText() const {
  return NormalizeLineBreaks(ReplaceAll(Text(), u"\\n", u"\n"));
}

// Breaking the lines means measuring them, so it is done once for a text, a font and a screen.
const KRXIndex::Shown& KRXIndex::Show() const {
  Platform& platform = Parent().ThePlatform();
  const bool cuts = Room().Width > 0;
  const Twips widest = cuts ? Room().Width : kWidestLine * platform.WorkArea().Width;
  const Twips pixel = platform.TwipsPerPixel();
  if (shown_ && shown_->Widest == widest && shown_->Pixel == pixel) return *shown_;
  const Fits fits = [&](StringView line) {
    return platform.MeasureText(Font(), line).Width <= widest;
  };
  String lines = WholeText();
  if (cuts) {
    const Twips most = std::floor(Room().Height / std::max(LineHeight(), 1.0f));
    lines = CutLines(FirstLines(std::move(lines), std::max(1, static_cast<int>(most))), fits);
  } else {
    lines = WrapLines(lines, fits);
  }
  const int count = CountLines(lines);
  return shown_.emplace(Shown{widest, pixel, std::move(lines), count});
}

void KRXIndex::Changed(Aspect aspect) {
  if (aspect == Aspect::Text || aspect == Aspect::Font) shown_.reset();
  FontClassControl::Changed(aspect);
}

// Scrolling

Twips KRXIndex::LineHeight() const {
  return Parent().ThePlatform().MeasureText(Font(), StringView()).Height;
}

int KRXIndex::LineCount() const {
  return Show().Count;
}

// Heights are rounded to pixels, which must not cost a line.
int KRXIndex::LinesInSight() const {
  const Twips height = Height() + Parent().ThePlatform().TwipsPerPixel() / 2;
  return std::max(1, static_cast<int>(height / std::max(LineHeight(), 1.0f)));
}

void KRXIndex::ScrollTo(int line) {
  TopLine = std::clamp(line, 0, std::max(0, LineCount() - LinesInSight()));
}

bool KRXIndex::ScrollByKey(int key, bool arrows) {
  switch (key) {
    case kKeyPageUp:
      ScrollTo(TopLine() - LinesInSight());
      return true;
    case kKeyPageDown:
      ScrollTo(TopLine() + LinesInSight());
      return true;
    case kKeyHome:
      ScrollTo(0);
      return true;
    case kKeyEnd:
      ScrollTo(LineCount());
      return true;
    case kKeyUp:
      if (arrows) ScrollTo(TopLine() - 1);
      return arrows;
    case kKeyDown:
      if (arrows) ScrollTo(TopLine() + 1);
      return arrows;
    default:
      return false;
  }
}

KRXIndex* ScrollingText(const Form& form) {
  for (Component* const component : form.Components()) {
    if (component->Kind() != Kind::Index) continue;
    auto* const index = static_cast<KRXIndex*>(component);
    if (index->Scrolls() && index->Visible()) return index;
  }
  return nullptr;
}

}  // namespace krx::ui
