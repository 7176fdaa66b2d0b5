#include "automation/ThreadApartment.h"

#include <utility>

#include "automation/ApartmentSpy.h"
#include "files/Register.h"
#include "msgbox/FMessageBox.h"
#include "users/Register.h"

namespace krx::automation {

namespace {

DWORD slot = TLS_OUT_OF_INDEXES;

}  // namespace

bool ThreadApartment::ModuleStarts() noexcept {
  slot = TlsAlloc();
  return slot != TLS_OUT_OF_INDEXES;
}

void ThreadApartment::ModuleEnds() noexcept {
  TlsFree(slot);
}

void ThreadApartment::ThreadEnds() noexcept {
  if (auto* const apartment = static_cast<ThreadApartment*>(TlsGetValue(slot))) {
    apartment->Abandon();
  }
}

ThreadApartment::ThreadApartment() {
  msgbox::Register(service_);
  users::Register(service_);
  files::Register(service_);
  spy_ = com::ComPtr<ApartmentSpy>::Attach(new ApartmentSpy(*this));
  spy_->Start();
  TlsSetValue(slot, this);
}

ThreadApartment::~ThreadApartment() {
  Detach();
}

ThreadApartment& ThreadApartment::OfThread() {
  auto* const apartment = static_cast<ThreadApartment*>(TlsGetValue(slot));
  return apartment ? *apartment : *new ThreadApartment;
}

ThreadApartment::Use::Use() : apartment_(OfThread()) {
  ++apartment_.uses_;
}

void ThreadApartment::Leave() {
  --uses_;
  DeleteIfUnused();
}

void ThreadApartment::DeleteIfUnused() {
  if (uses_ == 0 && !service_.Shared.DialogService) delete this;
}

void ThreadApartment::End() {
  ++uses_;
  // Letting a foreign object go may run code that fills the settings again.
  while (service_.Shared.DialogService || service_.Shared.HostApplication) {
    const service::SharedSettings last = std::exchange(service_.Shared, {});
  }
  Detach();
  Leave();
}

// The thread ends without having left COM. Its objects of other components cannot be called any
// more, so the reference to the host application is given up, not released; what is our own goes.
void ThreadApartment::Abandon() noexcept {
  ++uses_;
  new (std::nothrow) auto(std::move(service_.Shared.HostApplication));
  { const service::SharedSettings last = std::exchange(service_.Shared, {}); }
  Detach();
  Leave();
}

void ThreadApartment::Detach() noexcept {
  if (spy_) spy_->Stop();
  spy_.Reset();
  if (TlsGetValue(slot) == this) TlsSetValue(slot, nullptr);
}

}  // namespace krx::automation
