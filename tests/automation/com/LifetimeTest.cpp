#include <thread>

#include "ComponentTest.h"
#include "HeapCount.h"
#include "MockApplication.h"

namespace krx::tests {
namespace {

using LifetimeTest = ComponentTest;

TEST_F(LifetimeTest, AnObjectKeepsTheModule) {
  EXPECT_EQ(Module.CanUnload(), S_OK);
  const auto dialog = Module.Create();
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
}

TEST_F(LifetimeTest, TheFirstObjectKeepsTheModuleFromWithinTheSettings) {
  Module.Create().Reset();
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  Module.Create().Reset();
  EXPECT_EQ(Module.CanUnload(), S_OK) << "the second one takes the first along";
}

TEST_F(LifetimeTest, LeavingComOnceOfTwiceKeepsTheSettings) {
  Module.Create().Reset();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  CoUninitialize();
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  LeaveCom();
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

TEST_F(LifetimeTest, AnObjectThatOutlivesComDoesNoHarm) {
  auto dialog = Module.Create();
  LeaveCom();
  EXPECT_EQ(FontClassButton(*dialog), u"");
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  dialog.Reset();
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

TEST_F(LifetimeTest, AThreadThatEndsWithoutLeavingComKeepsNothing) {
  const auto application = NamedApplication();
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    IDispatch* reference = application.Get();
    EXPECT_EQ(Module.Create()->SetHostApp(&reference), S_OK);
  }).join();
  EXPECT_EQ(Module.CanUnload(), S_OK);
  EXPECT_EQ(application->References(), 2u) << "no call may reach an object of a dead apartment";
}

TEST(ModuleLifetimeTest, AThousandLoadedAndUnloadedModulesLeaveNothing) {
  const auto cycle = [] {
    const LoadedComponent module;
    {
      const Sta sta;
      const auto dialog = module.Create();
      EXPECT_EQ(CallByName(*dialog, L"FontClassText", DISPATCH_PROPERTYGET).Status, S_OK);
    }
    EXPECT_EQ(module.CanUnload(), S_OK);
  };
  for (int i = 0; i < 50; ++i)
    cycle();
  const HeapCount before = CountHeaps();
  for (int i = 0; i < 1000; ++i)
    cycle();
  const HeapCount after = CountHeaps();
  EXPECT_EQ(GetModuleHandleW(L"KRXDialogs.dll"), nullptr);
  EXPECT_EQ(after.Blocks, before.Blocks);
  EXPECT_EQ(after.Bytes, before.Bytes);
}

}  // namespace
}  // namespace krx::tests
