#include "ports/win32/Texts.h"

#include <algorithm>
#include <cmath>

#include "ui/Direction.h"

namespace krx::win32 {

namespace {

constexpr std::size_t kMostFonts = 24;
constexpr double kPointsPerInch = 72;

template <class EachLine>
int ForEachLine(StringView text, EachLine each) {
  int count = 0;
  for (;; ++count) {
    const std::size_t end = text.find(u'\n');
    each(text.substr(0, end), count);
    if (end == StringView::npos) return count + 1;
    text.remove_prefix(end + 1);
  }
}

bool HasTab(StringView line) {
  return line.find(u'\t') != StringView::npos;
}

bool KeepsOrder(StringView line) {
  return line.starts_with(ui::kLeftToRightMark);
}

StringView Unmarked(StringView line) {
  if (!KeepsOrder(line)) return line;
  line.remove_prefix(1);
  if (line.ends_with(ui::kLeftToRightMark)) line.remove_suffix(1);
  return line;
}

// Systems do not agree how texts read, nor which pixels are filled, where drawing is mirrored. So
// the mirror is taken away while this lives, and texts are told to end where they would have begun.
class WithoutMirror {
 public:
  WithoutMirror(HDC dc, const RECT& area) : dc_(dc), layout_(GetLayout(dc)), area_(area) {
    if (!Mirrored()) return;
    POINT corners[]{{area.left, area.top}, {area.right, area.bottom}};
    LPtoDP(dc, corners, 2);
    SetLayout(dc, 0);
    DPtoLP(dc, corners, 2);
    area_ = {corners[1].x + 1, corners[0].y, corners[0].x + 1, corners[1].y};
    align_ = SetTextAlign(dc, TA_RIGHT | TA_RTLREADING);
  }
  ~WithoutMirror() {
    if (!Mirrored()) return;
    SetTextAlign(dc_, align_);
    SetLayout(dc_, layout_);
  }
  WithoutMirror(const WithoutMirror&) = delete;
  WithoutMirror& operator=(const WithoutMirror&) = delete;

  const RECT& Area() const { return area_; }
  // Where a text begins that is so far from the area's edge.
  int Begin(int indent) const { return Mirrored() ? area_.right - indent : area_.left + indent; }
  // A line as it is to be drawn: one that marks keep in its own order is told to read so instead,
  // as some systems show the marks or give them a width.
  StringView Direct(StringView line) const {
    if (!Mirrored()) return line;
    SetTextAlign(dc_, KeepsOrder(line) ? TA_RIGHT : TA_RIGHT | TA_RTLREADING);
    return Unmarked(line);
  }
  bool Mirrored() const { return (layout_ & LAYOUT_RTL) != 0; }

