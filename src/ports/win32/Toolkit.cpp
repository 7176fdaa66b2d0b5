#include "ports/win32/Toolkit.h"

#include <algorithm>
#include <array>

#include "ports/win32/FormPeer.h"
#include "ports/win32/ModalLoop.h"

namespace krx::win32 {

namespace {

constexpr ULONGLONG kScreenKnown = 50;  // milliseconds

String ReadCloseWord() {
  // Only a window with a system menu knows the word; one that is never shown will do.
  const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 0, 0,
                                      HWND_MESSAGE, nullptr, ThisModule(), nullptr);
  std::array<wchar_t, 64> text{};
  const int length = GetMenuStringW(GetSystemMenu(window, FALSE), SC_CLOSE, text.data(),
                                    static_cast<int>(text.size()), MF_BYCOMMAND);
  if (window) DestroyWindow(window);
  // "&Close<tab>Alt+F4" is the menu's notation.
  const StringView item = Narrow(text.data(), static_cast<std::size_t>(length));
  return ReplaceAll(String(item.substr(0, item.find(u'\t'))), u"&", u"");
}

}  // namespace

Toolkit::Toolkit() : classes_(&WindowPeer::Procedure) {}

// A dialog that lays itself out asks dozens of times, and each answer costs the system a look at
// all of its monitors.
const Screen& Toolkit::OpeningScreen() {
  const ULONGLONG now = GetTickCount64();
  if (now >= screen_known_until_) {
    screen_ = Screen::Of(WindowInUse());
    screen_known_until_ = now + kScreenKnown;
  }
  return screen_;
}

SharedImages Toolkit::ImagesFor(Scale scale, int row_height, bool visible) {
  const auto found = std::find_if(images_.begin(), images_.end(), [&](const SharedImages& images) {
    return images->Are(scale, row_height, visible);
  });
  if (found != images_.end()) return *found;
  auto images = std::make_shared<const RowImages>(scale, row_height, visible);
  if (images->List()) images_.push_back(images);  // else the system may have room for them later
  return images;
}

const String& Toolkit::CloseWord() {
  if (close_word_.empty()) close_word_ = ReadCloseWord();
  return close_word_;
}

HWND Toolkit::FormInUse() const {
  if (Loops.empty()) return nullptr;
  const HWND innermost = Loops.back()->Peer().Window();
  return innermost && IsWindowVisible(innermost) ? innermost : nullptr;
}

}  // namespace krx::win32
