#include "ports/win32/Win32Platform.h"

#include <exception>

#include "ports/win32/ModalLoop.h"
#include "ports/win32/PeerFactory.h"
#include "ports/win32/SendKeys.h"

namespace krx::win32 {

namespace {

constexpr int kInputPadding = 2;  // pixels at 96 dpi, between text and border of an input box

Error WindowLost(const String& name) {
  return Error(static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_INVALID_WINDOW_HANDLE)),
               u"The window of " + name + u" has been destroyed");
}

}  // namespace

Win32Platform::Win32Platform() : toolkit_(std::make_unique<Toolkit>()) {}

Win32Platform::~Win32Platform() = default;

Size Win32Platform::MeasureText(const Font& font, StringView text) {
  const DpiScope scope;
  const Scale scale = toolkit_->OpeningScreen().Scale;
  const SIZE size = toolkit_->Texts.Measure(toolkit_->Texts.FontFor(font, scale), text);
  return {scale.ToTwips(size.cx), scale.ToTwips(size.cy)};
}

Twips Win32Platform::WidestText(const Font& font, std::size_t count,
                                const std::function<StringView(std::size_t)>& text) {
  const DpiScope scope;
  const Scale scale = toolkit_->OpeningScreen().Scale;
  return scale.ToTwips(toolkit_->Texts.Widest(toolkit_->Texts.FontFor(font, scale), count, text));
}

Twips Win32Platform::TextBoxHeight(const Font& font) {
  const DpiScope scope;
  const Scale scale = toolkit_->OpeningScreen().Scale;
  const SIZE line = toolkit_->Texts.Measure(toolkit_->Texts.FontFor(font, scale), u"");
  return scale.ToTwips(line.cy + 2 * GetSystemMetrics(SM_CYEDGE) + scale.Thickness(kInputPadding));
}

Twips Win32Platform::TwipsPerPixel() {
  const DpiScope scope;
  return toolkit_->OpeningScreen().Scale.ToTwips(1);
}

Rect Win32Platform::WorkArea() {
  const DpiScope scope;
  const Screen& screen = toolkit_->OpeningScreen();
  const RECT& area = screen.WorkArea;
  const Scale& scale = screen.Scale;
  return {scale.ToTwips(area.left), scale.ToTwips(area.top), scale.ToTwips(area.right - area.left),
          scale.ToTwips(area.bottom - area.top)};
}

std::unique_ptr<ui::Peer> Win32Platform::CreatePeer(ui::Form& form) {
  const DpiScope scope;
  return MakePeer(*toolkit_, form);
}

std::unique_ptr<ui::Peer> Win32Platform::CreatePeer(ui::Component& component) {
  const DpiScope scope;
  auto& form = static_cast<FormPeer&>(*component.Parent().ThePeer());
  if (!form.Window()) throw WindowLost(component.Parent().Name());
  return MakePeer(*toolkit_, form, component);
}

void Win32Platform::RunModal(ui::Form& form) {
  auto& peer = static_cast<FormPeer&>(*form.ThePeer());
  if (!peer.Window()) throw WindowLost(form.Name());
  {
    ModalLoop loop(*toolkit_, peer);
    loop.Run();
  }
  if (const std::exception_ptr error = peer.TakeError()) std::rethrow_exception(error);
}

ui::FileSystem& Win32Platform::Files() {
  return files_;
}

namespace {

// The next message of the queue; without the keyboard's ones where these have to wait.
bool TakeMessage(MSG& message, bool keys) {
  if (keys) return PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE;
  return PeekMessageW(&message, nullptr, 0, WM_KEYFIRST - 1, PM_REMOVE) != FALSE ||
         PeekMessageW(&message, nullptr, WM_KEYLAST + 1, 0xFFFFFFFF, PM_REMOVE) != FALSE;
}

}  // namespace

// A key's handler runs before its window gets the key. What the keyboard sent behind it, above all
// its own release, must not overtake it.
void Win32Platform::ProcessEvents() {
  MSG message;
  while (TakeMessage(message, !toolkit_->Keys.Handling())) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    ModalLoop::Dispatch(*toolkit_, message);
  }
}

ui::StockIcon Win32Platform::LoadStockIcon(int id) {
  const DpiScope scope;
  if (!LoadIconA(nullptr, MAKEINTRESOURCEA(id)))
    throw RuntimeError(5, u"The system has no stock icon " + ToString(id));
  return {id};
}

void Win32Platform::SetPointer(ui::Pointer pointer) {
  const bool hourglass = pointer == ui::Pointer::Hourglass;
  toolkit_->Pointer = hourglass ? LoadCursorW(nullptr, IDC_WAIT) : nullptr;
  SetCursor(hourglass ? toolkit_->Pointer : LoadCursorW(nullptr, IDC_ARROW));
}

ui::Color Win32Platform::ResolveColor(ui::Color color) {
  return win32::ResolveColor(color);
}

void Win32Platform::SendKeys(StringView keys) {
  win32::SendKeys(keys);
}

int Win32Platform::ShowMessageBox(StringView text, int style, StringView title) {
  const DpiScope scope;
  const int answer = MessageBoxW(toolkit_->Owner(), Wide(String(text)), Wide(String(title)),
                                 static_cast<UINT>(style));
  if (answer == 0) throw SystemError(u"The system's message box cannot be shown");
  return answer;
}

}  // namespace krx::win32
