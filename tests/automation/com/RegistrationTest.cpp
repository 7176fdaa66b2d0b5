#include "com/Registration.h"

#include "ComponentTest.h"

namespace krx::tests {
namespace {

// Classes of the test's own: nothing that is registered on the machine is touched.
const CLSID kClass = {0x6B1C0A52, 0x3D1E, 0x4C57, {0x9B, 0x7E, 0x5A, 0x0E, 0x2F, 0x3C, 0x3F, 0x01}};
const GUID kLibrary = {
    0x6B1C0A52, 0x3D1E, 0x4C57, {0x9B, 0x7E, 0x5A, 0x0E, 0x2F, 0x3C, 0x30, 0x01}};
const com::ClassInfo kSampleClasses[] = {{kClass, L"KRXTests.Sample", L"Sample class", nullptr}};
const com::Component kComponent{kSampleClasses, kLibrary};

std::wstring Value(HKEY root, const std::wstring& path, const wchar_t* name = L"") {
  wchar_t text[512] = {};
  DWORD size = sizeof(text);
  const LSTATUS status =
      RegGetValueW(root, path.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? text : L"<none>";
}

bool Exists(HKEY root, const std::wstring& path) {
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
  RegCloseKey(key);
  return true;
}

// Empty keys of the test's own in the place of the machine's and the user's.
class RegistrationTest : public ::testing::Test {
 protected:
  RegistrationTest() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kFolder);
    Machine = Open(L"\\Machine");
    User = Open(L"\\User");
  }
  ~RegistrationTest() override {
    RegCloseKey(Machine);
    RegCloseKey(User);
    RegDeleteTreeW(HKEY_CURRENT_USER, kFolder);
  }

  static HKEY Open(const std::wstring& name) {
    HKEY key = nullptr;
    const std::wstring path = kFolder + name;
    EXPECT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    return key;
  }
  static bool IsEmpty(HKEY root) {
    return !Exists(root, kClassPath) && !Exists(root, kProgId) && !Exists(root, kProgId1);
  }
  static bool TypeLibraryRegistered() {
    return Exists(HKEY_CLASSES_ROOT, L"TypeLib\\" + com::ToWide(kLibrary));
  }
  static void ExpectAllKeys(HKEY root) {
    EXPECT_EQ(Value(root, kClassPath), L"Sample class");
    EXPECT_EQ(Value(root, kClassPath + L"\\InprocServer32"), OwnPath());
    EXPECT_EQ(Value(root, kClassPath + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
    EXPECT_EQ(Value(root, kClassPath + L"\\ProgID"), L"KRXTests.Sample.1");
    EXPECT_EQ(Value(root, kClassPath + L"\\VersionIndependentProgID"), L"KRXTests.Sample");
    EXPECT_EQ(Value(root, kClassPath + L"\\TypeLib"), com::ToWide(kLibrary));
    EXPECT_EQ(Value(root, kClassPath + L"\\Version"), L"1.0");
    EXPECT_TRUE(Exists(root, kClassPath + L"\\Programmable"));
    EXPECT_EQ(Value(root, kProgId), L"Sample class");
    EXPECT_EQ(Value(root, kProgId + L"\\CLSID"), com::ToWide(kClass));
    EXPECT_EQ(Value(root, kProgId + L"\\CurVer"), L"KRXTests.Sample.1");
    EXPECT_EQ(Value(root, kProgId1 + L"\\CLSID"), com::ToWide(kClass));
    EXPECT_TRUE(TypeLibraryRegistered());
  }
  static std::wstring OwnPath() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
  }

  static constexpr wchar_t kFolder[] = L"Software\\KRXTests";
  static inline const std::wstring kClassPath = L"Software\\Classes\\CLSID\\" + com::ToWide(kClass);
  static inline const std::wstring kProgId = L"Software\\Classes\\KRXTests.Sample";
  static inline const std::wstring kProgId1 = L"Software\\Classes\\KRXTests.Sample.1";

  HKEY Machine = nullptr;
  HKEY User = nullptr;
};

TEST_F(RegistrationTest, WithRightsItIsMachineWide) {
  const com::RegistryRoots roots{Machine, User};
  ASSERT_EQ(com::Register(kComponent, roots), S_OK);
  ExpectAllKeys(Machine);
  EXPECT_TRUE(IsEmpty(User));
  EXPECT_EQ(com::Unregister(kComponent, roots), S_OK);
  EXPECT_TRUE(IsEmpty(Machine));
  EXPECT_FALSE(TypeLibraryRegistered());
}

// The platform under the tests lets everybody write everywhere, so the refusal is a null root.
TEST_F(RegistrationTest, WithoutRightsItIsForTheUserAlone) {
  ASSERT_EQ(com::Register(kComponent, {nullptr, User}), S_OK);
  ExpectAllKeys(User);
  EXPECT_EQ(com::Unregister(kComponent, {nullptr, User}), S_OK);
  EXPECT_TRUE(IsEmpty(User));
  EXPECT_FALSE(TypeLibraryRegistered());
}

TEST_F(RegistrationTest, WithoutAnyRightsItFailsAndSaysSo) {
  EXPECT_EQ(com::Register(kComponent, {nullptr, nullptr}), E_ACCESSDENIED);
  EXPECT_FALSE(TypeLibraryRegistered());
}

TEST_F(RegistrationTest, BothMayBeRepeated) {
  const com::RegistryRoots roots{Machine, User};
  EXPECT_EQ(com::Unregister(kComponent, roots), S_OK);
  EXPECT_EQ(com::Register(kComponent, roots), S_OK);
  EXPECT_EQ(com::Register(kComponent, roots), S_OK);
  ExpectAllKeys(Machine);
  EXPECT_EQ(com::Unregister(kComponent, roots), S_OK);
  EXPECT_EQ(com::Unregister(kComponent, roots), S_OK);
}

TEST_F(RegistrationTest, OneThatFailsHalfWayLeavesNothing) {
  // No key name may be longer than 255 characters: the class is written, its name refused.
  const std::wstring endless(300, L'x');
  const com::ClassInfo classes[] = {{kClass, endless.c_str(), L"Sample class", nullptr}};
  EXPECT_TRUE(FAILED(com::Register({classes, kLibrary}, {Machine, User})));
  EXPECT_TRUE(IsEmpty(Machine));
  EXPECT_TRUE(IsEmpty(User));
  EXPECT_FALSE(TypeLibraryRegistered());
}

TEST_F(RegistrationTest, TheComponentIsCreatedByItsNameWhenRegistered) {
  const Sta sta;
  const LoadedComponent module;
  ASSERT_EQ(module.Register(), S_OK);
  {
    CLSID id{};
    ASSERT_EQ(CLSIDFromProgID(L"KRXDialogs.KRXDialog", &id), S_OK);
    com::ComPtr<IKRXDialog> dialog;
    EXPECT_EQ(
        CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IKRXDialog), dialog.PutVoid()),
        S_OK);
    ASSERT_TRUE(dialog);
    EXPECT_EQ(FontClassButton(*dialog), u"KRDialogsButton");
  }
  EXPECT_EQ(module.Unregister(), S_OK);
  CLSID id{};
  EXPECT_TRUE(FAILED(CLSIDFromProgID(L"KRXDialogs.KRXDialog", &id)));
  EXPECT_FALSE(TypeLibraryRegistered());
}

}  // namespace
}  // namespace krx::tests
