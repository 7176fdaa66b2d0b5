#include "automation/ApartmentSpy.h"

#include "com/ComPtr.h"
#include "com/Errors.h"

namespace krx::automation {

void ApartmentSpy::Start() {
  com::Check(CoRegisterInitializeSpy(this, &cookie_));
  started_ = true;
}

void ApartmentSpy::Stop() noexcept {
  watched_ = nullptr;
  if (std::exchange(started_, false)) CoRevokeInitializeSpy(cookie_);
}

HRESULT ApartmentSpy::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid != IID_IUnknown && iid != IID_IInitializeSpy) return E_NOINTERFACE;
  *object = static_cast<IInitializeSpy*>(this);
  AddRef();
  return S_OK;
}

ULONG ApartmentSpy::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

HRESULT ApartmentSpy::PreUninitialize(DWORD initializations) {
  // Ending the apartment lets go of this spy.
  const com::ComPtr<ApartmentSpy> self(this);
  if (initializations == 1 && watched_) watched_->End();
  return S_OK;
}

}  // namespace krx::automation
