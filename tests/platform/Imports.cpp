#include "platform/Imports.h"

#include <cstring>

namespace krx::test {

void RedirectImport(HMODULE loaded, const char* name, void* target) {
  auto* const module = reinterpret_cast<BYTE*>(loaded);
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(module);
  const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(module + dos.e_lfanew);
  const auto& directory = headers.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto* library =
      reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(module + directory.VirtualAddress);
  for (; library->Name; ++library) {
    auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(module + library->OriginalFirstThunk);
    auto* place = reinterpret_cast<IMAGE_THUNK_DATA*>(module + library->FirstThunk);
    for (; names->u1.AddressOfData; ++names, ++place) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      const auto* import =
          reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(module + names->u1.AddressOfData);
      if (std::strcmp(import->Name, name) != 0) continue;
      DWORD before = 0;
      VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
      place->u1.Function = reinterpret_cast<ULONG_PTR>(target);
      VirtualProtect(place, sizeof *place, before, &before);
    }
  }
}

}  // namespace krx::test
