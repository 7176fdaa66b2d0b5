#pragma once

#include <functional>
#include <memory>
#include <string>

#include "base/CaseFolding.h"
#include "base/Font.h"
#include "base/Geometry.h"
#include "folders/FileSystem.h"
#include "ui/Color.h"
#include "ui/Component.h"
#include "ui/Form.h"
#include "ui/StandardControls.h"

namespace krx::ui {

struct Keystroke;

// The screen's mouse pointers that the dialogs use.
enum class Pointer { Default = 0, Hourglass = 11 };

// What a windowing system provides to the forms: one implementation per port. All lengths are in
// twips; texts break their lines at line feeds.
class Platform {
 public:
  virtual ~Platform() = default;

  // Unicode's simple case folding of a character, by the platform's own table. `Folding` is the
  // quick way to it.
  virtual char32_t FoldCase(char32_t character) = 0;
  const CaseFolding& Folding() const { return folding_; }

  // Extent of a text in a font; the empty text is one line high and has no width.
  virtual Size MeasureText(const Font& font, StringView text) = 0;
  // Width of the widest of many texts of one line; 0 for none. `text` gives each when asked.
  virtual Twips WidestText(const Font& font, std::size_t count,
                           const std::function<StringView(std::size_t)>& text) = 0;
  // Height of a one-line input box in a font, its border included.
  virtual Twips TextBoxHeight(const Font& font) = 0;
  // Width of a vertical scroll bar.
  virtual Twips ScrollBarWidth() = 0;
  // Resolution and work area of the monitor on which the next form opens.
  virtual Twips TwipsPerPixel() = 0;
  virtual Rect WorkArea() = 0;

  // Peers of a form that is being shown. A port may return none for a component that it does not
  // need to represent.
  virtual std::unique_ptr<Peer> CreatePeer(Form& form) = 0;
  virtual std::unique_ptr<Peer> CreatePeer(Component& component) = 0;
  // Shows the form, runs its events and returns when the form is no longer Visible(). An error
  // raised by a handler ends the loop and is thrown from here.
  virtual void RunModal(Form& form) = 0;
  // Drives, folders and files of the machine.
  virtual folders::FileSystem& Files() = 0;
  // Handles the events that are pending now, paints included, and returns whatever comes meanwhile.
  // The operator's input waits until the handler that called has returned.
  virtual void ProcessEvents() = 0;
  // Milliseconds of a clock that does not go back; for gestures and delays.
  virtual double Ticks() = 0;

  // A stock icon of the system by its identifier.
  virtual StockIcon LoadStockIcon(int id) = 0;
  virtual void SetPointer(Pointer pointer) = 0;
  // Red-green-blue value of a colour; system colours are looked up now.
  virtual Color ResolveColor(Color color) = 0;
  // Sends keystrokes to whatever window has the focus; notation: see ParseKeystrokes.
  virtual void SendKeys(StringView keys) = 0;
  // One key or character, as if it had been typed, to whatever window has the focus.
  virtual void PressKey(const Keystroke& stroke) = 0;
  // Text of a keyboard layout by its name, in UTF-8: one that the plant has added, or else one that
  // the dialogs bring along. Empty: there is none of this name.
  virtual std::string KeyboardLayout(StringView name) = 0;
  // Puts a text on the clipboard as it is; where another program keeps that to itself, nothing
  // happens.
  virtual void CopyText(StringView text) = 0;
  // The platform's own message box with the standard style and result values.
  virtual int ShowMessageBox(StringView text, int style, StringView title) = 0;

  // The innermost form that is shown modally.
  Form* InUse = nullptr;

 private:
  const CaseFolding folding_{[this](char32_t character) { return FoldCase(character); }};
};

// Shows the operator that he has to wait, as long as it lives.
class Hourglass {
 public:
  explicit Hourglass(Platform& platform) : platform_(platform) {
    platform_.SetPointer(Pointer::Hourglass);
  }
  ~Hourglass() { platform_.SetPointer(Pointer::Default); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  Platform& platform_;
};

}  // namespace krx::ui
