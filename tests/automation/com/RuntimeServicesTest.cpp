#include <cstring>

#include "ComponentTest.h"
#include "FakeRuntime.h"
#include "com/Errors.h"

namespace krx::tests {
namespace {

// Only the calls into the services matter.
HRESULT Open(IKRXDialog& dialog) {
  LONG result = 0;
  return dialog.KRMsgBox(com::Bstr(u"text").Get(), kFailingStyle, com::Bstr(u"title").Get(),
                         nullptr, 0, &result);
}

constexpr HRESULT kOwn = static_cast<HRESULT>(0x80045678);

using RuntimeServicesTest = ComponentTest;

TEST_F(RuntimeServicesTest, AClassThatIsNotRegisteredIsNamed) {
  HKEY registered = nullptr;
  const std::wstring path = L"CLSID\\" + com::ToWide(__uuidof(::FontService));
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &registered) == ERROR_SUCCESS) {
    RegCloseKey(registered);
    GTEST_SKIP() << "the runtime is registered on this machine";
  }
  EXPECT_EQ(Open(*Module.Create()), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(TakeError().Description, u"The runtime's class FontService is not registered");
}

TEST_F(RuntimeServicesTest, WorkingServicesAreNotTheReasonOfAFailure) {
  const FakeRuntime runtime([](const char*) { return S_OK; });
  EXPECT_EQ(Open(*Module.Create()), kTypeMismatch);
}

TEST_F(RuntimeServicesTest, AFailingServiceKeepsItsStatusAndGetsTheSystemsText) {
  for (const char* const failing : {"GetText", "SelectFontClass", "GetFont"}) {
    const FakeRuntime runtime([=](const char* operation) {
      SetErrorInfo(0, nullptr);
      return std::strcmp(operation, failing) == 0 ? kOwn : S_OK;
    });
    EXPECT_EQ(Open(*Module.Create()), kOwn) << failing;
    EXPECT_EQ(TakeError().Description, u"Error 0x80045678") << failing;
  }
}

TEST_F(RuntimeServicesTest, AFailingServiceKeepsItsOwnDescription) {
  const FakeRuntime runtime([](const char*) {
    return com::Guard(__uuidof(IFontService), []() -> HRESULT {
      throw Error(static_cast<std::uint32_t>(kOwn), u"Font database is offline", u"Plant");
    });
  });
  EXPECT_EQ(Open(*Module.Create()), kOwn);
  const ErrorTexts error = TakeError();
  EXPECT_EQ(error.Source, u"Plant");
  EXPECT_EQ(error.Description, u"Font database is offline");
}

TEST_F(RuntimeServicesTest, AMissingFontObjectIsError91) {
  const FakeRuntime runtime(
      [](const char* operation) { return std::strcmp(operation, "GetFont") ? S_OK : S_FALSE; });
  EXPECT_EQ(Open(*Module.Create()), kObjectNotSet);
}

}  // namespace
}  // namespace krx::tests
