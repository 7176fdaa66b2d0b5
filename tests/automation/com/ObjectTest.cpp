#include "ComponentTest.h"
#include "FakeRuntime.h"

namespace krx::tests {
namespace {

using ObjectTest = ComponentTest;

TEST_F(ObjectTest, EveryInterfaceLeadsToTheSameIdentity) {
  const auto dialog = Module.Create();
  const auto identity = dialog.As<IUnknown>();
  ASSERT_TRUE(identity);
  EXPECT_EQ(dialog.As<IDispatch>().As<IUnknown>().Get(), identity.Get());
  EXPECT_EQ(dialog.As<ISupportErrorInfo>().As<IUnknown>().Get(), identity.Get());
  EXPECT_EQ(dialog.As<ISupportErrorInfo>().As<IKRXDialog>().Get(), dialog.Get());
}

TEST_F(ObjectTest, AnUnknownInterfaceIsRefusedAndThePlaceEmptied) {
  const auto dialog = Module.Create();
  void* object = this;
  EXPECT_EQ(dialog->QueryInterface(IID_IPersist, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(dialog->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(ObjectTest, ReferencesAreCounted) {
  const auto dialog = Module.Create();
  EXPECT_EQ(dialog->AddRef(), 2u);
  EXPECT_EQ(dialog->Release(), 1u);
  {
    const auto other = dialog.As<IDispatch>();
    EXPECT_EQ(other->AddRef(), 3u);
    other->Release();
  }
  EXPECT_EQ(dialog->AddRef(), 2u);
  EXPECT_EQ(dialog->Release(), 1u);
}

TEST_F(ObjectTest, ItDescribesItsErrors) {
  const auto support = Module.Create().As<ISupportErrorInfo>();
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IKRXDialog)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IPersist), S_FALSE);
}

TEST_F(ObjectTest, NullPlacesForResultsAreRefused) {
  const auto dialog = Module.Create();
  const com::Bstr text(u"text");
  EXPECT_EQ(dialog->get_FontClassText(nullptr), E_POINTER);
  EXPECT_EQ(dialog->get_CaptionMinHeight(nullptr), E_POINTER);
  EXPECT_EQ(dialog->put_CaptionMinHeight(nullptr), E_POINTER);
  EXPECT_EQ(dialog->SetHostApp(nullptr), E_POINTER);
  EXPECT_EQ(dialog->KRMsgBox(text.Get(), 0, nullptr, nullptr, 0, nullptr), E_POINTER);
  EXPECT_TRUE(TakeError().Present);
}

TEST_F(ObjectTest, WithoutAPlaceForItsResultAUserDialogDoesNotBegin) {
  int called = 0;
  const FakeRuntime runtime([&](const char*) {
    ++called;
    return E_FAIL;
  });
  const auto dialog = Module.Create();
  EXPECT_EQ(dialog->KRUserLogOn(nullptr), E_POINTER);
  EXPECT_EQ(dialog->KRUserLogOnCombo(nullptr), E_POINTER);
  EXPECT_EQ(dialog->KRAddUser(nullptr), E_POINTER);
  EXPECT_EQ(called, 0);
}

TEST_F(ObjectTest, TypeInformationIsGivenForItsOneInterface) {
  const auto dialog = Module.Create();
  UINT count = 0;
  EXPECT_EQ(dialog->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  com::ComPtr<ITypeInfo> info;
  EXPECT_EQ(dialog->GetTypeInfo(1, 0, info.Put()), DISP_E_BADINDEX);
  EXPECT_EQ(dialog->GetTypeInfo(0, 0, nullptr), E_POINTER);
  ASSERT_EQ(dialog->GetTypeInfo(0, 0, info.Put()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, __uuidof(IKRXDialog));
  info->ReleaseTypeAttr(attributes);
}

}  // namespace
}  // namespace krx::tests
