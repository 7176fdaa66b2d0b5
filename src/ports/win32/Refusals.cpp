#include "ports/win32/Refusals.h"

#include "ports/win32/Paths.h"
#include "ports/win32/System.h"

namespace krx::win32 {

namespace {

constexpr DWORD kNoSuchDevice = 433;  // has no name in every set of headers

}  // namespace

Refusal RefusalOf(DWORD failure) {
  switch (failure) {
    case ERROR_SUCCESS:
      return Refusal::None;
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

bool DeviceReady(const String& path) {
  if (GetFileAttributesW(Wide(RootOf(path))) != INVALID_FILE_ATTRIBUTES) return true;
  return RefusalOf(GetLastError()) == Refusal::PermissionDenied;
}

Refusal RefusalOf(const String& path, DWORD failure) {
  const Refusal refusal = RefusalOf(failure);
  const bool missing = refusal == Refusal::PathNotFound && !DeviceReady(path);
  return missing ? Refusal::DeviceUnavailable : refusal;
}

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

}  // namespace krx::win32
