#include "FakeRuntime.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <utility>

#include "com/ClassFactory.h"
#include "com/DualObject.h"
#include "com/Text.h"

namespace krx::tests {

namespace {

FakeRuntime::Failing fail;

class FakeTexts : public com::DualObject<ITextService> {
 public:
  HRESULT STDMETHODCALLTYPE GetText(BSTR key, LONG, BSTR* text) override {
    if (const HRESULT status = fail("GetText"); FAILED(status)) return status;
    *text = SysAllocString(key);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE ResolveText(BSTR reference, BSTR* text) override {
    *text = SysAllocString(reference);
    return S_OK;
  }
};

class FakeFonts : public com::DualObject<IFontService> {
 public:
  HRESULT STDMETHODCALLTYPE SelectFontClass(BSTR) override { return fail("SelectFontClass"); }
  HRESULT STDMETHODCALLTYPE GetFont(IFontDisp** font) override {
    if (const HRESULT status = fail("GetFont"); status != S_OK) return status;
    wchar_t name[] = L"Tahoma";
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = name;
    description.cySize.int64 = 82500;
    description.sWeight = FW_NORMAL;
    return OleCreateFontIndirect(&description, IID_IFontDisp, reinterpret_cast<void**>(font));
  }
};

const com::ClassInfo kClasses[] = {
    {__uuidof(::TextService), L"", L"",
     [] { return static_cast<IUnknown*>(static_cast<ITextService*>(new FakeTexts)); },
     FakeTexts::Offers},
    {__uuidof(::FontService), L"", L"",
     [] { return static_cast<IUnknown*>(static_cast<IFontService*>(new FakeFonts)); },
     FakeFonts::Offers},
};

DWORD Offer(const com::ClassInfo& info) {
  DWORD cookie = 0;
  const auto factory = com::ComPtr<IClassFactory>::Attach(new com::ClassFactory(info));
  EXPECT_EQ(CoRegisterClassObject(info.Id, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                                  &cookie),
            S_OK);
  return cookie;
}

}  // namespace

FakeRuntime::FakeRuntime(Failing failing) {
  fail = std::move(failing);
  texts_ = Offer(kClasses[0]);
  fonts_ = Offer(kClasses[1]);
}

FakeRuntime::~FakeRuntime() {
  CoRevokeClassObject(texts_);
  CoRevokeClassObject(fonts_);
  fail = {};
}

}  // namespace krx::tests
