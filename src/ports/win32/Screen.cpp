#include "ports/win32/Screen.h"

#include <algorithm>
#include <cmath>

namespace krx::win32 {

namespace {

constexpr double kTwipsPerInch = 1440;

using SetAwareness = HANDLE WINAPI(HANDLE);
using MetricForDpi = int WINAPI(int, UINT);
using DpiOfMonitor = HRESULT WINAPI(HMONITOR, int, UINT*, UINT*);

// Awareness contexts by value: headers and systems know them since different versions.
const HANDLE kPerMonitorV2 = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-4));
const HANDLE kPerMonitor = reinterpret_cast<HANDLE>(static_cast<LONG_PTR>(-3));

struct DpiFunctions {
  SetAwareness* Set = OptionalFunction<SetAwareness>(L"user32.dll", "SetThreadDpiAwarenessContext");
  MetricForDpi* Metric = OptionalFunction<MetricForDpi>(L"user32.dll", "GetSystemMetricsForDpi");
  DpiOfMonitor* Of = OptionalFunction<DpiOfMonitor>(L"shcore.dll", "GetDpiForMonitor");
};

const DpiFunctions& Functions() {
  static const DpiFunctions functions;
  return functions;
}

RECT WorkAreaOf(HMONITOR monitor) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(monitor, &info)) throw SystemError(u"The screen cannot be examined");
  return info.rcWork;
}

// How far a stretch has to move to lie in an area, or to cover it where it is longer.
LONG WayInto(LONG from, LONG to, LONG area_from, LONG area_to) {
  const LONG at_begin = area_from - from;
  const LONG at_end = area_to - to;
  return std::clamp(0L, std::min(at_begin, at_end), std::max(at_begin, at_end));
}

int DpiOf(HMONITOR monitor) {
  UINT x = 0;
  UINT y = 0;
  if (Functions().Of && SUCCEEDED(Functions().Of(monitor, 0, &x, &y)) && x > 0)
    return static_cast<int>(x);
  const HDC dc = GetDC(nullptr);
  const int dpi = GetDeviceCaps(dc, LOGPIXELSX);
  ReleaseDC(nullptr, dc);
  return dpi;
}

}  // namespace

DpiScope::DpiScope() : previous_(nullptr) {
  if (!Functions().Set) return;
  previous_ = Functions().Set(kPerMonitorV2);
  if (!previous_) previous_ = Functions().Set(kPerMonitor);
}

DpiScope::~DpiScope() {
  if (previous_) Functions().Set(previous_);
}

int Scale::Pixels(Twips length) const {
  return static_cast<int>(std::lround(static_cast<double>(length) * Dpi / kTwipsPerInch));
}

Twips Scale::ToTwips(int pixels) const {
  return static_cast<Twips>(pixels * kTwipsPerInch / Dpi);
}

int Scale::Thickness(int pixels) const {
  return std::max(1, pixels * Dpi / 96);
}

// Older systems know the measures of one resolution only.
int Scale::Metric(int index) const {
  const auto known = Functions().Metric;
  return known ? known(index, static_cast<UINT>(Dpi)) : GetSystemMetrics(index);
}

Screen Screen::Of(HWND window) {
  const HMONITOR monitor = MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY);
  return {{DpiOf(monitor)}, WorkAreaOf(monitor)};
}

HWND WindowInUse() {
  if (const HWND active = GetActiveWindow()) return active;
  const HWND foreground = GetForegroundWindow();
  DWORD process = 0;
  if (foreground) GetWindowThreadProcessId(foreground, &process);
  return process == GetCurrentProcessId() ? foreground : nullptr;
}

RECT Centred(const RECT& work_area, SIZE size) {
  const LONG left = (work_area.left + work_area.right - size.cx) / 2;
  const LONG top = (work_area.top + work_area.bottom - size.cy) / 2;
  return MovedInside(work_area, {left, top, left + size.cx, top + size.cy});
}

RECT MovedInside(const RECT& work_area, RECT window) {
  OffsetRect(&window, std::max(0L, work_area.left - window.left),
             std::max(0L, work_area.top - window.top));
  // Right and bottom come last, so they win over left and top where both do not fit.
  OffsetRect(&window, std::min(0L, work_area.right - window.right),
             std::min(0L, work_area.bottom - window.bottom));
  return window;
}

RECT KeptInReach(const RECT& window) {
  const RECT area = WorkAreaOf(MonitorFromRect(&window, MONITOR_DEFAULTTONEAREST));
  RECT kept = window;
  OffsetRect(&kept, WayInto(window.left, window.right, area.left, area.right),
             WayInto(window.top, window.bottom, area.top, area.bottom));
  return kept;
}

}  // namespace krx::win32
