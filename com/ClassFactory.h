#pragma once

#include <ole2.h>

#include <atomic>

#include "com/Component.h"
#include "com/Module.h"

namespace krx::com {

// Class object that creates the objects of one class. They cannot be aggregated. Keeps the module
// loaded as long as a client holds it.
class ClassFactory : public IClassFactory {
 public:
  // Starts with one reference for the creator; `info` must outlive the factory.
  explicit ClassFactory(const ClassInfo& info) : info_(info) {}
  ClassFactory(const ClassFactory&) = delete;
  ClassFactory& operator=(const ClassFactory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  virtual ~ClassFactory() = default;

  const ModuleLock lock_;
  const ClassInfo& info_;
  std::atomic<ULONG> references_{1};
};

}  // namespace krx::com
