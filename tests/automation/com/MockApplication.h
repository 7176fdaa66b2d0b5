#pragma once

#include <ole2.h>

#include <functional>

#include "com/ComPtr.h"

namespace krx::tests {

// A client's application object, bound late, whose answer to EXEName a test chooses; counts its
// references.
class MockApplication : public IDispatch {
 public:
  using Answer = std::function<HRESULT(VARIANT*, EXCEPINFO*)>;
  // Starts with one reference for the creator.
  explicit MockApplication(Answer answer) : answer_(std::move(answer)) {}

  HRESULT NameStatus = S_OK;   // what GetIDsOfNames answers
  bool OffersDispatch = true;  // else it is found through IUnknown alone
  ULONG References() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID,
                                          DISPID* ids) override;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO* failure, UINT*) override;

 private:
  virtual ~MockApplication() = default;

  Answer answer_;
  ULONG references_ = 1;
};

// An application named "TheApp", with one reference for the caller.
com::ComPtr<MockApplication> NamedApplication();

}  // namespace krx::tests
