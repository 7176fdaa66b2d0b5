#include "ports/win32/FingerScroll.h"

namespace krx::win32 {

namespace {

constexpr UINT kStep = 15;  // milliseconds

double Now() {
  return static_cast<double>(GetTickCount64());
}

}  // namespace

void FingerScroll::Begin(HWND window, const ui::DragScroll::List& list, int top, Twips y) {
  window_ = window;
  KillTimer(window_, kTimer);
  drag_.Begin(list, top, y, Now());
}

int FingerScroll::Move(Twips y) {
  return drag_.Move(y, Now());
}

bool FingerScroll::End() {
  const bool click = drag_.End(Now());
  if (drag_.Gliding()) SetTimer(window_, kTimer, kStep, nullptr);
  return click;
}

std::optional<int> FingerScroll::Glide() {
  if (!drag_.Gliding()) return {};
  const int top = drag_.Glide(Now());
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
