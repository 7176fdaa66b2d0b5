#include "automation/RuntimeServices.h"

#include <ole2.h>
#include <olectl.h>

#include "KorvelRuntime.h"
#include "automation/Fonts.h"
#include "com/ComPtr.h"
#include "com/Failure.h"
#include "com/Text.h"

namespace krx::automation {

namespace {

template <class Interface>
com::ComPtr<Interface> CreateService(REFCLSID id, StringView name) {
  com::ComPtr<Interface> service;
  const HRESULT status = CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER,
                                          __uuidof(Interface), service.PutVoid());
  if (SUCCEEDED(status)) return service;
  const String what = status == REGDB_E_CLASSNOTREG
                          ? String(u" is not registered")
                          : u" cannot be created: " + com::SystemMessage(status);
  throw Error(static_cast<std::uint32_t>(status), u"The runtime's class " + String(name) + what);
}

class TextServiceAdapter : public host::TextService {
 public:
  String GetText(StringView key, std::int32_t group) override {
    com::Bstr text;
    Check(service_->GetText(com::Bstr(key).Get(), group, text.Put()));
    return text.Text();
  }
  String ResolveText(StringView reference) override {
    com::Bstr text;
    Check(service_->ResolveText(com::Bstr(reference).Get(), text.Put()));
    return text.Text();
  }

 private:
  void Check(HRESULT status) const {
    com::CheckCall(status, service_.Get(), __uuidof(ITextService));
  }

  const com::ComPtr<ITextService> service_ =
      CreateService<ITextService>(__uuidof(::TextService), u"TextService");
};

class FontServiceAdapter : public host::FontService {
 public:
  void SelectFontClass(StringView name) override {
    Check(service_->SelectFontClass(com::Bstr(name).Get()));
  }
  Font GetFont() override {
    com::ComPtr<IFontDisp> font;
    Check(service_->GetFont(font.Put()));
    return ReadFont(com::ComPtr<IUnknown>(reinterpret_cast<IUnknown*>(font.Get())));
  }

 private:
  void Check(HRESULT status) const {
    com::CheckCall(status, service_.Get(), __uuidof(IFontService));
  }

  const com::ComPtr<IFontService> service_ =
      CreateService<IFontService>(__uuidof(::FontService), u"FontService");
};

}  // namespace

std::unique_ptr<host::TextService> RuntimeServices::CreateTextService() {
  return std::make_unique<TextServiceAdapter>();
}

std::unique_ptr<host::FontService> RuntimeServices::CreateFontService() {
  return std::make_unique<FontServiceAdapter>();
}

}  // namespace krx::automation
