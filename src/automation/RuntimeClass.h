#pragma once

#include <ole2.h>

#include "base/Error.h"
#include "com/ComPtr.h"
#include "com/Errors.h"

namespace krx::automation {

// A reference to an object of a class of the runtime, created with it and bound early. A class that
// cannot be created is named in the error.
template <class Interface>
class RuntimeClass {
 public:
  RuntimeClass(REFCLSID id, StringView name) {
    const HRESULT status = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                            __uuidof(Interface), service_.PutVoid());
    if (SUCCEEDED(status)) return;
    const String what = status == REGDB_E_CLASSNOTREG
                            ? String(u" is not registered")
                            : u" cannot be created: " + com::SystemMessage(status);
    throw Error(static_cast<std::uint32_t>(status), u"The runtime's class " + String(name) + what);
  }

  Interface* operator->() const { return service_.Get(); }

  // Raises the failure of a call with the service's own status and description.
  void Check(HRESULT status) const { com::CheckCall(status, service_.Get(), __uuidof(Interface)); }

 private:
  com::ComPtr<Interface> service_;
};

}  // namespace krx::automation
