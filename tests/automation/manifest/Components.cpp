#include "manifest/Components.h"

#include <ole2.h>

#include <cstdlib>

#include "com/Errors.h"
#include "com/Text.h"
#include "driver/Client.h"

namespace krx::drive {

std::filesystem::path Components() {
  const wchar_t* folder = _wgetenv(L"KRX_COMPONENTS");
  return folder ? std::filesystem::path(folder) : ProgramFolder();
}

com::ComPtr<ITypeLib> TypeLibraryOf(const wchar_t* component) {
  com::ComPtr<ITypeLib> library;
  const std::wstring file = (Components() / component).wstring() + L".dll";
  com::Check(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put()));
  return library;
}

TLIBATTR AttributesOf(ITypeLib& library) {
  TLIBATTR* found = nullptr;
  com::Check(library.GetLibAttr(&found));
  const TLIBATTR attributes = *found;
  library.ReleaseTLibAttr(found);
  return attributes;
}

bool IsRegistered(const TLIBATTR& library) {
  HKEY key = nullptr;
  const std::wstring path = L"TypeLib\\" + com::ToWide(library.guid);
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
    return false;
  RegCloseKey(key);
  return true;
}

void ForgetTypeLibraries() {
  for (const wchar_t* component : kComponents) {
    const TLIBATTR library = AttributesOf(*TypeLibraryOf(component));
    if (!IsRegistered(library)) continue;
    com::Check(UnRegisterTypeLib(library.guid, library.wMajorVerNum, library.wMinorVerNum,
                                 library.lcid, library.syskind));
  }
}

}  // namespace krx::drive
