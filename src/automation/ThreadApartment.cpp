#include "automation/ThreadApartment.h"

#include <atomic>
#include <utility>

#include "automation/ApartmentSpy.h"

namespace krx::automation {

namespace {

DWORD slot = TLS_OUT_OF_INDEXES;
std::atomic<ThreadApartment*> dead{nullptr};

}  // namespace

bool ThreadApartment::ModuleStarts() noexcept {
  slot = TlsAlloc();
  return slot != TLS_OUT_OF_INDEXES;
}

void ThreadApartment::ModuleEnds() noexcept {
  TlsFree(slot);
}

// The loader's lock is held, under which neither COM nor windows and foreign code may be called:
// the apartment is only remembered.
void ThreadApartment::ThreadEnds() noexcept {
  auto* const apartment = static_cast<ThreadApartment*>(TlsGetValue(slot));
  if (!apartment) return;
  apartment->spy_->Forget();
  apartment->next_dead_ = dead.load();
  while (!dead.compare_exchange_weak(apartment->next_dead_, apartment)) {
  }
}

void ThreadApartment::BuryDead() noexcept {
  ThreadApartment* next = dead.exchange(nullptr);
  while (next)
    std::exchange(next, next->next_dead_)->Bury();
}

ThreadApartment::ThreadApartment() {
  spy_ = com::ComPtr<ApartmentSpy>::Attach(new ApartmentSpy(*this));
  spy_->Start();
  TlsSetValue(slot, this);
}

ThreadApartment::~ThreadApartment() {
  Detach();
}

ThreadApartment& ThreadApartment::OfThread() {
  auto* const apartment = static_cast<ThreadApartment*>(TlsGetValue(slot));
  if (apartment) return *apartment;
  BuryDead();
  return *new ThreadApartment;
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

// The thread has ended without having left COM. Its objects of other components cannot be called
// any more, so the reference to the host application is given up, not released; what is our own
// goes.
void ThreadApartment::Bury() noexcept {
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
