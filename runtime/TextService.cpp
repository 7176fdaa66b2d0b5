#include "runtime/TextService.h"

#include "com/Text.h"
#include "runtime/ModuleTexts.h"
#include "runtime/core/References.h"

namespace krx::runtime {

HRESULT TextService::GetText(BSTR key, LONG group, BSTR* text) {
  return Answer(
      text, [&] { return com::Bstr(ProcessLanguages().Text(com::FromBstr(key), group)).Detach(); });
}

HRESULT TextService::ResolveText(BSTR reference, BSTR* text) {
  return Answer(text, [&] {
    return com::Bstr(ResolveReference(ProcessLanguages(), com::FromBstr(reference))).Detach();
  });
}

}  // namespace krx::runtime
