#include "ports/win32/CommonControls.h"

namespace krx::win32 {

namespace {

// Of a library's own manifest, by the system's convention. A program with this code has one for its
// whole process instead, or none.
constexpr int kManifest = 2;

}  // namespace

CommonControls::CommonControls() {
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
  wanted.hModule = ThisModule();
  wanted.lpResourceName = MAKEINTRESOURCEW(kManifest);
  context_ = CreateActCtxW(&wanted);
}

CommonControls::~CommonControls() {
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

CommonControls::Scope::Scope(const CommonControls& controls)
    : active_(controls.context_ != INVALID_HANDLE_VALUE &&
              ActivateActCtx(controls.context_, &cookie_) != FALSE) {}

CommonControls::Scope::~Scope() {
  if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace krx::win32
