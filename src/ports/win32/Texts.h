#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "base/Font.h"
#include "ports/win32/Screen.h"

namespace krx::win32 {

// A font of the system at one resolution; the system's object lives as long as this one.
class FontHandle {
 public:
  FontHandle(const Font& font, Scale scale);
  ~FontHandle();
  FontHandle(const FontHandle&) = delete;
  FontHandle& operator=(const FontHandle&) = delete;

  HFONT Get() const { return handle_; }
  bool Is(const Font& font, Scale scale) const { return font_ == font && scale_ == scale; }

 private:
  Font font_;
  Scale scale_;
  HFONT handle_;
};

using SharedFont = std::shared_ptr<const FontHandle>;

// Measures and draws texts so that both agree: lines at line feeds, tabs expanded, no access-key
// marks. Keeps the fonts used last and one device context for measuring.
class Texts {
 public:
  Texts();
  ~Texts();
  Texts(const Texts&) = delete;
  Texts& operator=(const Texts&) = delete;

  SharedFont FontFor(const Font& font, Scale scale);
  // Extent in pixels; the empty text is one line high.
  SIZE Measure(const SharedFont& font, StringView text);
  // Width in pixels of the widest of many texts of one line.
  int Widest(const SharedFont& font, std::size_t count,
             const std::function<StringView(std::size_t)>& text);
  // Fills the area and draws the text in it, vertically centred, `indent` pixels from the left.
  void Draw(HDC dc, const SharedFont& font, StringView text, const RECT& area, int indent);
  // Draws one line in the font that is chosen, on what is there; ends it with an ellipsis where it
  // is too wide.
  static void DrawCut(HDC dc, StringView text, const RECT& area);

 private:
  int LineHeight(const SharedFont& font);

  HDC dc_;
  HGDIOBJ original_font_;
  std::vector<SharedFont> fonts_;  // the one used last comes first
  SharedFont selected_;
  int line_height_ = 0;  // of the selected font
};

}  // namespace krx::win32
