#pragma once

#include <vector>

#include "ports/win32/CommonControls.h"
#include "ports/win32/Drawing.h"
#include "ports/win32/KeyFilter.h"
#include "ports/win32/RowImages.h"
#include "ports/win32/Texts.h"
#include "ports/win32/WindowClasses.h"

namespace krx::win32 {

class ModalLoop;

// What the peers of one thread share.
class Toolkit {
 public:
  Toolkit();

  const CommonControls Controls;
  win32::Texts Texts;
  win32::Drawing Drawing;
  KeyFilter Keys;
  std::vector<ModalLoop*> Loops;  // running now, the innermost one last
  HCURSOR Pointer = nullptr;      // null: every window shows its own

  // The monitor on which the next form opens: that of the window in use.
  const Screen& OpeningScreen();
  // Activation moved, so the next form may open elsewhere.
  void ForgetScreen() { screen_known_until_ = 0; }

  // While it lives, everything is measured for one screen: that of a form which is laid out anew.
  class Measuring {
   public:
    Measuring(Toolkit& toolkit, const Screen& screen) : toolkit_(toolkit) {
      toolkit_.screen_ = screen;
      toolkit_.screen_known_until_ = ~0ULL;
    }
    ~Measuring() { toolkit_.ForgetScreen(); }
    Measuring(const Measuring&) = delete;
    Measuring& operator=(const Measuring&) = delete;

   private:
    Toolkit& toolkit_;
  };

  // Pictures for rows of this height, drawn once for all lists.
  SharedImages ImagesFor(Scale scale, int row_height, bool visible);

  // The system's own word for closing a window, for controls that show a cross instead.
  const String& CloseWord();
  // The form that a box of the system belongs to: the innermost one; null without a form.
  HWND FormInUse() const;

 private:
  WindowClasses classes_;
  String close_word_;
  std::vector<SharedImages> images_;
  Screen screen_;
  ULONGLONG screen_known_until_ = 0;  // in ticks of the system
};

// While it lives, what is drawn is mirrored where asked for, texts read from right to left.
class MirroredDrawing {
 public:
  MirroredDrawing(HDC dc, bool mirrored) : dc_(dc), before_(GetLayout(dc)) {
    if (mirrored) SetLayout(dc, LAYOUT_RTL);
  }
  ~MirroredDrawing() { SetLayout(dc_, before_); }
  MirroredDrawing(const MirroredDrawing&) = delete;
  MirroredDrawing& operator=(const MirroredDrawing&) = delete;

 private:
  HDC dc_;
  DWORD before_;
};

// Paints a window between its begin and its end.
class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC Dc() const { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_;
};

}  // namespace krx::win32
