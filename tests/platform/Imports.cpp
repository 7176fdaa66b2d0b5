#include "platform/Imports.h"

#include <cstring>

namespace krx::test {

namespace {

// Calls `visit` with the library, the name and the place of every import that has a name.
template <class Visit>
void VisitImports(HMODULE loaded, Visit visit) {
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
      visit(reinterpret_cast<const char*>(module + library->Name), import->Name, *place);
    }
  }
}

}  // namespace

void RedirectImport(HMODULE module, const char* name, void* target) {
  VisitImports(module, [&](const char*, const char* import, IMAGE_THUNK_DATA& place) {
    if (std::strcmp(import, name) != 0) return;
    DWORD before = 0;
    VirtualProtect(&place, sizeof place, PAGE_READWRITE, &before);
    place.u1.Function = reinterpret_cast<ULONG_PTR>(target);
    VirtualProtect(&place, sizeof place, before, &before);
  });
}

std::vector<ImportedName> ImportsOf(HMODULE module) {
  std::vector<ImportedName> all;
  VisitImports(module, [&](const char* library, const char* import, IMAGE_THUNK_DATA&) {
    all.push_back({library, import});
  });
  return all;
}

}  // namespace krx::test
