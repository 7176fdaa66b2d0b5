#pragma once

#include "host/Runtime.h"

namespace krx::automation {

// The runtime's services as automation objects: created by class identifier when a dialog first
// needs them, bound early. A failed call keeps the service's own status and description; a class
// that cannot be created is named in the error. References belong to the thread that created them.
class RuntimeServices : public host::Runtime {
 public:
  std::unique_ptr<host::TextService> CreateTextService() override;
  std::unique_ptr<host::FontService> CreateFontService() override;
  std::unique_ptr<host::UserSession> CreateUserSession() override;
  std::unique_ptr<host::UserAdministration> CreateUserAdministration() override;
  std::unique_ptr<host::UserClassAdministration> CreateUserClassAdministration() override;
  // Without such a class, as without any; what cannot be had, or is none of its values, stays as
  // without the class.
  PanelSettings ReadPanelSettings() override;
  // By name, because a runtime's class may be older than the property.
  String ReadLogOnNotice() override;
};

}  // namespace krx::automation
