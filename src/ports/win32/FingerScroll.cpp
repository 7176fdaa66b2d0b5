#include "ports/win32/FingerScroll.h"

namespace krx::win32 {

namespace {

constexpr UINT kStep = 15;  // milliseconds

}  // namespace

void FingerScroll::Begin(HWND window, const ui::DragScroll::List& list, int top, Twips y,
                         double now) {
  window_ = window;
  KillTimer(window_, kTimer);
  drag_.Begin(list, top, y, now);
}

bool FingerScroll::End(double now) {
  const bool click = drag_.End(now);
  if (drag_.Gliding()) SetTimer(window_, kTimer, kStep, nullptr);
  return click;
}

std::optional<int> FingerScroll::Glide(double now) {
  if (!drag_.Gliding()) return {};
  const int top = drag_.Glide(now);
  if (!drag_.Gliding()) KillTimer(window_, kTimer);
  return top;
}

void FingerScroll::LetGo() {
  if (drag_.Touched()) Stop();
}

void FingerScroll::StopGliding() {
  if (drag_.Gliding()) Stop();
}

void FingerScroll::Stop() {
  drag_.Stop();
  KillTimer(window_, kTimer);
}

}  // namespace krx::win32
