#pragma once

#include <oaidl.h>

#include <filesystem>

#include "com/ComPtr.h"

namespace krx::drive {

inline constexpr const wchar_t* kComponents[] = {L"KRXDialogs", L"KorvelRuntime"};

// Where the components lie that a test takes with their manifests: beside the tests, or in the
// folder that the environment names, such as an unpacked archive.
std::filesystem::path Components();

// The type library that a component carries.
com::ComPtr<ITypeLib> TypeLibraryOf(const wchar_t* component);
TLIBATTR AttributesOf(ITypeLib& library);

// Whether the machine or the user has this type library in the registry.
bool IsRegistered(const TLIBATTR& library);

// Wine registers a type library that it has found by a manifest, as a call from another apartment
// makes it; a test that did so takes that back.
void ForgetTypeLibraries();

}  // namespace krx::drive
