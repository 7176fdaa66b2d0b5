#include "runtime/TextService.h"

#include "com/Text.h"
#include "runtime/ModuleTexts.h"
#include "runtime/core/References.h"

namespace krx::runtime {

HRESULT TextService::GetText(BSTR key, LONG group, BSTR* text) {
  if (!text) return E_POINTER;
  *text = nullptr;
  return Guard([&] {
    *text = com::Bstr(ProcessLanguages().Text(com::FromBstr(key), group)).Detach();
    return S_OK;
  });
}

HRESULT TextService::ResolveText(BSTR reference, BSTR* text) {
  if (!text) return E_POINTER;
  *text = nullptr;
  return Guard([&] {
    *text = com::Bstr(ResolveReference(ProcessLanguages(), com::FromBstr(reference))).Detach();
    return S_OK;
  });
}

}  // namespace krx::runtime
