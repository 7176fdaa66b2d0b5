#include <windows.h>
// Behind the system's base header.
#include <commctrl.h>
#include <ole2.h>

#include <algorithm>
#include <array>
#include <type_traits>

#include "failures/FailingCalls.h"

namespace krx::failures {

namespace {

constexpr DWORD kFailure = ERROR_NOT_ENOUGH_MEMORY;

// Makes the call, or fails it; the number tells functions of one signature apart.
template <int Number, class Result, class... Arguments>
struct Failing {
  static inline const char* name = nullptr;
  static inline Result(WINAPI* original)(Arguments...) = nullptr;
  static inline Result failure{};

  static Result WINAPI Call(Arguments... arguments) {
    if (!FailingCalls::IsDue(name)) return original(arguments...);
    SetLastError(kFailure);
    return failure;
  }
};

template <int Number, class Result, class... Arguments>
Import Make(const char* name, Result(WINAPI* original)(Arguments...),
            std::type_identity_t<Result> failure) {
  using Calls = Failing<Number, Result, Arguments...>;
  Calls::name = name;
  Calls::original = original;
  Calls::failure = failure;
  return {name, reinterpret_cast<void*>(&Calls::Call)};
}

// Selecting fails; giving back what was selected before, which is the same function, does not.
HGDIOBJ WINAPI Select(HDC dc, HGDIOBJ object) {
  thread_local std::array<HGDIOBJ, 8> replaced{};  // the last ones; the oldest makes room
  const auto known = std::find(replaced.begin(), replaced.end(), object);
  const bool gives_back = object && known != replaced.end();
  if (!gives_back && FailingCalls::IsDue("SelectObject")) {
    SetLastError(kFailure);
    return nullptr;
  }
  const HGDIOBJ before = SelectObject(dc, object);
  if (gives_back) {
    *known = nullptr;
  } else {
    thread_local std::size_t next = 0;
    replaced[next++ % replaced.size()] = before;
  }
  return before;
}

#define KRX_FAILS(function, failure) Make<__COUNTER__>(#function, &::function, failure)

std::vector<Import> OfWindows() {
  return {
      KRX_FAILS(BeginPaint, nullptr),
      KRX_FAILS(ClientToScreen, FALSE),
      KRX_FAILS(CreateWindowExW, nullptr),
      KRX_FAILS(EnumThreadWindows, FALSE),
      KRX_FAILS(GetAncestor, nullptr),
      KRX_FAILS(GetClassNameW, 0),
      KRX_FAILS(GetClientRect, FALSE),
      KRX_FAILS(GetComboBoxInfo, FALSE),
      KRX_FAILS(GetMenuStringW, 0),
      KRX_FAILS(GetMessageW, -1),
      KRX_FAILS(GetMonitorInfoW, FALSE),
      KRX_FAILS(GetScrollInfo, FALSE),
      KRX_FAILS(GetSystemMenu, nullptr),
      KRX_FAILS(GetSystemMetrics, 0),
      KRX_FAILS(GetWindow, nullptr),
      KRX_FAILS(HideCaret, FALSE),
      KRX_FAILS(ShowCaret, FALSE),
      KRX_FAILS(GetWindowRect, FALSE),
      KRX_FAILS(GetWindowTextLengthW, 0),
      KRX_FAILS(GetWindowTextW, 0),
      KRX_FAILS(GetWindowThreadProcessId, 0),
      KRX_FAILS(InvalidateRect, FALSE),
      KRX_FAILS(LoadCursorW, nullptr),
      KRX_FAILS(LoadIconA, nullptr),
      KRX_FAILS(MapVirtualKeyW, 0),
      KRX_FAILS(MapWindowPoints, 0),
      KRX_FAILS(MessageBoxW, 0),
      KRX_FAILS(MonitorFromRect, nullptr),
      KRX_FAILS(MonitorFromWindow, nullptr),
      KRX_FAILS(PeekMessageW, FALSE),
      KRX_FAILS(PostMessageW, FALSE),
      KRX_FAILS(RedrawWindow, FALSE),
      KRX_FAILS(RegisterClassExW, 0),
      KRX_FAILS(ScreenToClient, FALSE),
      KRX_FAILS(SendInput, 0),
      KRX_FAILS(SetActiveWindow, nullptr),
      KRX_FAILS(SetFocus, nullptr),
      KRX_FAILS(SetForegroundWindow, FALSE),
      KRX_FAILS(SetPropW, FALSE),
      KRX_FAILS(SetTimer, 0),
      KRX_FAILS(SetWindowPos, FALSE),
      KRX_FAILS(SetWindowTextW, FALSE),
      KRX_FAILS(SetWindowsHookExW, nullptr),
      KRX_FAILS(SystemParametersInfoW, FALSE),
      KRX_FAILS(TrackMouseEvent, FALSE),
      KRX_FAILS(VkKeyScanW, -1),
      KRX_FAILS(ImageList_Create, nullptr),
      KRX_FAILS(InitCommonControlsEx, FALSE),
  };
}

std::vector<Import> OfClipboard() {
  return {
      KRX_FAILS(EmptyClipboard, FALSE), KRX_FAILS(GetClipboardData, nullptr),
      KRX_FAILS(OpenClipboard, FALSE),  KRX_FAILS(SetClipboardData, nullptr),
      KRX_FAILS(GlobalAlloc, nullptr),  KRX_FAILS(GlobalLock, nullptr),
  };
}

std::vector<Import> OfDrawing() {
  return {
      KRX_FAILS(BitBlt, FALSE),
      KRX_FAILS(CombineRgn, ERROR),
      KRX_FAILS(CreateCompatibleDC, nullptr),
      KRX_FAILS(CreateDIBSection, nullptr),
      KRX_FAILS(CreateFontIndirectW, nullptr),
      KRX_FAILS(CreateRectRgnIndirect, nullptr),
      KRX_FAILS(DPtoLP, FALSE),
      KRX_FAILS(DrawIcon, FALSE),
      KRX_FAILS(DrawIconEx, FALSE),
      KRX_FAILS(DrawTextW, 0),
      KRX_FAILS(ExcludeClipRect, ERROR),
      KRX_FAILS(ExtCreatePen, nullptr),
      KRX_FAILS(ExtTextOutW, FALSE),
      KRX_FAILS(FillRect, 0),
      KRX_FAILS(FrameRect, 0),
      KRX_FAILS(GdiFlush, FALSE),
      KRX_FAILS(GetCurrentObject, nullptr),
      KRX_FAILS(GetDC, nullptr),
      KRX_FAILS(GetDeviceCaps, 0),
      KRX_FAILS(GetLayout, GDI_ERROR),
      KRX_FAILS(GetStockObject, nullptr),
      KRX_FAILS(GetSysColorBrush, nullptr),
      KRX_FAILS(GetTabbedTextExtentW, 0),
      KRX_FAILS(GetTextExtentPoint32W, FALSE),
      KRX_FAILS(GetTextMetricsW, FALSE),
      KRX_FAILS(GetWindowDC, nullptr),
      KRX_FAILS(IntersectClipRect, ERROR),
      KRX_FAILS(LPtoDP, FALSE),
      KRX_FAILS(Polyline, FALSE),
      KRX_FAILS(SaveDC, 0),
      KRX_FAILS(SelectClipRgn, ERROR),
      {"SelectObject", reinterpret_cast<void*>(&Select)},
      KRX_FAILS(SetBkColor, CLR_INVALID),
      KRX_FAILS(SetBkMode, 0),
      KRX_FAILS(SetDCBrushColor, CLR_INVALID),
      KRX_FAILS(SetLayout, GDI_ERROR),
      KRX_FAILS(SetTextAlign, GDI_ERROR),
      KRX_FAILS(SetTextColor, CLR_INVALID),
      KRX_FAILS(TabbedTextOutW, 0),
      KRX_FAILS(TextOutW, FALSE),
  };
}

std::vector<Import> OfRegistryAndFiles() {
  return {
      KRX_FAILS(RegCreateKeyExW, static_cast<LSTATUS>(kFailure)),
      KRX_FAILS(RegDeleteTreeW, static_cast<LSTATUS>(kFailure)),
      KRX_FAILS(RegOpenKeyExW, static_cast<LSTATUS>(kFailure)),
      KRX_FAILS(RegSetValueExW, static_cast<LSTATUS>(kFailure)),
      KRX_FAILS(CreateFileW, INVALID_HANDLE_VALUE),
      KRX_FAILS(GetCurrentDirectoryW, 0),
      KRX_FAILS(GetDriveTypeW, DRIVE_UNKNOWN),
      KRX_FAILS(GetFileAttributesW, INVALID_FILE_ATTRIBUTES),
      KRX_FAILS(GetFileInformationByHandleEx, FALSE),
      KRX_FAILS(GetLogicalDrives, 0),
      KRX_FAILS(GetVolumeInformationW, FALSE),
      KRX_FAILS(FindResourceW, nullptr),
      KRX_FAILS(LoadResource, nullptr),
      KRX_FAILS(LockResource, nullptr),
      KRX_FAILS(SizeofResource, 0),
  };
}

std::vector<Import> OfProcessAndAutomation() {
  return {
      KRX_FAILS(ActivateActCtx, FALSE),
      KRX_FAILS(CancelSynchronousIo, FALSE),
      KRX_FAILS(CreateActCtxW, INVALID_HANDLE_VALUE),
      KRX_FAILS(FormatMessageW, 0),
      KRX_FAILS(GetModuleFileNameW, 0),
      KRX_FAILS(GlobalAddAtomW, 0),
      KRX_FAILS(LCMapStringEx, 0),
      KRX_FAILS(LoadLibraryExW, nullptr),
      KRX_FAILS(OpenThread, nullptr),
      KRX_FAILS(SetThreadErrorMode, FALSE),
      KRX_FAILS(TrySubmitThreadpoolCallback, FALSE),
      KRX_FAILS(CoCreateInstance, E_OUTOFMEMORY),
      KRX_FAILS(CoRegisterInitializeSpy, E_OUTOFMEMORY),
      KRX_FAILS(CreateErrorInfo, E_OUTOFMEMORY),
      KRX_FAILS(LoadTypeLibEx, TYPE_E_CANTLOADLIBRARY),
      KRX_FAILS(SysAllocStringLen, nullptr),
      KRX_FAILS(VariantChangeTypeEx, E_OUTOFMEMORY),
      KRX_FAILS(VariantCopy, E_OUTOFMEMORY),
      KRX_FAILS(VariantCopyInd, E_OUTOFMEMORY),
      KRX_FAILS(SafeArrayGetElement, E_OUTOFMEMORY),
      KRX_FAILS(SafeArrayGetUBound, E_INVALIDARG),
      KRX_FAILS(SafeArrayGetVartype, E_INVALIDARG),
  };
}

}  // namespace

const std::vector<Import>& FailingImports() {
  static const std::vector<Import> all = [] {
    std::vector<Import> imports;
    for (const auto& part :
         {OfWindows(), OfClipboard(), OfDrawing(), OfRegistryAndFiles(), OfProcessAndAutomation()})
      imports.insert(imports.end(), part.begin(), part.end());
    return imports;
  }();
  return all;
}

const std::vector<std::string>& SparedImports() {
  static const std::vector<std::string> all{
      // Give something back: whoever has a right handle meets no failure.
      "CloseClipboard",
      "CloseHandle",
      "CoRevokeInitializeSpy",
      "DeactivateActCtx",
      "DeleteCriticalSection",
      "DeleteDC",
      "DeleteObject",
      "DestroyWindow",
      "EndPaint",
      "GlobalDeleteAtom",
      "GlobalFree",
      "GlobalUnlock",
      "ImageList_Destroy",
      "KillTimer",
      "LocalFree",
      "RegCloseKey",
      "ReleaseActCtx",
      "ReleaseCapture",
      "ReleaseDC",
      "RemovePropW",
      "RestoreDC",
      "SysFreeString",
      "UnhookWindowsHookEx",
      "UnregisterClassW",
      "VariantClear",
      // Have no value for a failure, or none that differs from a usual answer.
      "CallNextHookEx",
      "CallWindowProcW",
      "DefWindowProcW",
      "DispatchMessageW",
      "EnableWindow",
      "EqualRect",
      "GetActiveWindow",
      "GetAsyncKeyState",
      "GetCapture",
      "GetCurrentProcessId",
      "GetCurrentThreadId",
      "GetDesktopWindow",
      "GetErrorInfo",
      "GetFocus",
      "GetForegroundWindow",
      "GetKeyState",
      "GetLastError",
      "GetMessageExtraInfo",
      "GetScrollPos",
      "GetSysColor",
      "GetTickCount",
      "GetTickCount64",
      "GetSystemTimePreciseAsFileTime",
      "InflateRect",
      "IsCharAlphaW",
      "IsChild",
      "IsWindow",
      "IsWindowEnabled",
      "IsWindowVisible",
      "MulDiv",
      "NotifyWinEvent",
      "OffsetRect",
      "PostQuitMessage",
      "PtInRect",
      "QueryPerformanceCounter",
      "QueryPerformanceFrequency",
      "RectVisible",
      "SendMessageW",
      "SetCapture",
      "SetCursor",
      "SetErrorInfo",
      "SetLastError",
      "SetScrollInfo",
      "ShowWindow",
      "Sleep",
      "StringFromGUID2",
      "SysStringByteLen",
      "SysStringLen",
      "TranslateMessage",
      "VariantInit",
      // Read and write what a window or the module has in its own memory.
      "GetModuleHandleExW",
      "GetModuleHandleW",
      "GetProcAddress",
      "GetWindowLongPtrW",
      "GetWindowLongW",
      "LoadLibraryW",
      "SetWindowLongPtrW",
      "SetWindowLongW",
      // Locks, memory and exceptions of the language's own library.
      "AcquireSRWLockExclusive",
      "FreeLibrary",
      "GetModuleHandleA",
      "LoadLibraryA",
      "EnterCriticalSection",
      "FormatMessageA",
      "InitializeCriticalSection",
      "IsDBCSLeadByteEx",
      "LeaveCriticalSection",
      "MultiByteToWideChar",
      "RaiseException",
      "ReadFile",
      "ReleaseSRWLockExclusive",
      "RtlCaptureContext",
      "RtlLookupFunctionEntry",
      "RtlUnwindEx",
      "RtlVirtualUnwind",
      "SleepConditionVariableSRW",
      "TlsAlloc",
      "TlsFree",
      "TlsGetValue",
      "TlsSetValue",
      "VirtualProtect",
      "VirtualQuery",
      "WakeAllConditionVariable",
      "WideCharToMultiByte",
      // Registration of the component, which no dialog calls.
      "RegisterTypeLib",
      "RegisterTypeLibForUser",
      "UnRegisterTypeLib",
      "UnRegisterTypeLibForUser",
  };
  return all;
}

}  // namespace krx::failures
