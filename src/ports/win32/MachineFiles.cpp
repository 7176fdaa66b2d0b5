#include "ports/win32/MachineFiles.h"

#include <array>

#include "folders/FolderPath.h"
#include "ports/win32/Asking.h"
#include "ports/win32/FolderReading.h"
#include "ports/win32/Refusals.h"
#include "ports/win32/SubfolderProbing.h"
#include "ports/win32/System.h"

namespace krx::win32 {

namespace {

constexpr int kLetters = 26;

folders::DriveType TypeOf(const String& root) {
  const UINT type = GetDriveTypeW(Wide(root));
  // The system counts a drive without a root between the unknown and the removable ones.
  return type <= DRIVE_NO_ROOT_DIR ? folders::DriveType::Unknown
                                   : static_cast<folders::DriveType>(type - 1);
}

String LabelOf(const String& root) {
  std::array<wchar_t, MAX_PATH + 1> label{};
  const bool known =
      GetVolumeInformationW(Wide(root), label.data(), static_cast<DWORD>(label.size()), nullptr,
                            nullptr, nullptr, nullptr, 0);
  return known ? String(Narrow(label.data(), wcslen(label.data()))) : String();
}

folders::Drive LookAt(const String& drive, const String& system_path) {
  folders::Drive known;
  known.Type = TypeOf(drive + u'\\');
  if (known.Type == folders::DriveType::Network) return known;
  known.Ready = DeviceReady(system_path);
  if (known.Ready) known.Label = LabelOf(RootOf(system_path));
  return known;
}

bool IsFolder(const String& system_path) {
  const DWORD bits = GetFileAttributesW(Wide(system_path));
  return bits != INVALID_FILE_ATTRIBUTES && (bits & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

}  // namespace

std::vector<String> MachineFiles::Drives() {
  std::vector<String> drives;
  const DWORD letters = GetLogicalDrives();
  for (int letter = 0; letter < kLetters; ++letter) {
    if ((letters >> letter & 1) != 0)
      drives.push_back({static_cast<char16_t>(u'A' + letter), u':'});
  }
  return drives;
}

String MachineFiles::CurrentDirectory() {
  std::vector<wchar_t> buffer(MAX_PATH);
  DWORD length = 0;
  // Another thread may change the directory between two calls.
  while ((length = GetCurrentDirectoryW(static_cast<DWORD>(buffer.size()), buffer.data())) >=
         buffer.size())
    buffer.resize(length + 1);
  String path(Narrow(buffer.data(), length));
  const bool root = path.size() == 3 && folders::HasDrive(path);
  if (!root && path.ends_with(u'\\')) path.pop_back();
  return path;
}

std::unique_ptr<folders::Question<folders::Drive>> MachineFiles::AskDrive(StringView drive) {
  const String letter(drive.substr(0, 2));
  const String path = folders::HasDrive(letter) ? Resolve(letter) : String();
  return std::make_unique<Asking<folders::Drive>>(devices_, path,
                                                  [letter, path] { return LookAt(letter, path); });
}

std::unique_ptr<folders::Question<bool>> MachineFiles::AskFolder(StringView path) {
  const String resolved = Resolve(path);
  return std::make_unique<Asking<bool>>(devices_, resolved,
                                        [resolved] { return IsFolder(resolved); });
}

std::unique_ptr<folders::FolderReader> MachineFiles::ReadFolder(std::vector<String> paths) {
  for (String& path : paths)
    path = Resolve(path);
  return std::make_unique<FolderTaker>(devices_, std::move(paths));
}

std::unique_ptr<folders::SubfolderProbe> MachineFiles::ProbeSubfolders(
    StringView path, std::vector<String> folders) {
  return std::make_unique<ProbeTaker>(Resolve(path), std::move(folders));
}

}  // namespace krx::win32
