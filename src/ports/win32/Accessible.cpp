#include "ports/win32/Accessible.h"

#include "ports/win32/AccessibleObject.h"

namespace krx::win32 {

LRESULT Accessible::Answer(WPARAM w, LPARAM l,
                           const std::function<std::unique_ptr<Spoken>()>& speak) {
  if (static_cast<LONG>(l) != OBJID_CLIENT || !AccessibilityLibrary::Get()) return 0;
  if (!object_) object_ = new AccessibleObject(speak());
  const LRESULT answer = AccessibilityLibrary::Get().Wrap(__uuidof(IAccessible), w,
                                                          static_cast<IAccessible*>(object_));
  // Without COM on this thread it can go nowhere; the system's own object can.
  return FAILED(static_cast<HRESULT>(answer)) ? 0 : answer;
}

void Accessible::WindowGone() {
  if (!object_) return;
  object_->WindowGone();
  object_->Release();
  object_ = nullptr;
}

}  // namespace krx::win32