 private:
  HDC dc_;
  DWORD layout_;
  RECT area_;
  UINT align_ = 0;
};

int LineWidth(HDC dc, StringView line) {
  const int length = static_cast<int>(line.size());
  if (HasTab(line)) return LOWORD(GetTabbedTextExtentW(dc, WideData(line), length, 0, nullptr));
  SIZE size{};
  GetTextExtentPoint32W(dc, WideData(line), length, &size);
  return size.cx;
}

}  // namespace

FontHandle::FontHandle(const Font& font, Scale scale) : font_(font), scale_(scale) {
  LOGFONTW wanted{};
  wanted.lfHeight = -static_cast<LONG>(std::lround(double{font.Size} * scale.Dpi / kPointsPerInch));
  wanted.lfWeight = font.Weight;
  wanted.lfItalic = font.Italic;
  wanted.lfUnderline = font.Underline;
  wanted.lfStrikeOut = font.Strikethrough;
  wanted.lfCharSet = static_cast<BYTE>(font.Charset);
  const std::size_t length = std::min<std::size_t>(font.Name.size(), LF_FACESIZE - 1);
  std::copy_n(WideData(font.Name), length, wanted.lfFaceName);
  handle_ = CreateFontIndirectW(&wanted);
  if (!handle_) throw SystemError(u"A font cannot be created");
}

FontHandle::~FontHandle() {
  DeleteObject(handle_);
}

Texts::Texts() : dc_(CreateCompatibleDC(nullptr)) {
  if (!dc_) throw SystemError(u"Texts cannot be measured");
  original_font_ = GetCurrentObject(dc_, OBJ_FONT);
}

Texts::~Texts() {
  SelectObject(dc_, original_font_);
  DeleteDC(dc_);
}

SharedFont Texts::FontFor(const Font& font, Scale scale) {
  const auto found = std::find_if(fonts_.begin(), fonts_.end(),
                                  [&](const SharedFont& f) { return f->Is(font, scale); });
  if (found != fonts_.end()) {
    std::rotate(fonts_.begin(), found, found + 1);
    return fonts_.front();
  }
  fonts_.insert(fonts_.begin(), std::make_shared<const FontHandle>(font, scale));
  // Windows that still show a font keep it alive themselves.
  if (fonts_.size() > kMostFonts) fonts_.pop_back();
  return fonts_.front();
}

int Texts::LineHeight(const SharedFont& font) {
  if (selected_ == font) return line_height_;
  SelectObject(dc_, font->Get());
  selected_ = font;
  TEXTMETRICW metrics{};
  if (!GetTextMetricsW(dc_, &metrics)) throw SystemError(u"A font cannot be measured");
  line_height_ = metrics.tmHeight;
  return line_height_;
}

SIZE Texts::Measure(const SharedFont& font, StringView text) {
  const int line_height = LineHeight(font);
  int widest = 0;
  const int lines = ForEachLine(
      text, [&](StringView line, int) { widest = std::max(widest, LineWidth(dc_, line)); });
  return {widest, lines * line_height};
}

int Texts::Widest(const SharedFont& font, std::size_t count,
                  const std::function<StringView(std::size_t)>& text) {
  LineHeight(font);  // selects the font
  int widest = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const StringView line = text(i);
    if (!line.empty()) widest = std::max(widest, LineWidth(dc_, line));
  }
  return widest;
}

void Texts::Draw(HDC dc, const SharedFont& font, StringView text, const RECT& area, int indent) {
  const int line_height = LineHeight(font);
  const int lines = static_cast<int>(std::count(text.begin(), text.end(), u'\n')) + 1;
  const WithoutMirror plain(dc, area);
  const int left = plain.Begin(indent);
  const int top = plain.Area().top + (area.bottom - area.top - lines * line_height) / 2;
  const HGDIOBJ before = SelectObject(dc, font->Get());
  // An empty opaque text is the cheapest way to fill the area in the background colour.
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &plain.Area(), L"", 0, nullptr);
  SetBkMode(dc, TRANSPARENT);
  ForEachLine(text, [&](StringView marked, int number) {
    const StringView line = plain.Direct(marked);
    const int length = static_cast<int>(line.size());
    const int y = top + number * line_height;
    if (HasTab(line)) {
      TabbedTextOutW(dc, left, y, WideData(line), length, 0, nullptr, left);
    } else {
      ExtTextOutW(dc, left, y, 0, nullptr, WideData(line), static_cast<UINT>(length), nullptr);
    }
  });
  SelectObject(dc, before);
}

void Texts::DrawCut(HDC dc, StringView text, const RECT& area) {
  const WithoutMirror plain(dc, area);
  RECT place = plain.Area();
  UINT format = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;
  if (plain.Mirrored()) {
    SetTextAlign(dc, TA_LEFT);
    format |= KeepsOrder(text) ? DT_RIGHT : DT_RIGHT | DT_RTLREADING;
    text = Unmarked(text);
  }
  DrawTextW(dc, WideData(text), static_cast<int>(text.size()), &place, format);
}

}  // namespace krx::win32
