#pragma once

#include <memory>

#include "base/PanelSettings.h"
#include "host/FontService.h"
#include "host/TextService.h"
#include "host/UserManager.h"

namespace krx::host {

// Where the dialogs get their references to the runtime's services from. Each call creates a new
// reference; a service that cannot be created raises Error.
class Runtime {
 public:
  virtual ~Runtime() = default;
  virtual std::unique_ptr<TextService> CreateTextService() = 0;
  virtual std::unique_ptr<FontService> CreateFontService() = 0;
  virtual std::unique_ptr<UserSession> CreateUserSession() = 0;
  virtual std::unique_ptr<UserAdministration> CreateUserAdministration() = 0;
  virtual std::unique_ptr<UserClassAdministration> CreateUserClassAdministration() = 0;
  // What the plant has chosen for its panels. It is optional: a runtime that knows nothing of it
  // leaves it as it is.
  virtual PanelSettings ReadPanelSettings() { return {}; }
  // What operators have to acknowledge before they log on, as the text of a message box; empty
  // where there is none. It is optional: a runtime that knows nothing of it may raise Error.
  virtual String ReadLogOnNotice() { return {}; }
};

}  // namespace krx::host
