#pragma once

#include <ole2.h>

#include "com/ComPtr.h"
#include "host/Application.h"

namespace krx::automation {

// A client's application object, asked for its program name by late binding. Keeps the object
// alive; to be used on the thread that handed it over.
class HostApplication : public host::Application {
 public:
  explicit HostApplication(IDispatch& application) : application_(&application) {}

  // The application's EXEName as text. Its failure is raised with its own status and description;
  // a value that is no text is a type mismatch.
  String EXEName() override;

 private:
  com::ComPtr<IDispatch> application_;
};

}  // namespace krx::automation
