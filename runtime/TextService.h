#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"

namespace krx::runtime {

// The language texts of the process, as an automation object.
class TextService : public com::DualObject<ITextService> {
 public:
  HRESULT STDMETHODCALLTYPE GetText(BSTR key, LONG group, BSTR* text) override;
  HRESULT STDMETHODCALLTYPE ResolveText(BSTR reference, BSTR* text) override;
};

}  // namespace krx::runtime
