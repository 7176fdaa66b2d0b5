#include "ComponentTest.h"
#include "FakeRuntime.h"
#include "MockApplication.h"

namespace krx::tests {
namespace {

class HostAppTest : public ComponentTest {
 protected:
  HRESULT Set(VARIANT argument) {
    return CallByName(*Dialog, L"SetHostApp", DISPATCH_METHOD, {argument}).Status;
  }
  // A box without a title asks the application for its name before anything is shown. The style
  // makes the box fail afterwards (error 13), so it never opens.
  HRESULT OpenUntitled() {
    LONG result = 0;
    return Dialog->KRMsgBox(com::Bstr(u"text").Get(), 256, nullptr, nullptr, 0, &result);
  }
  HRESULT OpenUntitled(MockApplication::Answer answer, HRESULT name_status = S_OK) {
    const auto application =
        com::ComPtr<MockApplication>::Attach(new MockApplication(std::move(answer)));
    application->NameStatus = name_status;
    IDispatch* reference = application.Get();
    EXPECT_EQ(Dialog->SetHostApp(&reference), S_OK);
    return OpenUntitled();
  }
  static VARIANT Object(VARTYPE type, IUnknown* object) {
    VARIANT variant{};
    variant.vt = type;
    variant.punkVal = object;
    return variant;
  }

  com::ComPtr<IKRXDialog> Dialog = Module.Create();
  FakeRuntime Runtime{[](const char*) { return S_OK; }};
};

TEST_F(HostAppTest, EveryKindOfObjectArgumentIsAccepted) {
  const auto application = NamedApplication();
  IDispatch* dispatch = application.Get();
  IUnknown* unknown = application.Get();
  VARIANT by_reference{};
  by_reference.vt = VT_BYREF | VT_DISPATCH;
  by_reference.ppdispVal = &dispatch;
  VARIANT unknown_reference{};
  unknown_reference.vt = VT_BYREF | VT_UNKNOWN;
  unknown_reference.ppunkVal = &unknown;
  VARIANT variable = Object(VT_DISPATCH, dispatch);
  for (const VARIANT& argument :
       {Object(VT_DISPATCH, dispatch), Object(VT_UNKNOWN, unknown), by_reference, unknown_reference,
        Reference(variable), Reference(by_reference)}) {
    IDispatch* none = nullptr;
    Dialog->SetHostApp(&none);
    EXPECT_EQ(application->References(), 1u);
    EXPECT_EQ(Set(argument), S_OK) << "kind " << argument.vt;
    EXPECT_EQ(application->References(), 2u) << "kind " << argument.vt;
  }
}

TEST_F(HostAppTest, NothingIsAcceptedAndTheNameIsThenMissing) {
  VARIANT nothing = Object(VT_DISPATCH, nullptr);
  EXPECT_EQ(Set(nothing), S_OK);
  EXPECT_EQ(OpenUntitled(), kObjectNotSet);
  EXPECT_EQ(Set(Reference(nothing)), S_OK);
  EXPECT_EQ(OpenUntitled(), kObjectNotSet);
}

TEST_F(HostAppTest, WhatIsNoObjectIsATypeMismatchAndChangesNothing) {
  const auto application = NamedApplication();
  ASSERT_EQ(Set(Object(VT_DISPATCH, application.Get())), S_OK);
  const com::Bstr text(u"app");
  VARIANT number = Int(5);
  VARIANT null{};
  null.vt = VT_NULL;
  for (const VARIANT& argument : {Int(5), Text(text.Get()), VARIANT{}, null, Reference(number)}) {
    EXPECT_EQ(Set(argument), DISP_E_TYPEMISMATCH) << "kind " << argument.vt;
  }
  EXPECT_EQ(application->References(), 2u);
  const auto shy = NamedApplication();
  shy->OffersDispatch = false;
  EXPECT_EQ(Set(Object(VT_UNKNOWN, shy.Get())), DISP_E_TYPEMISMATCH);
}

TEST_F(HostAppTest, ItIsHeldUntilReplaced) {
  const auto first = NamedApplication();
  const auto second = NamedApplication();
  Set(Object(VT_DISPATCH, first.Get()));
  Set(Object(VT_DISPATCH, second.Get()));
  EXPECT_EQ(first->References(), 1u);
  EXPECT_EQ(second->References(), 2u);
}

TEST_F(HostAppTest, ItIsLetGoWhenAnObjectIsDestroyed) {
  const auto application = NamedApplication();
  Set(Object(VT_DISPATCH, application.Get()));
  Module.Create().Reset();
  EXPECT_EQ(application->References(), 1u);
  EXPECT_EQ(OpenUntitled(), kObjectNotSet);
  EXPECT_EQ(TakeError().Source, u"KRXDialogs");
}

TEST_F(HostAppTest, ItIsLetGoWhenTheThreadLeavesCom) {
  const auto application = NamedApplication();
  Set(Object(VT_DISPATCH, application.Get()));
  Dialog.Reset();
  EXPECT_EQ(application->References(), 2u);
  EXPECT_EQ(Module.CanUnload(), S_FALSE);
  LeaveCom();
  EXPECT_EQ(application->References(), 1u);
  EXPECT_EQ(Module.CanUnload(), S_OK);
}

TEST_F(HostAppTest, ItsNameIsAskedForByABoxWithoutTitle) {
  int asked = 0;
  EXPECT_EQ(OpenUntitled([&](VARIANT* result, EXCEPINFO*) {
              ++asked;
              *result = Int(42);
              return S_OK;
            }),
            kTypeMismatch);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(TakeError().Description, u"Type mismatch");
}

TEST_F(HostAppTest, ANameThatIsNoTextIsATypeMismatch) {
  EXPECT_EQ(OpenUntitled([](VARIANT* result, EXCEPINFO*) {
              result->vt = VT_NULL;
              return S_OK;
            }),
            kTypeMismatch);
}

TEST_F(HostAppTest, ItsFailureKeepsStatusSourceAndDescription) {
  EXPECT_EQ(OpenUntitled([](VARIANT*, EXCEPINFO* failure) {
              failure->scode = static_cast<HRESULT>(0x80041234);
              failure->bstrSource = com::Bstr(u"App").Detach();
              failure->bstrDescription = com::Bstr(u"No name today").Detach();
              return DISP_E_EXCEPTION;
            }),
            static_cast<HRESULT>(0x80041234));
  const ErrorTexts error = TakeError();
  EXPECT_EQ(error.Source, u"App");
  EXPECT_EQ(error.Description, u"No name today");
}

HRESULT STDMETHODCALLTYPE FillInLate(EXCEPINFO* info) {
  info->wCode = 1001;
  info->bstrDescription = com::Bstr(u"Filled in late").Detach();
  return S_OK;
}

TEST_F(HostAppTest, ItsFailureMayBeFilledInLate) {
  EXPECT_EQ(OpenUntitled([](VARIANT*, EXCEPINFO* failure) {
              failure->pfnDeferredFillIn = &FillInLate;
              return DISP_E_EXCEPTION;
            }),
            static_cast<HRESULT>(0x800A03E9));
  EXPECT_EQ(TakeError().Description, u"Filled in late");
}

TEST_F(HostAppTest, AnApplicationWithoutANameKeepsItsStatus) {
  EXPECT_EQ(OpenUntitled([](VARIANT*, EXCEPINFO*) { return S_OK; }, DISP_E_UNKNOWNNAME),
            DISP_E_UNKNOWNNAME);
  EXPECT_FALSE(TakeError().Description.empty());
}

}  // namespace
}  // namespace krx::tests
