#pragma once

#include <KorvelRuntime.h>

#include "com/DualObject.h"

namespace krx::runtime {

// Reading user classes, as an automation object.
class UserClassAdministration : public com::DualObject<IUserClassAdministration> {
 public:
  HRESULT STDMETHODCALLTYPE Reserved1() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reserved2() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reserved3() override { return E_NOTIMPL; }
  // Result: 0, or 1 when there is no such class.
  HRESULT STDMETHODCALLTYPE GetUserClassInfo(BSTR class_name, BSTR* display_text, VARIANT* level,
                                             LONG* result) override;
  HRESULT STDMETHODCALLTYPE Reserved4() override { return E_NOTIMPL; }
  // Result: 0.
  HRESULT STDMETHODCALLTYPE GetUserClasses(VARIANT* names, VARIANT* levels, LONG* result) override;
};

}  // namespace krx::runtime
