#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <vector>

#include "host/Runtime.h"
#include "ports/headless/Operator.h"
#include "service/KRXDialog.h"

namespace krx::test {

// A runtime that writes nothing down, so that almost every allocation of a call is the dialogs'
// own. A text is its key; the user management answers with the codes that it is given and succeeds
// without one.
class PlainRuntime : public host::Runtime {
 public:
  int Live = 0;  // objects of the runtime
  PanelSettings Panel;
  String Layout;  // name of the layout of the keyboard on the screen
  std::deque<std::int32_t> Codes;
  std::vector<String> Names;
  host::CurrentUser Current;

  std::unique_ptr<host::TextService> CreateTextService() override;
  std::unique_ptr<host::FontService> CreateFontService() override;
  std::unique_ptr<host::UserSession> CreateUserSession() override;
  std::unique_ptr<host::UserAdministration> CreateUserAdministration() override;
  std::unique_ptr<host::UserClassAdministration> CreateUserClassAdministration() override;
  PanelSettings ReadPanelSettings() override { return Panel; }

  std::int32_t NextCode(std::int32_t success);
};

// A panel with its drives and users, and a dialog object that a client holds.
struct Plant {
  Plant();

  headless::HeadlessPlatform Platform;
  PlainRuntime Runtime;
  service::Apartment Apartment{Platform, Runtime};
  std::shared_ptr<service::KRXDialog> Dialog = service::KRXDialog::Create(Apartment);
};

}  // namespace krx::test
