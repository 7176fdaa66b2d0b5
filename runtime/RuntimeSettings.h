#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"

namespace krx::runtime {

// The settings of the reference runtime, as an automation object; every object shows the same.
class RuntimeSettings : public com::DualObject<IRuntimeSettings> {
 public:
  HRESULT STDMETHODCALLTYPE get_Language(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_Language(BSTR value) override;
};

}  // namespace krx::runtime
