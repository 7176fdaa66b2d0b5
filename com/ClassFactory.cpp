#include "com/ClassFactory.h"

#include "com/ComPtr.h"
#include "com/Errors.h"

namespace krx::com {

HRESULT ClassFactory::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IClassFactory) return E_NOINTERFACE;
  *object = static_cast<IClassFactory*>(this);
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() {
  return ++references_;
}

ULONG ClassFactory::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  // An object that nobody can use is not made: its end would clear what all objects share.
  if (!info_.Offers(iid)) return E_NOINTERFACE;
  return Guard(IID_IClassFactory, [&] {
    const auto created = ComPtr<IUnknown>::Attach(info_.Create());
    return created->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock) {
    ModuleLock::Add();
  } else {
    ModuleLock::Remove();
  }
  return S_OK;
}

HRESULT GetClassObject(const Component& component, REFCLSID id, REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  for (const ClassInfo& info : component.Classes) {
    if (info.Id != id) continue;
    return Guard(IID_IClassFactory, [&] {
      const auto factory = ComPtr<IClassFactory>::Attach(new ClassFactory(info));
      return factory->QueryInterface(iid, object);
    });
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT CanUnloadNow() {
  return CanUnload() ? S_OK : S_FALSE;
}

}  // namespace krx::com
