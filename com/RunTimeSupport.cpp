// Locks, thread-local values and clocks of the statically linked C++ run-time library, which asks
// for them by their POSIX names. The compiler's own library under these names gives nothing back:
// every loaded and unloaded module would leave a TLS index of the process (which has 1,088),
// handles and some fifteen blocks, on x86 by being loaded, on x64 by its first exception.
//
// Only what the modules need is here. Who uses more of the standard library, a std::thread say, is
// told by the linker: the compiler's library then comes in and defines these names a second time.

#include <windows.h>

#include <pthread.h>

#include <cerrno>
#include <ctime>
#include <new>
#include <utility>

namespace {

// A mutex or condition lives where the library keeps its word for it, so none has to be freed; the
// library never destroys its static ones. Its initial words are small negative numbers, which no
// lock in use consists of, the system's initial word is 0.
template <class Native>
Native* At(intptr_t* place) noexcept {
  static_assert(sizeof(Native) == sizeof *place);
  const intptr_t word = __atomic_load_n(place, __ATOMIC_RELAXED);
  if (word < 0 && word >= PTHREAD_RECURSIVE_MUTEX_INITIALIZER) {
    InterlockedCompareExchangePointer(reinterpret_cast<void**>(place), nullptr,
                                      reinterpret_cast<void*>(word));
  }
  return reinterpret_cast<Native*>(place);
}

// Runs a function and says so when it has returned; one that throws may be tried again.
class Once {
 public:
  enum State : long { kNew = PTHREAD_ONCE_INIT, kRunning, kDone };

  explicit Once(pthread_once_t& state) : state_(state) {}
  ~Once() { InterlockedExchange(&state_, result_); }
  Once(const Once&) = delete;
  Once& operator=(const Once&) = delete;
  void Run(void (*function)()) {
    function();
    result_ = kDone;
  }

 private:
  pthread_once_t& state_;
  State result_ = kNew;
};

// What one thread keeps under the module's key.
struct Value {
  Value* Next;
  const void* Data;
};

// The only key: the library keeps all thread-local variables of a module under it.
DWORD slot = TLS_OUT_OF_INDEXES;
void (*destroy)(void*) = nullptr;
SRWLOCK values_lock = SRWLOCK_INIT;
Value* values = nullptr;  // of all threads
bool process_ends = false;

// The value of the calling thread. Unlike the system's call this keeps the thread's last error,
// for which the caller of a failed function may still ask.
Value* OfThread() noexcept {
  const DWORD error = GetLastError();
  auto* const value = static_cast<Value*>(TlsGetValue(slot));
  SetLastError(error);
  return value;
}

Value* Unlink(Value* value) noexcept {
  AcquireSRWLockExclusive(&values_lock);
  Value** link = &values;
  while (*link != value)
    link = &(*link)->Next;
  *link = value->Next;
  ReleaseSRWLockExclusive(&values_lock);
  return value;
}

void Delete(Value* value) noexcept {
  destroy(const_cast<void*>(value->Data));
  delete value;
}

// Called by the loader. Variables with destructors have been destroyed before.
void WINAPI ThreadOrModuleEnds(void*, DWORD reason, void* reserved) noexcept {
  if (reason == DLL_PROCESS_DETACH) process_ends = reserved != nullptr;
  if (reason != DLL_THREAD_DETACH || slot == TLS_OUT_OF_INDEXES) return;
  if (Value* const value = OfThread()) {
    TlsSetValue(slot, nullptr);
    Delete(Unlink(value));
  }
}

// The module ends after its static objects, which may throw and catch themselves. Other threads
// that have used it go on without it, so this takes back what they keep. At the end of the process
// the system does that, and the lock may belong to a thread that is no more.
[[gnu::destructor]] void GiveAllBack() noexcept {
  if (process_ends || slot == TLS_OUT_OF_INDEXES) return;
  while (values)
    Delete(std::exchange(values, values->Next));
  TlsFree(std::exchange(slot, TLS_OUT_OF_INDEXES));
}

}  // namespace

