// Shows one of the platform's own dialogs until somebody closes it, to be looked at beside ours.
// usage: show_platform message|task|file|folder [FOLDER]

#include <windows.h>

#include <commdlg.h>  // builds on the one above
#include <objbase.h>  // so do these
#include <shlobj.h>

#include <array>
#include <cstdio>
#include <cwchar>
#include <string>

#include "Calls.h"

namespace {

void ShowFiles(const wchar_t* folder) {
  std::array<wchar_t, MAX_PATH> name{};
  OPENFILENAMEW wanted{};
  wanted.lStructSize = sizeof wanted;
  wanted.lpstrFilter = L"Text\0*.txt\0All\0*.*\0";
  wanted.lpstrFile = name.data();
  wanted.nMaxFile = static_cast<DWORD>(name.size());
  wanted.lpstrInitialDir = folder;
  wanted.Flags = OFN_EXPLORER | OFN_NOCHANGEDIR;
  GetOpenFileNameW(&wanted);
}

int CALLBACK StartIn(HWND window, UINT message, LPARAM, LPARAM folder) {
  if (message == BFFM_INITIALIZED) SendMessageW(window, BFFM_SETSELECTIONW, TRUE, folder);
  return 0;
}

void ShowFolders(const wchar_t* folder) {
  if (FAILED(OleInitialize(nullptr))) return;
  BROWSEINFOW wanted{};
  wanted.lpszTitle = L"Select a directory";
  wanted.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  wanted.lpfn = StartIn;
  wanted.lParam = reinterpret_cast<LPARAM>(folder);
  CoTaskMemFree(SHBrowseForFolderW(&wanted));
  OleUninitialize();
}

}  // namespace

int main(int count, char** arguments) {
  const std::string what = count > 1 ? arguments[1] : "";
  const std::string given = count > 2 ? arguments[2] : "C:\\windows";
  const std::wstring folder(given.begin(), given.end());
  if (what == "message") {
    krx::bench::ShowMessageBox();
  } else if (what == "task") {
    krx::bench::ShowTaskDialog();
  } else if (what == "file") {
    ShowFiles(folder.c_str());
  } else if (what == "folder") {
    ShowFolders(folder.c_str());
  } else {
    std::puts("usage: show_platform message|task|file|folder [FOLDER]");
    return 1;
  }
  return 0;
}
