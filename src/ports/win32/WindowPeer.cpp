#include "ports/win32/WindowPeer.h"

namespace krx::win32 {

namespace {

constexpr const wchar_t* kNameProperty = L"KRXName";

WindowPeer* PeerOf(HWND window) {
  return reinterpret_cast<WindowPeer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

}  // namespace

WindowPeer::~WindowPeer() {
  detached_ = true;
  accessible_.WindowGone();
  Destroy();
}

void WindowPeer::Destroy() {
  if (window_) DestroyWindow(window_);
}

void WindowPeer::Create(const CommonControls& controls, const Creation& wanted,
                        const String& name) {
  const CommonControls::Scope scope(controls);
  const RECT& place = wanted.Place;
  const HWND window =
      CreateWindowExW(wanted.ExStyle, wanted.Class, wanted.Text, wanted.Style, place.left,
                      place.top, place.right - place.left, place.bottom - place.top, wanted.Parent,
                      nullptr, ThisModule(), this);
  if (!window) throw SystemError(u"The window of " + name + u" cannot be created");
  if (!window_) Follow(window);
  SetName(name);
}

// A window of the system has its own procedure, which goes on doing the work behind ours.
void WindowPeer::Follow(HWND window) {
  window_ = window;
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  native_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

void WindowPeer::SetName(const String& name) {
  name_ = GlobalAddAtomW(Wide(name));
  if (name_) SetPropW(window_, kNameProperty, reinterpret_cast<HANDLE>(ULONG_PTR{name_}));
}

void WindowPeer::DropName() {
  if (!name_) return;
  RemovePropW(window_, kNameProperty);
  GlobalDeleteAtom(name_);
  name_ = 0;
}

LRESULT WindowPeer::Default(UINT message, WPARAM w, LPARAM l) {
  if (native_) return CallWindowProcW(native_, window_, message, w, l);
  return DefWindowProcW(window_, message, w, l);
}

LRESULT CALLBACK WindowPeer::Procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
  WindowPeer* peer = PeerOf(window);
  if (message == WM_NCCREATE && !peer) {
    peer = static_cast<WindowPeer*>(reinterpret_cast<const CREATESTRUCTW*>(l)->lpCreateParams);
    peer->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(peer));
  }
  if (!peer) return DefWindowProcW(window, message, w, l);
  if (message == WM_DESTROY) peer->DropName();
  if (message == WM_NCDESTROY) {
    peer->accessible_.WindowGone();
    const LRESULT result = peer->Default(message, w, l);
    peer->window_ = nullptr;
    return result;
  }
  if (peer->detached_) return peer->Default(message, w, l);
  try {
    const LRESULT object = message == WM_GETOBJECT ? peer->GiveObject(w, l) : 0;
    return object != 0 ? object : peer->Handle(message, w, l);
  } catch (...) {
    peer->Fail(std::current_exception());
    return 0;
  }
}

}  // namespace krx::win32
