#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"
#include "runtime/core/FontClasses.h"

namespace krx::runtime {

// The font classes in the face of the operator's system, as an automation object; each object has
// a current font class of its own.
class FontService : public com::DualObject<IFontService> {
 public:
  HRESULT STDMETHODCALLTYPE SelectFontClass(BSTR name) override;
  HRESULT STDMETHODCALLTYPE GetFont(IFontDisp** font) override;

 private:
  const FontClass* current_ = &FontClassOf({});
};

}  // namespace krx::runtime
