#include "runtime/users/win32/NoticeWindow.h"

#include <algorithm>

#include "com/Module.h"
#include "com/Text.h"

namespace krx::runtime {
namespace {

constexpr const wchar_t* kClass = L"KorvelNotice";
constexpr int kMargin = 12;     // in pixels of 96 to the inch
constexpr int kFontGrowth = 3;  // of halves: read from where an operator stands
constexpr UINT kDrawing = DT_CENTER | DT_NOPREFIX;

// The screen of the window that is worked with.
RECT WorkArea() {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  const HMONITOR monitor = MonitorFromWindow(GetForegroundWindow(), MONITOR_DEFAULTTOPRIMARY);
  if (GetMonitorInfoW(monitor, &info)) return info.rcWork;
  return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

HFONT MessageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) return nullptr;
  metrics.lfMessageFont.lfHeight = metrics.lfMessageFont.lfHeight * kFontGrowth / 2;
  return CreateFontIndirectW(&metrics.lfMessageFont);
}

// A device context of the window with its font.
class Ink {
 public:
  Ink(HDC context, HFONT font)
      : context_(context), before_(font ? SelectObject(context, font) : nullptr) {}
  ~Ink() {
    if (before_) SelectObject(context_, before_);
  }
  Ink(const Ink&) = delete;
  Ink& operator=(const Ink&) = delete;

 private:
  HDC context_;
  HGDIOBJ before_;
};

// Known already when another thread shows something.
void RegisterNotices(WNDPROC procedure) {
  WNDCLASSEXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.style = CS_DROPSHADOW;
  wanted.lpfnWndProc = procedure;
  wanted.hInstance = com::ModuleHandle();
  wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wanted.lpszClassName = kClass;
  RegisterClassExW(&wanted);
}

int MarginOn(HDC context) {
  return MulDiv(kMargin, GetDeviceCaps(context, LOGPIXELSX), 96);
}

}  // namespace

NoticeWindow::~NoticeWindow() {
  NoticeWindow::Hide();
}

bool NoticeWindow::Create() {
  const bool mirrored = languages_.Text(u"TextDirection", -105) == u"rtl";
  reading_ = mirrored ? DT_RTLREADING : 0;
  font_ = MessageFont();
  RegisterNotices(&NoticeWindow::OnMessage);
  window_ = CreateWindowExW(WS_EX_TOPMOST | WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, kClass, L"",
                            WS_POPUP | WS_BORDER, 0, 0, 0, 0, nullptr, nullptr, com::ModuleHandle(),
                            this);
  touched_ = false;
  return window_ != nullptr;
}

void NoticeWindow::Show(const String& text) {
  std::wstring wide = com::ToWide(text);
  if (window_ && wide == text_) return;
  const bool appears = window_ == nullptr;
  if (appears && !Create()) return Hide();
  text_ = std::move(wide);
  touched_ = false;
  SetWindowTextW(window_, text_.c_str());  // for screen readers
  Place();
  InvalidateRect(window_, nullptr, FALSE);
  UpdateWindow(window_);
  if (appears) NotifyWinEvent(EVENT_SYSTEM_ALERT, window_, OBJID_WINDOW, CHILDID_SELF);
}

void NoticeWindow::Hide() {
  if (window_) {
    DestroyWindow(window_);
    UnregisterClassW(kClass, com::ModuleHandle());  // kept while another thread shows something
  }
  if (font_) DeleteObject(font_);
  window_ = nullptr;
  font_ = nullptr;
  text_.clear();
}

void NoticeWindow::Place() {
  const RECT area = WorkArea();
  RECT text{0, 0, area.right - area.left, 0};
  RECT now{};
  GetWindowRect(window_, &now);
  const HDC context = GetDC(window_);
  const int margin = MarginOn(context);
  text.right -= 4 * margin;
  {
    const Ink ink(context, font_);
    DrawTextW(context, text_.c_str(), -1, &text, kDrawing | DT_WORDBREAK | DT_CALCRECT | reading_);
  }
  ReleaseDC(window_, context);
  // Never narrower than before: a countdown would make it tremble.
  const int width = std::max<int>(text.right + 3 * margin, now.right - now.left);
  const int height = text.bottom + 2 * margin + 2 * GetSystemMetrics(SM_CYBORDER);
  const int left = area.left + (area.right - area.left - width) / 2;
  SetWindowPos(window_, HWND_TOPMOST, left, area.top + margin, width, height,
               SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void NoticeWindow::Paint() {
  PAINTSTRUCT paint;
  const HDC context = BeginPaint(window_, &paint);
  RECT area;
  GetClientRect(window_, &area);
  FillRect(context, &area, GetSysColorBrush(COLOR_INFOBK));
  SetBkMode(context, TRANSPARENT);
  SetTextColor(context, GetSysColor(COLOR_INFOTEXT));
  const int margin = MarginOn(context);
  InflateRect(&area, -margin, -margin);
  {
    const Ink ink(context, font_);
    DrawTextW(context, text_.c_str(), -1, &area, kDrawing | DT_WORDBREAK | reading_);
  }
  EndPaint(window_, &paint);
}

LRESULT CALLBACK NoticeWindow::OnMessage(HWND window, UINT message, WPARAM wide, LPARAM extra) {
  if (message == WM_NCCREATE) {
    const auto* const created = reinterpret_cast<const CREATESTRUCTW*>(extra);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created->lpCreateParams));
  }
  auto* const self = reinterpret_cast<NoticeWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  switch (message) {
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      if (!self) break;
      self->Paint();
      return 0;
    case WM_LBUTTONUP:
      if (self) self->touched_ = true;
      return 0;
    default:
      break;
  }
  return DefWindowProcW(window, message, wide, extra);
}

}  // namespace krx::runtime
