#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"

namespace krx::runtime {

// The panel settings of the process, as an automation object; every object shows the same.
class PanelSettings : public com::DualObject<IPanelSettings> {
 public:
  HRESULT STDMETHODCALLTYPE get_Keyboard(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_Keyboard(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_Theme(BSTR* value) override;
  HRESULT STDMETHODCALLTYPE put_Theme(BSTR value) override;
  HRESULT STDMETHODCALLTYPE get_ShowCountdown(VARIANT_BOOL* value) override;
  HRESULT STDMETHODCALLTYPE put_ShowCountdown(VARIANT_BOOL value) override;
  HRESULT STDMETHODCALLTYPE get_FirstAnswerDelay(double* value) override;
  HRESULT STDMETHODCALLTYPE put_FirstAnswerDelay(double value) override;
  HRESULT STDMETHODCALLTYPE get_LogOnNotice(BSTR* value) override;
};

}  // namespace krx::runtime
