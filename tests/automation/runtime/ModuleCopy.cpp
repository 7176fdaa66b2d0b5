#include "ModuleCopy.h"

#include <fstream>
#include <stdexcept>

#include "driver/Client.h"

namespace krx::runtime {

namespace {

// Another one for each copy.
std::filesystem::path FolderOfACopy() {
  static int copies = 0;
  return std::filesystem::temp_directory_path() /
         ("runtime_tests_" + std::to_string(GetCurrentProcessId()) + "_" +
          std::to_string(++copies));
}

}  // namespace

std::filesystem::path ComponentFile() {
  return drive::ProgramFolder() / "KorvelRuntime.dll";
}

ModuleCopy::ModuleCopy() : folder_(FolderOfACopy()) {
  std::filesystem::create_directory(folder_);
  const auto file = folder_ / "KorvelRuntime.dll";
  std::filesystem::copy_file(ComponentFile(), file);
  module_ = LoadLibraryW(file.c_str());
  if (!module_) throw std::runtime_error("KorvelRuntime.dll cannot be loaded");
}

ModuleCopy::~ModuleCopy() {
  FreeLibrary(module_);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

void ModuleCopy::Write(const std::wstring& name, std::string_view bytes) const {
  std::ofstream file(folder_ / name, std::ios::binary);
  file << bytes;
  if (!file.flush()) throw std::runtime_error("the text file cannot be written");
}

HRESULT ModuleCopy::Call(const char* entry_point) const {
  const FARPROC address = GetProcAddress(module_, entry_point);
  if (!address) throw std::runtime_error(entry_point);
  return reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(address))();
}

HRESULT ModuleCopy::GetClassObject(REFCLSID id, REFIID iid, void** object) const {
  const auto address = reinterpret_cast<void*>(GetProcAddress(module_, "DllGetClassObject"));
  return reinterpret_cast<LPFNGETCLASSOBJECT>(address)(id, iid, object);
}

String GetText(ITextService& texts, StringView key, long group) {
  com::Bstr text;
  com::CheckCall(texts.GetText(com::Bstr(key).Get(), group, text.Put()), &texts,
                 __uuidof(ITextService));
  return text.Text();
}

String ResolveText(ITextService& texts, StringView reference) {
  com::Bstr text;
  com::CheckCall(texts.ResolveText(com::Bstr(reference).Get(), text.Put()), &texts,
                 __uuidof(ITextService));
  return text.Text();
}

void SetLanguage(IRuntimeSettings& settings, StringView name) {
  com::CheckCall(settings.put_Language(com::Bstr(name).Get()), &settings,
                 __uuidof(IRuntimeSettings));
}

String Language(IRuntimeSettings& settings) {
  com::Bstr name;
  com::CheckCall(settings.get_Language(name.Put()), &settings, __uuidof(IRuntimeSettings));
  return name.Text();
}

}  // namespace krx::runtime
