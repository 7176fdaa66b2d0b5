#pragma once

#include <ole2.h>

#include "automation/ThreadApartment.h"

namespace krx::automation {

// Watches the thread's COM apartment and ends the dialogs' apartment just before it, while objects
// of other components can still be released properly.
class ApartmentSpy : public IInitializeSpy {
 public:
  // Starts with one reference for the creator.
  explicit ApartmentSpy(ThreadApartment& watched) : watched_(&watched) {}
  ApartmentSpy(const ApartmentSpy&) = delete;
  ApartmentSpy& operator=(const ApartmentSpy&) = delete;

  // Begins and ends the watching, on the thread of the apartment. Start raises Error.
  void Start();
  void Stop() noexcept;
  // The thread has ended, and what COM kept for it with it: there is nothing to be stopped.
  void Forget() noexcept {
    watched_ = nullptr;
    started_ = false;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE PreInitialize(DWORD, DWORD) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
  HRESULT STDMETHODCALLTYPE PreUninitialize(DWORD initializations) override;
  HRESULT STDMETHODCALLTYPE PostUninitialize(DWORD) override { return S_OK; }

 private:
  virtual ~ApartmentSpy() = default;

  ThreadApartment* watched_;
  ULARGE_INTEGER cookie_{};
  bool started_ = false;
  ULONG references_ = 1;
};

}  // namespace krx::automation
