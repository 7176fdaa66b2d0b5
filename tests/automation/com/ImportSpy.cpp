#include "ImportSpy.h"

#include <gtest/gtest.h>
#include <ole2.h>

#include <atomic>
#include <cstring>

namespace krx::tests {

namespace {

std::atomic<long> calls{0};

struct Place {
  const char* Name;
  void* Original;
  void* Counting;
};

// Counts calls of a function and makes them; the number tells functions of one signature apart.
template <int Number, class Result, class... Arguments>
struct Counted {
  static inline Result(WINAPI* original)(Arguments...) = nullptr;
  static Result WINAPI Call(Arguments... arguments) {
    ++calls;
    return original(arguments...);
  }
};

template <int Number, class Result, class... Arguments>
Place PlaceOf(const char* name, Result(WINAPI* original)(Arguments...)) {
  using Calls = Counted<Number, Result, Arguments...>;
  Calls::original = original;
  return {name, reinterpret_cast<void*>(original), reinterpret_cast<void*>(&Calls::Call)};
}

const Place kPlaces[] = {
    PlaceOf<0>("CoRevokeInitializeSpy", &CoRevokeInitializeSpy),
    PlaceOf<1>("CoCreateInstance", &CoCreateInstance),
    PlaceOf<2>("DeleteObject", &DeleteObject),
    PlaceOf<3>("DeleteDC", &DeleteDC),
    PlaceOf<4>("DestroyWindow", &DestroyWindow),
};

// Puts another address in the place of an import of this name.
void Redirect(BYTE* module, const char* name, void* target) {
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
  const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(module + dos.e_lfanew);
  const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* library =
      reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module + directory.VirtualAddress);
  for (; library->Name; ++library) {
    auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(module + library->OriginalFirstThunk);
    auto* place = reinterpret_cast<IMAGE_THUNK_DATA*>(module + library->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* import =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(module + names->u1.AddressOfData);
      if (std::strcmp(import->Name, name) != 0) continue;
      DWORD before = 0;
      VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
      place->u1.Function = reinterpret_cast<ULONG_PTR>(target);
      VirtualProtect(place, sizeof *place, before, &before);
    }
  }
}

BYTE* Module(const wchar_t* name) {
  return reinterpret_cast<BYTE*>(GetModuleHandleW(name));
}

}  // namespace

ImportSpy::ImportSpy(const wchar_t* module) : module_(module) {
  Reset();
  for (const Place& place : kPlaces)
    Redirect(Module(module_), place.Name, place.Counting);
}

ImportSpy::~ImportSpy() {
  for (const Place& place : kPlaces)
    Redirect(Module(module_), place.Name, place.Original);
}

long ImportSpy::Calls() {
  return calls;
}

void ImportSpy::Reset() {
  calls = 0;
}

}  // namespace krx::tests
