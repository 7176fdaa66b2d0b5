#include "ports/win32/Win32Platform.h"

#include <array>
#include <exception>

#include "ports/win32/Clipboard.h"
#include "ports/win32/Layouts.h"
#include "ports/win32/ModalLoop.h"
#include "ports/win32/PeerFactory.h"
#include "ports/win32/SendKeys.h"

namespace krx::win32 {

namespace {

constexpr int kInputPadding = 2;  // pixels at 96 dpi, between text and border of an input box

constexpr char32_t kDottedI = 0x130;
constexpr char32_t kDotlessI = 0x131;

// A character in another case; itself where the system knows none.
char32_t MappedCase(char32_t character, DWORD mapping) {
  const bool pair = character >= 0x10000;
  const char32_t rest = character - 0x10000;
  const std::array<wchar_t, 2> from{static_cast<wchar_t>(pair ? 0xD800 + (rest >> 10) : character),
                                    static_cast<wchar_t>(0xDC00 + (rest & 0x3FF))};
  std::array<wchar_t, 2> to{};
  const int units = pair ? 2 : 1;
  if (LCMapStringEx(LOCALE_NAME_INVARIANT, mapping | LCMAP_LINGUISTIC_CASING, from.data(), units,
                    to.data(), units, nullptr, nullptr, 0) != units)
    return character;
  if (!pair) return to[0];
  return 0x10000 + ((to[0] & 0x3FFu) << 10) + (to[1] & 0x3FFu);
}

Error WindowLost(const String& name) {
  return Error(static_cast<std::uint32_t>(HRESULT_FROM_WIN32(ERROR_INVALID_WINDOW_HANDLE)),
               u"The window of " + name + u" has been destroyed");
}

}  // namespace

Win32Platform::Win32Platform() : toolkit_(std::make_unique<Toolkit>()) {}

Win32Platform::~Win32Platform() = default;

// Lower case of the upper case: letters with two lower-case forms, such as the final sigma, come
// out the same. The two letters of Turkish alone belong to no other letter.
char32_t Win32Platform::FoldCase(char32_t character) {
  if (character == kDotlessI || character == kDottedI) return character;
  return MappedCase(MappedCase(character, LCMAP_UPPERCASE), LCMAP_LOWERCASE);
}

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
  return scale.ToTwips(line.cy + 2 * scale.Metric(SM_CYEDGE) + scale.Thickness(kInputPadding));
}

Twips Win32Platform::ScrollBarWidth() {
  const DpiScope scope;
  const Scale scale = toolkit_->OpeningScreen().Scale;
  return scale.ToTwips(scale.Metric(SM_CXVSCROLL));
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

folders::FileSystem& Win32Platform::Files() {
  return files_;
}

namespace {

// The system's tick count may be behind the stamps that messages bear.
constexpr DWORD kStampsAhead = 20;  // milliseconds

bool CameLater(const MSG& message, DWORD begin) {
  return static_cast<LONG>(message.time - begin - kStampsAhead) > 0;
}

// Handles what was posted before `begin`, and timers that are due. False when the thread is to end.
bool HandlePosted(Toolkit& toolkit, UINT first, UINT last, DWORD begin) {
  MSG message{};
  message.time = begin;
  constexpr UINT kPosted = PM_REMOVE | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE;
  while (!CameLater(message, begin) && PeekMessageW(&message, nullptr, first, last, kPosted)) {
    if (message.message == WM_QUIT) {
      PostQuitMessage(static_cast<int>(message.wParam));
      return false;
    }
    ModalLoop::Dispatch(toolkit, message);
  }
  return true;
}

}  // namespace

// Ends whatever comes meanwhile: a handler that waited for an empty queue would never get one where
// something goes on asking for paints. Each window is painted once. The operator's input waits for
// the handler, in the order in which he gave it: above all, what he did after a key must not
// overtake the key's own window.
void Win32Platform::ProcessEvents() {
  const DWORD begin = GetTickCount();
  if (!HandlePosted(*toolkit_, 0, WM_KEYFIRST - 1, begin)) return;
  if (!HandlePosted(*toolkit_, WM_KEYLAST + 1, 0xFFFFFFFF, begin)) return;
  for (const ModalLoop* const loop : toolkit_->Loops) {
    if (const HWND form = loop->Peer().Window())
      RedrawWindow(form, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
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
  return PlainColor(color);
}

void Win32Platform::SendKeys(StringView keys) {
  win32::SendKeys(keys);
}

void Win32Platform::PressKey(const ui::Keystroke& stroke) {
  win32::PressKey(stroke);
}

std::string Win32Platform::KeyboardLayout(StringView name) {
  return ReadLayout(name);
}

double Win32Platform::Ticks() {
  return static_cast<double>(GetTickCount64());
}

void Win32Platform::CopyText(StringView text) {
  win32::CopyText(toolkit_->FormInUse(), text);
}

int Win32Platform::ShowMessageBox(StringView text, int style, StringView title) {
  const DpiScope scope;
  const HWND form = toolkit_->FormInUse();
  // A window of the host as owner would take the box along when it goes.
  const UINT modality = form ? 0 : MB_TASKMODAL | MB_SETFOREGROUND;
  const CommonControls::Scope controls(toolkit_->Controls);
  const int answer = MessageBoxW(form, Wide(String(text)), Wide(String(title)),
                                 static_cast<UINT>(style) | modality);
  if (answer == 0) throw SystemError(u"The system's message box cannot be shown");
  return answer;
}

}  // namespace krx::win32
