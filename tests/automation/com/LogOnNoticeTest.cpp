// The notice before log-on of runtimes of all ages.

#include <olectl.h>

#include <optional>

#include "ComponentTest.h"
#include "KorvelRuntime.h"
#include "automation/RuntimeServices.h"
#include "base/Error.h"
#include "com/ClassFactory.h"

namespace krx::tests {
namespace {

constexpr DISPID kNotice = 77;
constexpr HRESULT kMalformed = static_cast<HRESULT>(0x80040212);

// How the settings of the test's runtime answer.
struct Behaviour {
  bool KnowsTheName = true;
  bool Fails = false;
  VARTYPE Type = VT_BSTR;
  int Read = 0;
};
Behaviour behaviour;

// Settings of a runtime that was made before the notice: what stands behind their last operation is
// nobody's.
class PlantSettings : public IPanelSettings {
 public:
  static bool Offers(REFIID iid) {
    return iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(IPanelSettings);
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    *object = Offers(iid) ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override {
    EXPECT_STREQ(*names, L"LogOnNotice");
    *ids = behaviour.KnowsTheName ? kNotice : DISPID_UNKNOWN;
    return behaviour.KnowsTheName ? S_OK : DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*,
                                   VARIANT* result, EXCEPINFO* failure, UINT*) override {
    EXPECT_EQ(id, kNotice);
    EXPECT_NE(flags & DISPATCH_PROPERTYGET, 0);
    ++behaviour.Read;
    if (behaviour.Fails) {
      failure->scode = kMalformed;
      failure->bstrDescription = SysAllocString(L"malformed");
      return DISP_E_EXCEPTION;
    }
    result->vt = behaviour.Type;
    if (behaviour.Type == VT_BSTR) result->bstrVal = SysAllocString(L"Staff only");
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE get_Keyboard(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_Keyboard(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_Theme(BSTR*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_Theme(BSTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_ShowCountdown(VARIANT_BOOL*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_ShowCountdown(VARIANT_BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_FirstAnswerDelay(double*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE put_FirstAnswerDelay(double) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE get_LogOnNotice(BSTR*) override {
    ADD_FAILURE() << "an older class has nothing at this place";
    return E_NOTIMPL;
  }

 private:
  virtual ~PlantSettings() = default;
  ULONG references_ = 1;
};

const com::ClassInfo kPlantSettings{
    __uuidof(::PanelSettings), L"", L"",
    [] { return static_cast<IUnknown*>(static_cast<IPanelSettings*>(new PlantSettings)); },
    PlantSettings::Offers};

class LogOnNoticeTest : public ::testing::Test {
 protected:
  LogOnNoticeTest() { behaviour = {}; }
  ~LogOnNoticeTest() override {
    if (offered_) CoRevokeClassObject(*offered_);
  }
  void Offer() {
    const auto factory = com::ComPtr<IClassFactory>::Attach(new com::ClassFactory(kPlantSettings));
    offered_.emplace();
    ASSERT_EQ(CoRegisterClassObject(kPlantSettings.Id, factory.Get(), CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &*offered_),
              S_OK);
  }
  std::uint32_t Failure() {
    try {
      services.ReadLogOnNotice();
      return 0;
    } catch (const Error& error) {
      return error.Status();
    }
  }

  Sta sta_;
  std::optional<DWORD> offered_;
  automation::RuntimeServices services;
};

TEST_F(LogOnNoticeTest, IsReadByName) {
  Offer();
  EXPECT_EQ(services.ReadLogOnNotice(), u"Staff only");
  EXPECT_EQ(behaviour.Read, 1);
}

TEST_F(LogOnNoticeTest, AnOlderRuntimeIsNotAskedForIt) {
  Offer();
  behaviour.KnowsTheName = false;
  EXPECT_EQ(Failure(), static_cast<std::uint32_t>(DISP_E_UNKNOWNNAME));
  EXPECT_EQ(behaviour.Read, 0);
}

TEST_F(LogOnNoticeTest, AFailureIsTheRuntimesOwn) {
  Offer();
  behaviour.Fails = true;
  EXPECT_EQ(Failure(), static_cast<std::uint32_t>(kMalformed));
}

TEST_F(LogOnNoticeTest, WhatIsNoTextIsNone) {
  Offer();
  for (const VARTYPE type : {VT_EMPTY, VT_I4, VT_NULL}) {
    behaviour.Type = type;
    EXPECT_EQ(services.ReadLogOnNotice(), u"") << type;
  }
}

TEST_F(LogOnNoticeTest, ARuntimeWithoutTheClassHasNone) {
  EXPECT_EQ(services.ReadLogOnNotice(), u"");
}

}  // namespace
}  // namespace krx::tests
