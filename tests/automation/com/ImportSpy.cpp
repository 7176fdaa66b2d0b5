#include "ImportSpy.h"

#include <gtest/gtest.h>
#include <ole2.h>

#include <atomic>

#include "platform/Imports.h"

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

}  // namespace

ImportSpy::ImportSpy(const wchar_t* module) : module_(module) {
  Reset();
  for (const Place& place : kPlaces)
    test::RedirectImport(GetModuleHandleW(module_), place.Name, place.Counting);
}

ImportSpy::~ImportSpy() {
  for (const Place& place : kPlaces)
    test::RedirectImport(GetModuleHandleW(module_), place.Name, place.Original);
}

long ImportSpy::Calls() {
  return calls;
}

void ImportSpy::Reset() {
  calls = 0;
}

}  // namespace krx::tests
