#include "RealDisk.h"

#include <windows.h>

#include "ports/win32/MachineFiles.h"
#include "ports/win32/System.h"

namespace krx::test {

namespace {

constexpr const wchar_t* kNowhere = L"C:\\there is no such folder";

}  // namespace

EmptyDrive::EmptyDrive() {
  DefineDosDeviceW(0, win32::Wide(String(kDrive)), kNowhere);
}

EmptyDrive::~EmptyDrive() {
  DefineDosDeviceW(DDD_REMOVE_DEFINITION, win32::Wide(String(kDrive)), kNowhere);
}

LocalShare::LocalShare(const String& folder) {
  // Wine keeps shares next to the links that are its drives.
  const std::string drive = HostPath(u"C:\\");
  host_ = drive.substr(0, drive.rfind("c:")) + "unc";
  if (HostPath(folder).empty()) return;
  made_ = RunHostShell("mkdir -p '" + host_ + "/krx-server' && ln -sfn '" + HostPath(folder) +
                       "' '" + host_ + "/krx-server/share'");
}

LocalShare::~LocalShare() {
  if (made_) RunHostShell("rm -r '" + host_ + "/krx-server'; rmdir '" + host_ + "'");
}

CurrentFolder::CurrentFolder(const String& folder)
    : before_(win32::MachineFiles().CurrentDirectory()) {
  SetCurrentDirectoryW(win32::Wide(folder));
}

CurrentFolder::~CurrentFolder() {
  SetCurrentDirectoryW(win32::Wide(before_));
}

String RealDisk::Share() {
  if (!share_) share_.emplace(tree_.Path());
  return share_->Made() ? String(LocalShare::kPath) : String();
}

String RealDisk::DriveWithoutMedium() {
  if (!empty_) empty_.emplace();
  return String(EmptyDrive::kDrive);
}

}  // namespace krx::test
