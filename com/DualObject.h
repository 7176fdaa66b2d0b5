#pragma once

#include <ole2.h>

#include <atomic>
#include <utility>

#include "com/Dispatch.h"
#include "com/Errors.h"
#include "com/Module.h"
#include "com/Results.h"
#include "com/TypeLibrary.h"

namespace krx::com {

// Base of an object with a dual interface: identity, late binding through the module's own type
// library, and the promise that every failing method leaves an error object. Starts with one
// reference, which belongs to its creator; keeps the module loaded.
template <class Interface>
class DualObject : public Interface, public ISupportErrorInfo {
 public:
  DualObject(const DualObject&) = delete;
  DualObject& operator=(const DualObject&) = delete;

  // Whether objects of this class have an interface, without one being made.
  static bool Offers(REFIID iid) {
    return iid == IID_IUnknown || iid == IID_IDispatch || iid == __uuidof(Interface) ||
           iid == IID_ISupportErrorInfo;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = Find(iid);
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (!count) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (!info) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    return Guard([&] {
      *info = Description().Detach();
      return S_OK;
    });
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!names || !ids) return E_POINTER;
    return Guard([&] { return Description()->GetIDsOfNames(names, count, ids); });
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* failure,
                                   UINT* wrong_argument) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (!arguments) return E_POINTER;
    return Guard([&] {
      const LateCall call{member, locale, flags, *arguments};
      return InvokeTyped(*Description(), static_cast<Interface*>(this), call, result, failure,
                         wrong_argument);
    });
  }

  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == __uuidof(Interface) || iid == IID_IDispatch ? S_OK : S_FALSE;
  }

 protected:
  DualObject() = default;
  virtual ~DualObject() = default;

  // Runs a method's body; an exception becomes status and error object. The object outlives the
  // call even when the client lets go of it meanwhile, as it can while a dialog handles events.
  template <class Body>
  HRESULT Guard(Body&& body) noexcept {
    const ComPtr<Interface> self(static_cast<Interface*>(this));
    return com::Guard(__uuidof(Interface), std::forward<Body>(body));
  }
  // As Guard, for a method with one result: what the body returns.
  template <class Value, class Body>
  HRESULT Answer(Value* place, Body&& body) noexcept {
    return Guard([&] {
      com::Answer(place, body);
      return S_OK;
    });
  }

 private:
  static ComPtr<ITypeInfo> Description() { return TypeDescription(__uuidof(Interface)); }

  void* Find(REFIID iid) {
    if (!Offers(iid)) return nullptr;
    if (iid == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    return static_cast<Interface*>(this);
  }

  const ModuleLock lock_;
  std::atomic<ULONG> references_{1};
};

}  // namespace krx::com
