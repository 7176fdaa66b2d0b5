#include <memory>
#include <thread>

#include "ComponentTest.h"
#include "FakeRuntime.h"
#include "ImportSpy.h"
#include "MockApplication.h"
#include "support/LoadCycles.h"

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

// The thread ends under the loader's lock. Its fonts, its windows and its place in COM wait for a
// moment in which they can be let go without harm.
TEST_F(LifetimeTest, AThreadThatEndsWithoutLeavingComCallsNothingFromTheLoader) {
  ImportSpy imports(L"KRXDialogs.dll");
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      const FakeRuntime runtime{[](const char*) { return S_OK; }};
      const auto dialog = Module.Create();
      const com::Bstr text(u"text");
      const LateResult answer =
          CallByName(*dialog, L"KRMsgBoxEx", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                     {Text(text.Get()), Int(0), Text(text.Get()), Missing(), Missing(), Missing(),
                      Missing(), Missing(), Int(1)});
      EXPECT_EQ(answer.Status, S_OK);
    }
    EXPECT_GT(imports.Calls(), 0) << "the box was shown";
    imports.Reset();
  }).join();
  EXPECT_EQ(imports.Calls(), 0);
  EXPECT_EQ(Module.CanUnload(), S_OK);
  EXPECT_GT(imports.Calls(), 0) << "the fonts are given back now";
}

// Creates an object and lets a call of it fail, which throws and catches inside the component.
void Use(const LoadedComponent& module) {
  const Sta sta;
  const FakeRuntime runtime{[](const char*) { return S_OK; }};
  const auto dialog = module.Create();
  const com::Bstr text(u"text");
  EXPECT_EQ(CallByName(*dialog, L"KRMsgBox", DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                       {Text(text.Get()), Int(kFailingStyle)})
                .Status,
            DISP_E_EXCEPTION);
}

// The platform's controls stay loaded meanwhile: a newer Wine loses 1.5 MB each time that they are
// loaded and unloaded, and an x86 process has no room for hundreds of times.
class ModuleLifetimeTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    const LoadedComponent module;
    EXPECT_TRUE(GetModuleHandleExW(0, L"comctl32.dll", &controls_));
  }
  static void TearDownTestSuite() { FreeLibrary(controls_); }

 private:
  static inline HMODULE controls_ = nullptr;
};

TEST_F(ModuleLifetimeTest, LoadedAndUnloadedModulesLeaveNothing) {
  EXPECT_TRUE(LeavesNothing(LoadCycles(), [] {
    const LoadedComponent module;
    Use(module);
    EXPECT_EQ(module.CanUnload(), S_OK);
  }));
  EXPECT_EQ(GetModuleHandleW(L"KRXDialogs.dll"), nullptr);
}

TEST_F(ModuleLifetimeTest, AThreadThatGoesOnAfterTheModuleKeepsNothingOfIt) {
  EXPECT_TRUE(LeavesNothing(LoadCycles(), [] {
    auto module = std::make_unique<LoadedComponent>();
    Use(*module);
    std::thread([&] { module.reset(); }).join();
    EXPECT_EQ(GetModuleHandleW(L"KRXDialogs.dll"), nullptr);
  }));
}

TEST_F(ModuleLifetimeTest, ThreadsThatEndBeforeTheModuleLeaveNothing) {
  const LoadedComponent module;
  EXPECT_TRUE(LeavesNothing(LoadCycles(), [&] { std::thread([&] { Use(module); }).join(); }));
}

}  // namespace
}  // namespace krx::tests