// A place in the module's list of such functions, behind those of the compiler.
extern "C" {
[[gnu::used, gnu::section(".CRT$XLY")]] const PIMAGE_TLS_CALLBACK krx_run_time_support =
    ThreadOrModuleEnds;
}

int pthread_once(pthread_once_t* once, void (*function)()) {
  for (;;) {
    switch (InterlockedCompareExchange(once, Once::kRunning, Once::kNew)) {
      case Once::kNew:
        Once(*once).Run(function);
        return 0;
      case Once::kDone:
        return 0;
      default:
        Sleep(1);  // what the library does once takes microseconds
    }
  }
}

int pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) {
  if (attributes) return ENOTSUP;
  *mutex = 0;
  return 0;
}

int pthread_mutex_destroy(pthread_mutex_t*) {
  return 0;
}

// A recursive mutex is not taken twice by one thread here: the only one linked in, that of the
// local statics, is let go while a static is made.
int pthread_mutex_lock(pthread_mutex_t* mutex) {
  AcquireSRWLockExclusive(At<SRWLOCK>(mutex));
  return 0;
}

int pthread_mutex_unlock(pthread_mutex_t* mutex) {
  ReleaseSRWLockExclusive(At<SRWLOCK>(mutex));
  return 0;
}

int pthread_cond_wait(pthread_cond_t* condition, pthread_mutex_t* mutex) {
  SleepConditionVariableSRW(At<CONDITION_VARIABLE>(condition), At<SRWLOCK>(mutex), INFINITE, 0);
  return 0;
}

int pthread_cond_broadcast(pthread_cond_t* condition) {
  WakeAllConditionVariable(At<CONDITION_VARIABLE>(condition));
  return 0;
}

int pthread_key_create(pthread_key_t* key, void (*destructor)(void*)) {
  if (slot != TLS_OUT_OF_INDEXES || !destructor) return EAGAIN;
  destroy = destructor;
  slot = TlsAlloc();
  if (slot == TLS_OUT_OF_INDEXES) return EAGAIN;
  *key = slot;
  return 0;
}

void* pthread_getspecific(pthread_key_t) {
  const Value* const value = OfThread();
  return value ? const_cast<void*>(value->Data) : nullptr;
}

int pthread_setspecific(pthread_key_t, const void* data) {
  if (Value* const known = OfThread()) {
    known->Data = data;
    return 0;
  }
  auto* const value = new (std::nothrow) Value{nullptr, data};
  if (!value) return ENOMEM;
  if (!TlsSetValue(slot, value)) {
    delete value;
    return ENOMEM;
  }
  AcquireSRWLockExclusive(&values_lock);
  value->Next = std::exchange(values, value);
  ReleaseSRWLockExclusive(&values_lock);
  return 0;
}

int clock_gettime(clockid_t clock, timespec* time) {
  constexpr LONGLONG kNanoseconds = 1'000'000'000;
  LARGE_INTEGER now{};
  LARGE_INTEGER unit{};
  if (clock == CLOCK_MONOTONIC) {
    QueryPerformanceCounter(&now);
    QueryPerformanceFrequency(&unit);
  } else {
    constexpr LONGLONG kBefore1970 = 116'444'736'000'000'000;
    FILETIME system_time{};
    GetSystemTimePreciseAsFileTime(&system_time);
    now.LowPart = system_time.dwLowDateTime;
    now.HighPart = static_cast<LONG>(system_time.dwHighDateTime);
    now.QuadPart -= kBefore1970;
    unit.QuadPart = 10'000'000;
  }
  time->tv_sec = static_cast<time_t>(now.QuadPart / unit.QuadPart);
  time->tv_nsec = static_cast<long>(now.QuadPart % unit.QuadPart * kNanoseconds / unit.QuadPart);
  return 0;
}
