#include "runtime/RuntimeSettings.h"

#include "com/Text.h"
#include "runtime/ModuleTexts.h"

namespace krx::runtime {

HRESULT RuntimeSettings::get_Language(BSTR* value) {
  return Answer(value, [] { return com::Bstr(ProcessLanguages().Current()).Detach(); });
}

HRESULT RuntimeSettings::put_Language(BSTR value) {
  return Guard([&] {
    ProcessLanguages().Select(com::FromBstr(value));
    return S_OK;
  });
}

}  // namespace krx::runtime
