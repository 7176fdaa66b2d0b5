#pragma once

#include "ports/win32/MachineFiles.h"
#include "ui/Platform.h"

namespace krx::win32 {

class Toolkit;

// Real windows for the forms of one thread: each user-interface thread has a platform of its own,
// which must outlive its forms.
class Win32Platform : public ui::Platform {
 public:
  // Raises Error when the system refuses windows to this process.
  Win32Platform();
  ~Win32Platform() override;

  char32_t FoldCase(char32_t character) override;
  Size MeasureText(const Font& font, StringView text) override;
  Twips WidestText(const Font& font, std::size_t count,
                   const std::function<StringView(std::size_t)>& text) override;
  Twips TextBoxHeight(const Font& font) override;
  Twips ScrollBarWidth() override;
  Twips TwipsPerPixel() override;
  Rect WorkArea() override;
  std::unique_ptr<ui::Peer> CreatePeer(ui::Form& form) override;
  std::unique_ptr<ui::Peer> CreatePeer(ui::Component& component) override;
  void RunModal(ui::Form& form) override;
  folders::FileSystem& Files() override;
  void ProcessEvents() override;
  double Ticks() override;
  ui::StockIcon LoadStockIcon(int id) override;
  void SetPointer(ui::Pointer pointer) override;
  ui::Color ResolveColor(ui::Color color) override;
  void SendKeys(StringView keys) override;
  void PressKey(const ui::Keystroke& stroke) override;
  std::string KeyboardLayout(StringView name) override;
  void CopyText(StringView text) override;
  int ShowMessageBox(StringView text, int style, StringView title) override;

 private:
  const std::unique_ptr<Toolkit> toolkit_;
  MachineFiles files_;
};

}  // namespace krx::win32
