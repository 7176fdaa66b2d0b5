#include "Camera.h"

#include <cstdio>
#include <stdexcept>
#include <utility>

#include "Seen.h"

namespace krx::pictures {

namespace {

constexpr UINT kInterval =
    15;  // milliseconds; a timer has its turn when nothing else waits in the queue
constexpr int kLooks = 20;   // until a picture that nobody has approved counts as the one
constexpr int kWaits = 500;  // after which something may be wrong

Camera* camera = nullptr;

bool HasKeyboard(HWND form) {
  const HWND focus = GetFocus();
  return GetForegroundWindow() == form && (focus == form || IsChild(form, focus));
}

RECT BoundsOf(HWND window) {
  RECT bounds{};
  GetWindowRect(window, &bounds);
  return bounds;
}

bool OnScreen(const RECT& place) {
  return place.left >= 0 && place.top >= 0 && place.right <= GetSystemMetrics(SM_CXSCREEN) &&
         place.bottom <= GetSystemMetrics(SM_CYSCREEN);
}

RECT PlaceOf(Scene::Part part, HWND form) {
  RECT place = BoundsOf(part == Scene::Part::Keyboard ? FormNamed(L"FKeyboard") : form);
  if (part != Scene::Part::FormAndList) return place;
  const RECT list = BoundsOf(OpenList(form));
  UnionRect(&place, &place, &list);
  return place;
}

}  // namespace

Camera::Camera(Approved approved, std::filesystem::path folder)
    : approved_(std::move(approved)),
      folder_(std::move(folder)),
      timer_(SetTimer(nullptr, 0, kInterval, Tick)) {
  camera = this;
}

Camera::~Camera() {
  KillTimer(nullptr, timer_);
  camera = nullptr;
}

bool Camera::Take(const std::string& name, const Scene& scene, const Look& look,
                  IKRXDialog& dialogs) {
  scene_ = &scene;
  name_ = name;
  const auto approved = approved_.find(name);
  wanted_ = approved == approved_.end() ? std::string() : approved->second;
  acted_ = false;
  spoiled_ = false;
  looks_ = 0;
  waits_ = 0;
  last_ = {};
  same_.reset();
  failure_.clear();
  const HHOOK held = scene.Seconds
                         ? SetWindowsHookExW(WH_GETMESSAGE, HoldTime, nullptr, GetCurrentThreadId())
                         : nullptr;
  const HRESULT status = scene.Open(dialogs, look);
  if (held) UnhookWindowsHookEx(held);
  scene_ = nullptr;
  if (status != S_OK) throw std::runtime_error(name + " fails");
  if (!failure_.empty()) throw std::runtime_error(name + failure_);
  if (!same_) throw std::runtime_error(name + " was never seen");
  return *same_;
}

void Camera::Tick(HWND, UINT, UINT_PTR, DWORD) {
  if (!camera || !camera->scene_ || camera->same_ || !camera->failure_.empty()) return;
  const HWND form = FormNamed(camera->scene_->Form);
  if (form && HasKeyboard(form)) camera->LookAt(form);
}

// The dialogs' timers belong to windows and have no function of their own.
LRESULT Camera::HoldTime(int code, WPARAM removed, LPARAM message) {
  MSG& taken = *reinterpret_cast<MSG*>(message);
  if (code == HC_ACTION && taken.message == WM_TIMER && taken.lParam == 0) taken.message = WM_NULL;
  return CallNextHookEx(nullptr, code, removed, message);
}

void Camera::LookAt(HWND form) {
  if (!std::exchange(acted_, true)) {
    scene_->Act(form);
  } else if (!scene_->Complete(form)) {
    Wait(form);
  } else if (const RECT place = PlaceOf(scene_->Shown, form); !OnScreen(place)) {
    failure_ = " is not all on the screen";
    Leave(form);
  } else {
    Compare(TakePicture(place));
    if (looks_ == kLooks && scene_->Spoil && !std::exchange(spoiled_, true)) {
      scene_->Spoil(form);
      looks_ = 0;
    } else if (same_ || looks_ == kLooks) {
      Finish(form);
    }
  }
}

// Whoever waits for it in vain is told.
void Camera::Wait(HWND form) {
  if (++waits_ % kWaits == 0)
    std::fprintf(stderr, "%s is still not complete, with %d rows\n", name_.c_str(), RowsOn(form));
}

void Camera::Compare(Picture picture) {
  const bool changed = picture != last_;
  looks_ = changed ? 1 : looks_ + 1;
  if (changed && !wanted_.empty() && SumOf(picture) == wanted_) same_ = true;
  last_ = std::move(picture);
}

void Camera::Finish(HWND form) {
  if (!same_) {
    Write(last_, folder_ / (name_ + ".ppm"));
    same_ = false;
  }
  Leave(form);
}

}  // namespace krx::pictures
