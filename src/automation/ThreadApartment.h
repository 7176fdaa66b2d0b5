#pragma once

#include <ole2.h>

#include "automation/RuntimeServices.h"
#include "com/ComPtr.h"
#include "com/Module.h"
#include "ports/win32/Win32Platform.h"
#include "service/Apartment.h"

namespace krx::automation {

class ApartmentSpy;

// What the dialog objects of one thread work with. Lives, and keeps the module loaded, as long as
// an object of the thread or the shared settings live; ends at the latest with the thread's COM
// apartment, so that everything the settings hold is given back on the thread it belongs to.
class ThreadApartment {
 public:
  // A dialog object's share in the apartment of the thread that creates it.
  class Use {
   public:
    Use();
    ~Use() { apartment_.Leave(); }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;

    service::Apartment& Service() const { return apartment_.service_; }
    bool OnItsThread() const { return apartment_.thread_ == GetCurrentThreadId(); }

   private:
    ThreadApartment& apartment_;
  };

  ThreadApartment(const ThreadApartment&) = delete;
  ThreadApartment& operator=(const ThreadApartment&) = delete;

  // The thread's COM apartment is about to end: the settings are cleared, the host application
  // included. Objects that a client still holds keep working without them.
  void End();

  // Notices of the module's entry point.
  static bool ModuleStarts() noexcept;
  static void ModuleEnds() noexcept;
  static void ThreadEnds() noexcept;
  // Lets go of the apartments of threads that have ended without leaving COM; to be called where
  // the module is free to call others.
  static void BuryDead() noexcept;

 private:
  ThreadApartment();
  ~ThreadApartment();

  static ThreadApartment& OfThread();
  void Leave();
  void Bury() noexcept;
  void Detach() noexcept;
  void DeleteIfUnused();

  const com::ModuleLock lock_;
  const DWORD thread_ = GetCurrentThreadId();
  win32::Win32Platform platform_;
  RuntimeServices runtime_;
  service::Apartment service_{platform_, runtime_};
  com::ComPtr<ApartmentSpy> spy_;
  int uses_ = 0;
  ThreadApartment* next_dead_ = nullptr;
};

}  // namespace krx::automation
