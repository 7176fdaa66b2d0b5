#pragma once

#include <ole2.h>

#include <span>

#include "base/String.h"

namespace krx::com {

// One creatable class of a component.
struct ClassInfo {
  const CLSID& Id;
  const wchar_t* ProgId;       // version-independent; the current version is ProgId.1
  const wchar_t* Description;  // shown by tools that list classes
  // A new object with one reference for the caller; failures are raised.
  IUnknown* (*Create)();
  // Whether such an object has an interface.
  bool (*Offers)(REFIID iid) = nullptr;
};

// What a component offers: its classes and the type library that describes them.
struct Component {
  std::span<const ClassInfo> Classes;
  const GUID& TypeLibrary;
};

// Body of DllGetClassObject: CLASS_E_CLASSNOTAVAILABLE for a class that is not in the table.
HRESULT GetClassObject(const Component& component, REFCLSID id, REFIID iid, void** object);

// Body of DllCanUnloadNow: S_OK as soon as nothing of the component is in use.
HRESULT CanUnloadNow();

}  // namespace krx::com
