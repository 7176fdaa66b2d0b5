// The module goes when a session that it has accompanied is over.

#include <gtest/gtest.h>

#include "ModuleCopy.h"
#include "PlantFolder.h"
#include "driver/Wait.h"
#include "host/UserManager.h"
#include "support/LoadCycles.h"

namespace krx::runtime {
namespace {

constexpr int kCycles = 130;  // each makes a window and a thread, and stores a log-on

class SessionLifetimeTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", plant.Folder.c_str());
  }
  void TearDown() override {
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", nullptr);
    CoUninitialize();
  }

  template <class Function>
  static Function Entry(HMODULE module, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  }
  static bool Comes(bool (*condition)()) { return drive::Within(drive::kPatience, condition); }

  // Logs on, sees the notice and logs off.
  static void Use(HMODULE module) {
    com::ComPtr<IClassFactory> factory;
    com::ComPtr<IUserSession> session;
    ASSERT_EQ(S_OK, Entry<LPFNGETCLASSOBJECT>(module, "DllGetClassObject")(
                        __uuidof(::UserSession), IID_IClassFactory, factory.PutVoid()));
    ASSERT_EQ(S_OK, factory->CreateInstance(nullptr, __uuidof(IUserSession), session.PutVoid()));
    LONG result = -1;
    const com::Bstr name(u"boss");
    const com::Bstr password(test::PlantFolder::kBoss);
    ASSERT_EQ(S_OK, session->LogOnUser(name.Get(), password.Get(), &result));
    ASSERT_EQ(host::LogOnSucceeded, result);
    EXPECT_TRUE(Comes([] { return FindWindowW(L"KorvelNotice", nullptr) != nullptr; }));
    EXPECT_EQ(S_FALSE, Entry<LPFNCANUNLOADNOW>(module, "DllCanUnloadNow")());
    ASSERT_EQ(S_OK, session->LogOffUser(&result));
  }

  const test::PlantFolder plant{"accompanied",
                                "log-off-after-idle-minutes = 60\nlast-log-on-notice = on\n"};
};

TEST_F(SessionLifetimeTest, AnAccompaniedSessionLeavesNothingWhenItIsOver) {
  EXPECT_TRUE(tests::LeavesNothing(kCycles, [] {
    const HMODULE module = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(nullptr, module) << GetLastError();
    Use(module);
    EXPECT_EQ(S_OK, Entry<LPFNCANUNLOADNOW>(module, "DllCanUnloadNow")());
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(Comes([] { return GetModuleHandleW(L"KorvelRuntime.dll") == nullptr; }));
  }));
}

}  // namespace
}  // namespace krx::runtime
