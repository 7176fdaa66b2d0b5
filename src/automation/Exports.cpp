// The component's four entry points. Each only hands over.
#include <ole2.h>

// Defines the identifiers of the component's own interfaces here.
#include <initguid.h>

#include "KRXDialogs.h"

#include "automation/KRXDialogObject.h"
#include "automation/ThreadApartment.h"
#include "com/Component.h"
#include "com/Registration.h"
#include "ports/win32/Accessible.h"

namespace {

const krx::com::ClassInfo kClasses[] = {
    {__uuidof(KRXDialog), L"KRXDialogs.KRXDialog", L"KorvelSuite KRXDialogs",
     &krx::automation::KRXDialogObject::Create, &krx::automation::KRXDialogObject::Offers},
};
const krx::com::Component kComponent{kClasses, LIBID_KRXDialogs};

}  // namespace

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  krx::automation::ThreadApartment::BuryDead();
  return krx::com::GetClassObject(kComponent, id, iid, object);
}

STDAPI DllCanUnloadNow() {
  krx::automation::ThreadApartment::BuryDead();
  // Assistive programs may keep objects of windows that have long gone.
  return krx::win32::accessible_objects > 0 ? S_FALSE : krx::com::CanUnloadNow();
}

STDAPI DllRegisterServer() {
  return krx::com::Register(kComponent);
}

STDAPI DllUnregisterServer() {
  return krx::com::Unregister(kComponent);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void* process_ends) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return krx::automation::ThreadApartment::ModuleStarts();
    case DLL_THREAD_DETACH:
      krx::automation::ThreadApartment::ThreadEnds();
      break;
    case DLL_PROCESS_DETACH:
      // At the end of the process the system takes everything back by itself.
      if (!process_ends) krx::automation::ThreadApartment::ModuleEnds();
      break;
  }
  return TRUE;
}
