#pragma once

#include <windows.h>

#include "com/Component.h"

namespace krx::com {

// Where classes are registered, for the machine and for the user alone. A test hands in its own
// keys, or null for a place that refuses every write.
struct RegistryRoots {
  HKEY Machine = HKEY_LOCAL_MACHINE;
  HKEY User = HKEY_CURRENT_USER;
};

// Body of DllRegisterServer: enters classes, program identifiers and the type library for the whole
// machine or, without the right to do so, for the user alone. A registration that fails half-way
// leaves nothing behind.
HRESULT Register(const Component& component, const RegistryRoots& roots = {});

// Body of DllUnregisterServer: removes every key that Register writes, for the machine and the
// user. Nothing registered is a success.
HRESULT Unregister(const Component& component, const RegistryRoots& roots = {});

}  // namespace krx::com
