#pragma once

#include "TestForm.h"
#include "msgbox/FMessageBox.h"
#include "service/KRXDialog.h"

namespace krx::test {

// The dialogs on real windows, with the message box, over services that answer by themselves.
template <class AnyPlatform>
struct DeskOn {
  AnyPlatform Platform;
  FakeRuntime Runtime;
  service::Apartment Apartment{Platform, Runtime};
  std::shared_ptr<service::KRXDialog> Dialog = service::KRXDialog::Create(Apartment);
};
using Desk = DeskOn<win32::Win32Platform>;

// Of a window, in pixels of the screen.
inline RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

}  // namespace krx::test
