#include "ports/win32/MachineFiles.h"

#include <array>

#include "folders/FolderPath.h"
#include "ports/win32/FolderReading.h"
#include "ports/win32/Paths.h"
#include "ports/win32/System.h"

namespace krx::win32 {

namespace {

constexpr int kLetters = 26;
constexpr DWORD kNoSuchDevice = 433;  // has no name in every set of headers

// Why a path leads nowhere, as the runtime numbers it.
enum class Refusal { PathNotFound = 76, DeviceUnavailable = 68, PermissionDenied = 70 };

Error Refused(Refusal refusal) {
  switch (refusal) {
    case Refusal::DeviceUnavailable:
      return RuntimeError(68, u"Device unavailable");
    case Refusal::PermissionDenied:
      return RuntimeError(70, u"Permission denied");
    default:
      return RuntimeError(76, u"Path not found");
  }
}

// Position of a drive's letter in the alphabet; kLetters for no letter.
int LetterOf(StringView path) {
  const char16_t letter = AsciiUpper(path[0]);
  return letter >= u'A' && letter <= u'Z' ? letter - u'A' : kLetters;
}

bool IsDrive(DWORD drives, int letter) {
  return letter < kLetters && (drives >> letter & 1) != 0;
}

folders::DriveType TypeOf(const String& drive) {
  const UINT type = GetDriveTypeW(Wide(drive + u'\\'));
  // The system counts a drive without a root between the unknown and the removable ones.
  return type <= DRIVE_NO_ROOT_DIR ? folders::DriveType::Unknown
                                   : static_cast<folders::DriveType>(type - 1);
}

Refusal RefusalOf(DWORD failure) {
  switch (failure) {
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_CANT_ACCESS_FILE:
    case ERROR_PRIVILEGE_NOT_HELD:
    case ERROR_LOGON_FAILURE:
    case ERROR_ACCOUNT_RESTRICTION:
      return Refusal::PermissionDenied;
    case ERROR_NOT_READY:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_UNIT:
    case ERROR_CRC:
    case ERROR_SEEK:
    case ERROR_NOT_DOS_DISK:
    case ERROR_SECTOR_NOT_FOUND:
    case ERROR_GEN_FAILURE:
    case ERROR_WRONG_DISK:
    case ERROR_REM_NOT_LIST:
    case ERROR_BAD_NETPATH:
    case ERROR_NETWORK_BUSY:
    case ERROR_DEV_NOT_EXIST:
    case ERROR_UNEXP_NET_ERR:
    case ERROR_NETNAME_DELETED:
    case ERROR_BAD_DEV_TYPE:
    case ERROR_BAD_NET_NAME:
    case ERROR_SEM_TIMEOUT:
    case ERROR_UNRECOGNIZED_VOLUME:
    case ERROR_FILE_INVALID:
    case kNoSuchDevice:
    case ERROR_NO_MEDIA_IN_DRIVE:
    case ERROR_IO_DEVICE:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_NO_NET_OR_BAD_PATH:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE:
    case ERROR_CONNECTION_UNAVAIL:
    case ERROR_DEVICE_REMOVED:
      return Refusal::DeviceUnavailable;
    default:
      return Refusal::PathNotFound;
  }
}

// Attributes of a path, and the system's code when it has none.
struct Attributes {
  DWORD Bits = INVALID_FILE_ATTRIBUTES;
  DWORD ErrorCode = ERROR_NOT_ENOUGH_MEMORY;
};

std::function<Attributes()> AttributesOf(const String& path) {
  return [path] {
    Attributes found;
    found.Bits = GetFileAttributesW(Wide(path));
    found.ErrorCode = found.Bits == INVALID_FILE_ATTRIBUTES ? GetLastError() : ERROR_SUCCESS;
    return found;
  };
}

}  // namespace

String MachineFiles::Resolve(StringView path) {
  return SystemPath(path, CurrentDirectory());
}

std::vector<folders::Drive> MachineFiles::Drives() {
  std::vector<folders::Drive> drives;
  const DWORD letters = GetLogicalDrives();
  for (int letter = 0; letter < kLetters; ++letter) {
    if (!IsDrive(letters, letter)) continue;
    const String path{static_cast<char16_t>(u'A' + letter), u':'};
    drives.push_back({path, TypeOf(path)});
  }
  return drives;
}

bool MachineFiles::DriveExists(StringView path) {
  if (folders::HasDrive(path)) return IsDrive(GetLogicalDrives(), LetterOf(path));
  if (!path.starts_with(folders::kNetwork)) return false;
  const String share = Resolve(path);
  return !share.empty() && DriveReady(RootOf(share));
}

bool MachineFiles::DriveReady(StringView drive) {
  const String path = Resolve(drive);
  if (path.empty()) return false;
  const String root = RootOf(path);
  const auto found = devices_.Ask(root, AttributesOf(root));
  return found && (found->ErrorCode == ERROR_SUCCESS ||
                   RefusalOf(found->ErrorCode) == Refusal::PermissionDenied);
}

String MachineFiles::VolumeLabel(StringView drive) {
  const String path = Resolve(drive);
  if (path.empty()) return {};
  const String root = RootOf(path);
  const std::function<String()> question = [root] {
    std::array<wchar_t, MAX_PATH + 1> label{};
    const bool known =
        GetVolumeInformationW(Wide(root), label.data(), static_cast<DWORD>(label.size()), nullptr,
                              nullptr, nullptr, nullptr, 0);
    return known ? String(Narrow(label.data(), wcslen(label.data()))) : String();
  };
  return devices_.Ask(root, question).value_or(String());
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

MachineFiles::Kind MachineFiles::KindOf(StringView path) {
  const String resolved = Resolve(path);
  if (resolved.empty()) return Kind::Nothing;
  const auto found = devices_.Ask(resolved, AttributesOf(resolved));
  if (!found) return Kind::Nothing;
  // Some files of the system exist but answer no question.
  if (found->ErrorCode == ERROR_SHARING_VIOLATION) return Kind::File;
  if (found->ErrorCode != ERROR_SUCCESS) return Kind::Nothing;
  return (found->Bits & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::Folder : Kind::File;
}

bool MachineFiles::FolderExists(StringView path) {
  return KindOf(path) == Kind::Folder;
}

bool MachineFiles::FileExists(StringView path) {
  return KindOf(path) == Kind::File;
}

std::unique_ptr<folders::FolderReader> MachineFiles::ReadFolder(StringView path) {
  const String resolved = Resolve(path);
  if (resolved.empty()) throw Refused(Refusal::PathNotFound);
  const auto reading = std::make_shared<FolderReading>(resolved);
  if (!devices_.Ask(resolved, reading)) throw Refused(Refusal::DeviceUnavailable);
  if (reading->ErrorCode() == ERROR_SUCCESS) return ReaderOf(reading);
  const Refusal refusal = RefusalOf(reading->ErrorCode());
  // The system says "not found" of a drive that is missing too.
  if (refusal == Refusal::PathNotFound && !DriveReady(resolved))
    throw Refused(Refusal::DeviceUnavailable);
  throw Refused(refusal);
}

std::unique_ptr<folders::SubfolderProbe> MachineFiles::ProbeSubfolders(
    StringView path, std::vector<String> folders) {
  const auto probing = std::make_shared<SubfolderProbing>(Resolve(path), std::move(folders));
  Background::Start(probing);
  return ProbeOf(probing);
}

}  // namespace krx::win32
