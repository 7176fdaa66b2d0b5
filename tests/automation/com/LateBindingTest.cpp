#include "ComponentTest.h"
#include "FakeRuntime.h"

namespace krx::tests {
namespace {

constexpr WORD kCall = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

class LateBindingTest : public ComponentTest {
 protected:
  const com::ComPtr<IKRXDialog> Dialog = Module.Create();
};

TEST_F(LateBindingTest, PropertiesAreReadAndWrittenByName) {
  const com::Bstr value(u"Große Tasten");
  EXPECT_EQ(
      CallByName(*Dialog, L"fontclassbutton", DISPATCH_PROPERTYPUT, {Text(value.Get())}).Status,
      S_OK);
  const LateResult read = CallByName(*Dialog, L"FontClassButton", kCall);
  ASSERT_EQ(read.Status, S_OK);
  ASSERT_EQ(read.Value.Type(), VT_BSTR);
  EXPECT_EQ(com::FromBstr(read.Value.Get().bstrVal), u"Große Tasten");
}

TEST_F(LateBindingTest, AHeightTakesAnyNumberByValueOrByReference) {
  const auto put = [this](VARIANT value) {
    return CallByName(*Dialog, L"ButtonMinHeight", DISPATCH_PROPERTYPUT, {value}).Status;
  };
  EXPECT_EQ(put(Int(300)), S_OK);
  EXPECT_EQ(ButtonMinHeight(*Dialog), 300);
  VARIANT held = Int(310);
  EXPECT_EQ(put(Reference(held)), S_OK);
  EXPECT_EQ(ButtonMinHeight(*Dialog), 310);
  EXPECT_EQ(held.vt, VT_I4) << "an unchanged variable keeps its type";
  float single = 320.5f;
  VARIANT by_reference{};
  by_reference.vt = VT_BYREF | VT_R4;
  by_reference.pfltVal = &single;
  EXPECT_EQ(put(by_reference), S_OK);
  EXPECT_EQ(ButtonMinHeight(*Dialog), 320.5f);
  const com::Bstr digits(u"330");
  EXPECT_EQ(put(Text(digits.Get())), S_OK);
  EXPECT_EQ(ButtonMinHeight(*Dialog), 330);
}

TEST_F(LateBindingTest, AHeightThatIsNoNumberIsATypeMismatch) {
  const com::Bstr word(u"high");
  LateResult result =
      CallByName(*Dialog, L"ButtonMinHeight", DISPATCH_PROPERTYPUT, {Text(word.Get())});
  EXPECT_EQ(result.Status, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(ButtonMinHeight(*Dialog), 0);
}

TEST_F(LateBindingTest, AFailureArrivesWithNumberSourceAndDescription) {
  const FakeRuntime runtime{[](const char*) { return S_OK; }};
  const com::Bstr text(u"text");
  const LateResult result =
      CallByName(*Dialog, L"KRMsgBox", kCall, {Text(text.Get()), Int(kFailingStyle)});
  EXPECT_EQ(result.Status, DISP_E_EXCEPTION);
  EXPECT_EQ(result.Failure.scode, kTypeMismatch);
  EXPECT_EQ(result.Source, u"KRXDialogs");
  EXPECT_EQ(result.Description, u"Type mismatch");
}

TEST_F(LateBindingTest, OptionalArgumentsMayBeLeftOutSkippedOrNamed) {
  const FakeRuntime runtime{[](const char*) { return S_OK; }};
  const com::Bstr text(u"text");
  const com::Bstr title(u"Title");
  const VARIANT style = Int(kFailingStyle);
  const auto call = [&](std::vector<VARIANT> rest, const std::vector<const wchar_t*>& names = {}) {
    rest.insert(rest.begin(), {Text(text.Get()), style});
    return CallByName(*Dialog, L"KRMsgBox", kCall, rest, names).Failure.scode;
  };
  EXPECT_EQ(call({}), kTypeMismatch);
  EXPECT_EQ(call({Missing(), Missing()}), kTypeMismatch);
  EXPECT_EQ(call({Text(title.Get())}, {L"Title"}), kTypeMismatch);
}

TEST_F(LateBindingTest, WrongCallsGetTheStandardStatus) {
  const com::Bstr text(u"text");
  EXPECT_EQ(CallByName(*Dialog, L"NoSuchMember", kCall).Status, DISP_E_UNKNOWNNAME);
  EXPECT_EQ(CallByName(*Dialog, L"KRMsgBox", kCall).Status, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(CallByName(*Dialog, L"KRUser", kCall, {Int(1)}).Status, DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(CallByName(*Dialog, L"KRMsgBox", kCall, {Missing()}).Status, DISP_E_PARAMNOTFOUND);
  const LateResult style =
      CallByName(*Dialog, L"KRMsgBox", kCall, {Text(text.Get()), Text(text.Get())});
  EXPECT_EQ(style.Status, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(style.WrongArgument, 0u) << "counted from the last argument";
  DISPPARAMS none{};
  EXPECT_EQ(Dialog->Invoke(4711, IID_NULL, 0, kCall, &none, nullptr, nullptr, nullptr),
            DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(Dialog->Invoke(1, IID_IUnknown, 0, kCall, &none, nullptr, nullptr, nullptr),
            DISP_E_UNKNOWNINTERFACE);
  EXPECT_EQ(Dialog->Invoke(1, IID_NULL, 0, kCall, nullptr, nullptr, nullptr, nullptr), E_POINTER);
}

}  // namespace
}  // namespace krx::tests
