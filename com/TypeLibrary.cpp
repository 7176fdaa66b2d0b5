#include "com/TypeLibrary.h"

#include <ole2.h>

#include <array>

#include "com/Errors.h"
#include "com/Module.h"

namespace krx::com {

namespace {

struct Entry {
  IID Id;
  ITypeInfo* Description;
};

// Plain data: at the end of the process no destructor may call into a platform library that has
// shut down already. A module has a handful of interfaces; one more would just not be kept.
constinit std::array<Entry, 16> cache{};
constinit SRWLOCK cache_lock = SRWLOCK_INIT;

class CacheGuard {
 public:
  CacheGuard() { AcquireSRWLockExclusive(&cache_lock); }
  ~CacheGuard() { ReleaseSRWLockExclusive(&cache_lock); }
  CacheGuard(const CacheGuard&) = delete;
  CacheGuard& operator=(const CacheGuard&) = delete;
};

}  // namespace

ComPtr<ITypeLib> LoadModuleTypeLibrary() {
  ComPtr<ITypeLib> library;
  Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Put()));
  return library;
}

ComPtr<ITypeInfo> TypeDescription(REFIID iid) {
  const CacheGuard guard;
  for (Entry& entry : cache) {
    if (entry.Description && entry.Id == iid) return ComPtr<ITypeInfo>(entry.Description);
    if (entry.Description) continue;
    ComPtr<ITypeInfo> description;
    Check(LoadModuleTypeLibrary()->GetTypeInfoOfGuid(iid, description.Put()));
    entry = {iid, ComPtr<ITypeInfo>(description).Detach()};
    return description;
  }
  ComPtr<ITypeInfo> description;
  Check(LoadModuleTypeLibrary()->GetTypeInfoOfGuid(iid, description.Put()));
  return description;
}

void ForgetTypeDescriptions() noexcept {
  const CacheGuard guard;
  for (Entry& entry : cache) {
    if (entry.Description) entry.Description->Release();
    entry = {};
  }
}

}  // namespace krx::com
