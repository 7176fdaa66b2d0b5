// The manifests tell all that a registration would: every class, name and interface of the type
// libraries. The files are those of this build, or of an unpacked archive.

#include <gtest/gtest.h>
#include <ole2.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "com/ComPtr.h"
#include "com/Errors.h"
#include "com/Text.h"
#include "driver/Window.h"
#include "manifest/Components.h"

namespace krx::drive {
namespace {

using com::Check;
using com::ComPtr;

constexpr CLSID kSystemsProxy{0x00020424, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// While it lives, the thread has the manifest of a component. That of a program would lead some
// platforms to what lies beside the running one.
class Manifest {
 public:
  explicit Manifest(const std::wstring& component) {
    const bool runtime = component == L"KorvelRuntime";
    const std::wstring name = runtime ? L"Korvel.Runtime" : L"Korvel." + component;
    const std::wstring file = (Components() / name).wstring() + L".manifest";
    ACTCTXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.lpSource = file.c_str();
    context_ = CreateActCtxW(&wanted);
    if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_))
      throw std::runtime_error("error " + std::to_string(GetLastError()) + " of the manifest");
  }
  ~Manifest() {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
  }
  Manifest(const Manifest&) = delete;
  Manifest& operator=(const Manifest&) = delete;

 private:
  HANDLE context_ = INVALID_HANDLE_VALUE;
  ULONG_PTR cookie_ = 0;
};

struct Described {
  GUID Id;
  TYPEKIND Kind;
  std::wstring Name;
};

class ManifestTest : public testing::TestWithParam<const wchar_t*> {
 protected:
  void SetUp() override { Check(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)); }
  void TearDown() override {
    ForgetTypeLibraries();
    CoUninitialize();
  }

  static ComPtr<ITypeLib> Library() { return TypeLibraryOf(GetParam()); }
  // What the type library describes of this kind.
  static std::vector<Described> Of(TYPEKIND kind);
};

std::vector<Described> ManifestTest::Of(TYPEKIND kind) {
  const ComPtr<ITypeLib> library = Library();
  std::vector<Described> all;
  for (UINT i = 0; i < library->GetTypeInfoCount(); ++i) {
    ComPtr<ITypeInfo> type;
    Check(library->GetTypeInfo(i, type.Put()));
    TYPEATTR* attributes = nullptr;
    Check(type->GetTypeAttr(&attributes));
    const Described found{attributes->guid, attributes->typekind, {}};
    type->ReleaseTypeAttr(attributes);
    com::Bstr name;
    Check(type->GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr));
    if (found.Kind == kind) all.push_back({found.Id, kind, com::ToWide(name.Text())});
  }
  return all;
}

HRESULT Create(const CLSID& id) {
  ComPtr<IUnknown> object;
  return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.PutVoid());
}

// Name of the interface that scripts call, as an object of the class tells it.
std::wstring DefaultInterface(const CLSID& id) {
  ComPtr<IDispatch> object;
  Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid()));
  ComPtr<ITypeInfo> type;
  Check(object->GetTypeInfo(0, LOCALE_NEUTRAL, type.Put()));
  com::Bstr name;
  Check(type->GetDocumentation(MEMBERID_NIL, name.Put(), nullptr, nullptr, nullptr));
  return com::ToWide(name.Text());
}

TEST_P(ManifestTest, EveryClassIsCreatedAndNoneWithoutTheManifest) {
  const auto classes = Of(TKIND_COCLASS);
  ASSERT_FALSE(classes.empty());
  for (const Described& one : classes) {
    SCOPED_TRACE(one.Name);
    EXPECT_EQ(Create(one.Id), REGDB_E_CLASSNOTREG);
    const Manifest manifest(GetParam());
    EXPECT_EQ(Create(one.Id), S_OK);
  }
}

// The identifier that a name of a manifest stands for may be one of the platform's own making.
TEST_P(ManifestTest, EveryClassIsCreatedByItsTwoNames) {
  const Manifest manifest(GetParam());
  const std::wstring version = L"." + std::to_wstring(AttributesOf(*Library()).wMajorVerNum);
  for (const Described& one : Of(TKIND_COCLASS)) {
    const std::wstring name = std::wstring(GetParam()) + L"." + one.Name;
    for (const std::wstring& either : {name, name + version}) {
      CLSID found{};
      EXPECT_EQ(CLSIDFromProgID(either.c_str(), &found), S_OK) << one.Name;
      EXPECT_EQ(DefaultInterface(found), L"I" + one.Name);
    }
  }
}

TEST_P(ManifestTest, TheTypeLibraryIsFoundInItsVersion) {
  const TLIBATTR attributes = AttributesOf(*Library());
  const auto load = [&attributes](ComPtr<ITypeLib>& library) {
    return LoadRegTypeLib(attributes.guid, attributes.wMajorVerNum, attributes.wMinorVerNum,
                          LOCALE_NEUTRAL, library.Put());
  };
  ComPtr<ITypeLib> library;
  EXPECT_EQ(load(library), TYPE_E_LIBNOTREGISTERED);
  const Manifest manifest(GetParam());
  EXPECT_EQ(load(library), S_OK);
}

// Interfaces are told by their dispatch halves, which have the same identifiers.
TEST_P(ManifestTest, EveryInterfaceCrossesApartmentsByTheSystemsProxy) {
  const auto interfaces = Of(TKIND_DISPATCH);
  ASSERT_FALSE(interfaces.empty());
  const Manifest manifest(GetParam());
  for (const Described& one : interfaces) {
    CLSID proxy{};
    EXPECT_EQ(CoGetPSClsid(one.Id, &proxy), S_OK) << one.Name;
    EXPECT_TRUE(proxy == kSystemsProxy) << one.Name;
  }
}

INSTANTIATE_TEST_SUITE_P(Manifest, ManifestTest, testing::ValuesIn(kComponents),
                         [](const auto& test) { return Narrow(test.param); });

}  // namespace
}  // namespace krx::drive
