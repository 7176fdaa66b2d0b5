#include <gtest/gtest.h>

#include "ModuleCopy.h"
#include "support/LoadCycles.h"

namespace krx::runtime {
namespace {

using com::ComPtr;

template <class Function>
Function Entry(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

// Creates an object and lets a call of it fail, which throws and catches inside the component.
void Use(HMODULE module) {
  ComPtr<IClassFactory> factory;
  ComPtr<ITextService> texts;
  ASSERT_EQ(S_OK, Entry<LPFNGETCLASSOBJECT>(module, "DllGetClassObject")(
                      __uuidof(::TextService), IID_IClassFactory, factory.PutVoid()));
  ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, __uuidof(ITextService), texts.PutVoid()));
  EXPECT_EQ(u"", GetText(*texts, u"", -105));
  EXPECT_THROW(ResolveText(*texts, u"no reference"), Error);
}

TEST(ModuleLifetimeTest, LoadedAndUnloadedModulesLeaveNothing) {
  ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  EXPECT_TRUE(tests::LeavesNothing(tests::LoadCycles(), [] {
    const HMODULE module = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(nullptr, module) << GetLastError();
    Use(module);
    EXPECT_EQ(S_OK, Entry<LPFNCANUNLOADNOW>(module, "DllCanUnloadNow")());
    EXPECT_TRUE(FreeLibrary(module));
  }));
  EXPECT_EQ(nullptr, GetModuleHandleW(L"KorvelRuntime.dll"));
  CoUninitialize();
}

}  // namespace
}  // namespace krx::runtime
