// The component as the automation system sees it: entry points, classes, type library, version.
#include <gtest/gtest.h>

#include <vector>

#include "ModuleCopy.h"

namespace krx::runtime {
namespace {

using com::ComPtr;

const struct {
  const wchar_t* ProgId;
  const CLSID& Id;
} kClasses[] = {
    {L"KorvelRuntime.TextService", __uuidof(::TextService)},
    {L"KorvelRuntime.FontService", __uuidof(::FontService)},
    {L"KorvelRuntime.RuntimeSettings", __uuidof(::RuntimeSettings)},
    {L"KorvelRuntime.PanelSettings", __uuidof(::PanelSettings)},
};

class RegisteredComponent : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(S_OK, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
    module_ = LoadLibraryW(ComponentFile().c_str());
    ASSERT_NE(nullptr, module_);
    ASSERT_EQ(S_OK, Call("DllRegisterServer"));
  }
  // Other test programs and the scripts rely on the component: it stays registered.
  void TearDown() override {
    EXPECT_EQ(S_OK, Call("DllRegisterServer"));
    FreeLibrary(module_);
    CoUninitialize();
  }
  HRESULT Call(const char* entry_point) const {
    const auto address = reinterpret_cast<void*>(GetProcAddress(module_, entry_point));
    return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(address)();
  }

  HMODULE module_ = nullptr;
};

TEST_F(RegisteredComponent, CreatesEachClassByItsName) {
  for (const auto& [name, expected] : kClasses) {
    CLSID id{};
    ASSERT_EQ(S_OK, CLSIDFromProgID(name, &id));
    EXPECT_TRUE(id == expected);
    ComPtr<IDispatch> object;
    EXPECT_EQ(S_OK,
              CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid()));
    EXPECT_TRUE(object);
  }
}

TEST_F(RegisteredComponent, IsUnknownAfterItsRemoval) {
  ASSERT_EQ(S_OK, Call("DllUnregisterServer"));
  for (const auto& [name, expected] : kClasses) {
    CLSID id{};
    EXPECT_NE(S_OK, CLSIDFromProgID(name, &id));
    ComPtr<IDispatch> object;
    EXPECT_EQ(REGDB_E_CLASSNOTREG, CoCreateInstance(expected, nullptr, CLSCTX_INPROC_SERVER,
                                                    IID_IDispatch, object.PutVoid()));
  }
}

TEST(RuntimeComponent, OffersNoOtherClassAndIsUnloadedWhenNothingIsInUse) {
  const ModuleCopy module;
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(CLASS_E_CLASSNOTAVAILABLE,
            module.GetClassObject(__uuidof(ITextService), IID_IClassFactory, factory.PutVoid()));
  EXPECT_EQ(S_OK, module.Call("DllCanUnloadNow"));
  {
    const auto fonts = module.Fonts();
    EXPECT_EQ(S_FALSE, module.Call("DllCanUnloadNow"));
    ComPtr<IFontDisp> font;
    EXPECT_EQ(S_OK, fonts->GetFont(font.Put()));
  }
  EXPECT_EQ(S_OK, module.Call("DllCanUnloadNow"));
}

TEST(RuntimeComponent, CanBeLoadedAndUnloadedAgainAndAgain) {
  for (int i = 0; i < 20; ++i) {
    const ModuleCopy module;
    EXPECT_EQ(u"&\u00C4ndern", (SetLanguage(*module.Settings(), u"de"),
                                GetText(*module.Texts(), u"keyChangeUser", -103)));
    EXPECT_EQ(S_OK, module.Call("DllCanUnloadNow"));
  }
  EXPECT_EQ(nullptr, GetModuleHandleW(L"KorvelRuntime.dll"));
}

ComPtr<ITypeLib> Library() {
  ComPtr<ITypeLib> library;
  com::Check(LoadTypeLibEx(ComponentFile().c_str(), REGKIND_NONE, library.Put()));
  return library;
}

// Clients bind early, so an operation is what stands at its place behind the seven of IDispatch.
TEST(RuntimeTypeLibrary, KeepsTheOrderOfTheOperations) {
  const struct {
    const IID& Id;
    std::vector<std::wstring> Operations;
  } interfaces[] = {
      {__uuidof(ITextService), {L"GetText", L"ResolveText"}},
      {__uuidof(IFontService), {L"SelectFontClass", L"GetFont"}},
      {__uuidof(IRuntimeSettings), {L"Language", L"Language"}},
      {__uuidof(IPanelSettings),
       {L"Keyboard", L"Keyboard", L"Theme", L"Theme", L"ShowCountdown", L"ShowCountdown",
        L"FirstAnswerDelay", L"FirstAnswerDelay", L"LogOnNotice"}},
      {__uuidof(IUserSession), {L"LogOnUser", L"LogOffUser"}},
      {__uuidof(IUserAdministration),
       {L"ChangeUserPassword", L"CreateUser", L"RemoveUser", L"SetUserActive", L"GetUserClass",
        L"GetUserInfo", L"ModifyUser", L"Reserved1", L"Reserved2", L"GetUserNames",
        L"GetCurrentUser", L"GetAdministrationMode"}},
      {__uuidof(IUserClassAdministration),
       {L"Reserved1", L"Reserved2", L"Reserved3", L"GetUserClassInfo", L"Reserved4",
        L"GetUserClasses"}},
  };
  const auto library = Library();
  for (const auto& [id, operations] : interfaces) {
    ComPtr<ITypeInfo> dispatch, info;
    ASSERT_EQ(S_OK, library->GetTypeInfoOfGuid(id, dispatch.Put()));
    HREFTYPE reference = 0;
    ASSERT_EQ(S_OK, dispatch->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference));
    ASSERT_EQ(S_OK, dispatch->GetRefTypeInfo(reference, info.Put()));
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(S_OK, info->GetTypeAttr(&attributes));
    EXPECT_EQ(operations.size(), attributes->cFuncs);
    for (UINT i = 0; i < attributes->cFuncs; ++i) {
      FUNCDESC* function = nullptr;
      ASSERT_EQ(S_OK, info->GetFuncDesc(i, &function));
      com::Bstr name, help;
      EXPECT_EQ(S_OK,
                info->GetDocumentation(function->memid, name.Put(), help.Put(), nullptr, nullptr));
      EXPECT_EQ(operations[i], com::ToWide(name.Text()));
      EXPECT_NE(u"", help.Text()) << ToUtf8(name.Text());
      EXPECT_EQ(static_cast<int>((7 + i) * sizeof(void*)), function->oVft);
      info->ReleaseFuncDesc(function);
    }
    info->ReleaseTypeAttr(attributes);
  }
}

TEST(RuntimeVersion, StandsInTheFile) {
  const std::wstring file = ComponentFile();
  std::vector<char> block(GetFileVersionInfoSizeW(file.c_str(), nullptr));
  ASSERT_FALSE(block.empty());
  ASSERT_TRUE(GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
  void* value = nullptr;
  UINT length = 0;
  ASSERT_TRUE(
      VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\ProductVersion", &value, &length));
  EXPECT_STREQ(L"1.0.0", static_cast<const wchar_t*>(value));
}

}  // namespace
}  // namespace krx::runtime
