#include "com/Component.h"

// The identifier of the type library is defined here, once for the component.
#include <initguid.h>

#include <KorvelRuntime.h>

#include "com/Registration.h"
#include "runtime/FontService.h"
#include "runtime/ModuleTexts.h"
#include "runtime/PanelSettings.h"
#include "runtime/RuntimeSettings.h"
#include "runtime/TextService.h"
#include "runtime/users/com/SessionThread.h"
#include "runtime/users/com/UserAdministration.h"
#include "runtime/users/com/UserClassAdministration.h"
#include "runtime/users/com/UserSession.h"

namespace krx::runtime {
namespace {

template <class Object, class Interface>
IUnknown* Create() {
  return static_cast<Interface*>(new Object);
}

template <class Object, class Interface>
com::ClassInfo Class(const CLSID& id, const wchar_t* name, const wchar_t* description) {
  return {id, name, description, Create<Object, Interface>, Object::Offers};
}

const com::ClassInfo kClasses[] = {
    Class<TextService, ITextService>(__uuidof(::TextService), L"KorvelRuntime.TextService",
                                     L"Korvel Runtime language texts"),
    Class<FontService, IFontService>(__uuidof(::FontService), L"KorvelRuntime.FontService",
                                     L"Korvel Runtime font classes"),
    Class<RuntimeSettings, IRuntimeSettings>(
        __uuidof(::RuntimeSettings), L"KorvelRuntime.RuntimeSettings", L"Korvel Runtime settings"),
    Class<PanelSettings, IPanelSettings>(__uuidof(::PanelSettings), L"KorvelRuntime.PanelSettings",
                                         L"Korvel Runtime panel settings"),
    Class<UserSession, IUserSession>(__uuidof(::UserSession), L"KorvelRuntime.UserSession",
                                     L"Korvel Runtime log-on"),
    Class<UserAdministration, IUserAdministration>(__uuidof(::UserAdministration),
                                                   L"KorvelRuntime.UserAdministration",
                                                   L"Korvel Runtime users"),
    Class<UserClassAdministration, IUserClassAdministration>(
        __uuidof(::UserClassAdministration), L"KorvelRuntime.UserClassAdministration",
        L"Korvel Runtime user classes"),
};
const com::Component kComponent{kClasses, LIBID_KorvelRuntime};

const struct TextsOfSessions {
  TextsOfSessions() { TellSessionsBy(&ProcessLanguages); }
} texts_of_sessions;

}  // namespace
}  // namespace krx::runtime

STDAPI DllGetClassObject(REFCLSID id, REFIID iid, void** object) {
  return krx::com::GetClassObject(krx::runtime::kComponent, id, iid, object);
}

STDAPI DllCanUnloadNow() {
  return krx::com::CanUnloadNow();
}

STDAPI DllRegisterServer() {
  return krx::com::Register(krx::runtime::kComponent);
}

STDAPI DllUnregisterServer() {
  return krx::com::Unregister(krx::runtime::kComponent);
}
