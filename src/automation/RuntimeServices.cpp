#include "automation/RuntimeServices.h"

#include <ole2.h>
#include <olectl.h>

#include "KorvelRuntime.h"
#include "automation/Fonts.h"
#include "automation/RuntimeClass.h"
#include "com/ComPtr.h"
#include "com/Errors.h"
#include "com/Text.h"

namespace krx::automation {

namespace {

class TextServiceAdapter : public host::TextService {
 public:
  String GetText(StringView key, std::int32_t group) override {
    com::Bstr text;
    service_.Check(service_->GetText(com::Bstr(key).Get(), group, text.Put()));
    return text.Text();
  }
  String ResolveText(StringView reference) override {
    com::Bstr text;
    service_.Check(service_->ResolveText(com::Bstr(reference).Get(), text.Put()));
    return text.Text();
  }

 private:
  RuntimeClass<ITextService> service_{__uuidof(::TextService), u"TextService"};
};

class FontServiceAdapter : public host::FontService {
 public:
  void SelectFontClass(StringView name) override {
    service_.Check(service_->SelectFontClass(com::Bstr(name).Get()));
  }
  Font GetFont() override {
    com::ComPtr<IFontDisp> font;
    service_.Check(service_->GetFont(font.Put()));
    return ReadFont(com::ComPtr<IUnknown>(reinterpret_cast<IUnknown*>(font.Get())));
  }

 private:
  RuntimeClass<IFontService> service_{__uuidof(::FontService), u"FontService"};
};

}  // namespace

std::unique_ptr<host::TextService> RuntimeServices::CreateTextService() {
  return std::make_unique<TextServiceAdapter>();
}

std::unique_ptr<host::FontService> RuntimeServices::CreateFontService() {
  return std::make_unique<FontServiceAdapter>();
}

}  // namespace krx::automation
