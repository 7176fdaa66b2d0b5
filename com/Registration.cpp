#include "com/Registration.h"

#include <ole2.h>

#include <exception>

#include "com/Errors.h"
#include "com/Module.h"
#include "com/RegistryKey.h"
#include "com/Text.h"
#include "com/TypeLibrary.h"

// Missing from some editions of the platform's headers.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* help);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale,
                                                   SYSKIND system);

namespace krx::com {

namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes\\";
constexpr WORD kMajor = KRX_VERSION_MAJOR;
constexpr WORD kMinor = KRX_VERSION_MINOR;
#ifdef _WIN64
constexpr SYSKIND kSystem = SYS_WIN64;
#else
constexpr SYSKIND kSystem = SYS_WIN32;
#endif

std::wstring ClassPath(const ClassInfo& info) {
  return kClasses + (L"CLSID\\" + ToWide(info.Id));
}

std::wstring VersionedProgId(const ClassInfo& info) {
  return info.ProgId + (L"." + std::to_wstring(kMajor));
}

void SetDefault(HKEY parent, const std::wstring& path, const std::wstring& value) {
  RegistryKey(parent, path).Set(L"", value);
}

void RegisterProgIds(HKEY root, const ClassInfo& info) {
  for (const std::wstring& prog_id : {std::wstring(info.ProgId), VersionedProgId(info)}) {
    const RegistryKey key(root, kClasses + prog_id);
    key.Set(L"", info.Description);
    SetDefault(key.Get(), L"CLSID", ToWide(info.Id));
  }
  SetDefault(root, kClasses + std::wstring(info.ProgId) + L"\\CurVer", VersionedProgId(info));
}

void RegisterClass(HKEY root, const ClassInfo& info, const GUID& library) {
  const RegistryKey key(root, ClassPath(info));
  key.Set(L"", info.Description);
  const RegistryKey server(key.Get(), L"InprocServer32");
  server.Set(L"", ModulePath());
  server.Set(L"ThreadingModel", L"Apartment");
  SetDefault(key.Get(), L"ProgID", VersionedProgId(info));
  SetDefault(key.Get(), L"VersionIndependentProgID", info.ProgId);
  SetDefault(key.Get(), L"TypeLib", ToWide(library));
  SetDefault(key.Get(), L"Version", std::to_wstring(kMajor) + L"." + std::to_wstring(kMinor));
  const RegistryKey programmable(key.Get(), L"Programmable");
  RegisterProgIds(root, info);
}

void DeleteClasses(HKEY root, const Component& component) {
  for (const ClassInfo& info : component.Classes) {
    DeleteKey(root, ClassPath(info));
    DeleteKey(root, kClasses + std::wstring(info.ProgId));
    DeleteKey(root, kClasses + VersionedProgId(info));
  }
}

using RegisterLibrary = HRESULT(WINAPI*)(ITypeLib*, OLECHAR*, OLECHAR*);
using UnregisterLibrary = HRESULT(WINAPI*)(REFGUID, WORD, WORD, LCID, SYSKIND);

// The registry of the machine or that of the user.
struct Scope {
  HKEY Root;
  RegisterLibrary Enter;
  UnregisterLibrary Remove;
};

Scope MachineScope(const RegistryRoots& roots) {
  return {roots.Machine, &RegisterTypeLib, &UnRegisterTypeLib};
}
Scope UserScope(const RegistryRoots& roots) {
  return {roots.User, &RegisterTypeLibForUser, &UnRegisterTypeLibForUser};
}

void RemoveFrom(const Scope& scope, const Component& component) {
  DeleteClasses(scope.Root, component);
  const HRESULT removed =
      scope.Remove(component.TypeLibrary, kMajor, kMinor, LOCALE_NEUTRAL, kSystem);
  // What the platforms answer for a type library that is not registered.
  for (const HRESULT absent : {TYPE_E_REGISTRYACCESS, TYPE_E_LIBNOTREGISTERED, E_INVALIDARG}) {
    if (removed == absent) return;
  }
  Check(removed);
}

// Classes first: they need the same rights as the type library, and are refused before anything
// has been written.
void EnterInto(const Scope& scope, const Component& component) {
  try {
    for (const ClassInfo& info : component.Classes) {
      RegisterClass(scope.Root, info, component.TypeLibrary);
    }
    std::wstring path = ModulePath();
    Check(scope.Enter(LoadModuleTypeLibrary().Get(), path.data(), nullptr));
  } catch (...) {
    const std::exception_ptr cause = std::current_exception();
    try {
      RemoveFrom(scope, component);
    } catch (const Error&) {
      // The cause tells more than the failure to clean up, which most often is the same refusal.
    }
    std::rethrow_exception(cause);
  }
}

bool IsRefusal(const Error& error) {
  const auto status = static_cast<HRESULT>(error.Status());
  return status == E_ACCESSDENIED || status == TYPE_E_REGISTRYACCESS;
}

}  // namespace

HRESULT Register(const Component& component, const RegistryRoots& roots) {
  return Guard(IID_IUnknown, [&] {
    try {
      EnterInto(MachineScope(roots), component);
    } catch (const Error& error) {
      if (!IsRefusal(error)) throw;
      EnterInto(UserScope(roots), component);
    }
    return S_OK;
  });
}

HRESULT Unregister(const Component& component, const RegistryRoots& roots) {
  return Guard(IID_IUnknown, [&] {
    // The user's part goes even when the machine's may not be touched.
    std::exception_ptr refused;
    for (const Scope& scope : {MachineScope(roots), UserScope(roots)}) {
      try {
        RemoveFrom(scope, component);
      } catch (const Error&) {
        refused = std::current_exception();
      }
    }
    if (refused) std::rethrow_exception(refused);
    return S_OK;
  });
}

}  // namespace krx::com
