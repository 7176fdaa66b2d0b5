#pragma once

#include <memory>
#include <utility>

#include "base/Geometry.h"
#include "host/Application.h"
#include "host/Runtime.h"
#include "ui/Platform.h"

namespace krx::service {

class KRXDialog;

// The settings that all dialog objects of an apartment share. Initialised by the first object,
// cleared by the destruction of any.
struct SharedSettings {
  std::shared_ptr<KRXDialog> DialogService;
  std::shared_ptr<host::Application> HostApplication;
  String FontClassCaption;
  String FontClassText;
  String FontClassButton;
  String FontClassInput;
  Twips ButtonMinHeight = 0;
  Twips CaptionMinHeight = 0;
};

// What one user-interface thread works with: its windowing system, the runtime's services and
// the shared settings. Two apartments of a process never touch each other's.
class Apartment {
 public:
  Apartment(ui::Platform& platform, host::Runtime& runtime)
      : Platform(platform), Runtime(runtime) {}
  // Taken out first: the dialog object that the settings hold clears them as it goes.
  ~Apartment() { const SharedSettings last = std::exchange(Shared, {}); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

  ui::Platform& Platform;
  host::Runtime& Runtime;
  SharedSettings Shared;

  // Empty once the apartment has ended; a dialog object that a client still holds asks here.
  std::weak_ptr<Apartment> Handle() const { return handle_; }

 private:
  // Owns nothing: it only tells that the apartment is still there.
  const std::shared_ptr<Apartment> handle_{this, [](Apartment*) {}};
};

}  // namespace krx::service
