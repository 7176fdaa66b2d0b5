#include "ports/win32/MachineFiles.h"

#include <gtest/gtest.h>

#include "FolderTree.h"
#include "MachineFilesSupport.h"
#include "RealDisk.h"
#include "base/Error.h"
#include "ports/win32/System.h"

namespace krx::test {

namespace {

using win32::MachineFiles;

// The status of runtime error n.
constexpr std::uint32_t Status(std::uint32_t number) {
  return 0x800A0000u + number;
}

std::uint32_t ReadStatus(MachineFiles& files, StringView path) {
  try {
    ReadAll(files, path);
    return 0;
  } catch (const Error& error) {
    return error.Status();
  }
}

TEST(MachineFiles, TheDrivesAreThoseOfTheSystemInItsOrder) {
  MachineFiles files;
  DWORD letters = 0;
  String before;
  for (const String& drive : files.Drives()) {
    ASSERT_EQ(drive.size(), 2u);
    EXPECT_LT(before, drive);
    letters |= 1u << (drive[0] - u'A');
    before = drive;
    const String root = drive + u'\\';
    if (GetDriveTypeW(win32::Wide(root)) == DRIVE_FIXED) {
      EXPECT_EQ(DriveOf(files, drive).Type, folders::DriveType::Fixed);
    }
  }
  EXPECT_EQ(letters, GetLogicalDrives());
}

TEST(MachineFiles, TheSystemsDriveIsFixedReadyAndHasTheLabelOfItsVolume) {
  std::array<wchar_t, MAX_PATH + 1> label{};
  GetVolumeInformationW(L"C:\\", label.data(), static_cast<DWORD>(label.size()), nullptr, nullptr,
                        nullptr, nullptr, 0);
  MachineFiles files;
  for (const StringView path : {u"C:", u"c:\\", u"C:\\there is no such folder"}) {
    const folders::Drive drive = DriveOf(files, path);
    EXPECT_EQ(drive.Type, folders::DriveType::Fixed);
    EXPECT_TRUE(drive.Ready);
    EXPECT_EQ(drive.Label, win32::Narrow(label.data(), wcslen(label.data())));
  }
}

TEST(MachineFiles, WhatIsNoDriveIsNotReady) {
  MachineFiles files;
  for (const StringView none : {u"X:\\", u"Y:", u"1:", u"Data", u"", u"\\\\krx-no-server\\share"})
    EXPECT_FALSE(DriveOf(files, none).Ready) << ToUtf8(none);
}

TEST(MachineFiles, ADriveWithoutAMediumIsShown) {
  const EmptyDrive drive;
  MachineFiles files;
  const auto drives = files.Drives();
  EXPECT_NE(std::find(drives.begin(), drives.end(), EmptyDrive::kDrive), drives.end());
}

TEST(MachineFiles, AFolderThatCannotBeReadTellsWhy) {
  const FolderTree tree;
  tree.AddFolder(u"folder");
  tree.AddFile(u"file");
  MachineFiles files;
  EXPECT_EQ(ReadStatus(files, tree.PathOf(u"folder")), 0u);
  const String missing[] = {tree.PathOf(u"missing"),
                            tree.PathOf(u"missing\\below"),
                            tree.PathOf(u"file"),
                            tree.PathOf(u"file\\below"),
                            tree.PathOf(u"*"),
                            tree.PathOf(u"folder") + u'\0',
                            tree.PathOf(String(40000, u'x')),
                            u"\\\\server",
                            u""};
  for (const String& path : missing)
    EXPECT_EQ(ReadStatus(files, path), Status(76)) << ToUtf8(path).substr(0, 100);
  EXPECT_EQ(ReadStatus(files, u"Y:"), Status(68));
  EXPECT_EQ(ReadStatus(files, u"Y:\\Data"), Status(68));
  EXPECT_EQ(ReadStatus(files, u"\\\\krx-no-server\\share"), Status(68));
}

TEST(MachineFiles, AFolderThatOthersKeepToThemselvesIsDenied) {
  const FolderTree tree;
  const HANDLE alone = CreateFileW(win32::Wide(tree.Path()), FILE_LIST_DIRECTORY | SYNCHRONIZE, 0,
                                   nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  ASSERT_NE(alone, INVALID_HANDLE_VALUE);
  MachineFiles files;
  EXPECT_EQ(ReadStatus(files, tree.Path()), Status(70));
  CloseHandle(alone);
  EXPECT_EQ(ReadStatus(files, tree.Path()), 0u);
}

TEST(MachineFiles, ABareDriveIsItsRoot) {
  const FolderTree tree;
  const CurrentFolder current(tree.Path());
  MachineFiles files;
  EXPECT_EQ(files.CurrentDirectory(), tree.Path());
  EXPECT_TRUE(FolderExists(files, u"C:"));
  EXPECT_EQ(ReadAll(files, u"C:").Folders, ReadAll(files, u"C:\\").Folders);
  EXPECT_NE(ReadAll(files, u"C:").Folders, std::vector<String>());
}

TEST(MachineFiles, TheCurrentFolderEndsInASeparatorAtARootOnly) {
  MachineFiles files;
  {
    const CurrentFolder current(u"C:\\windows\\");
    EXPECT_EQ(files.CurrentDirectory(), u"C:\\windows");
  }
  const CurrentFolder current(u"C:\\");
  EXPECT_EQ(files.CurrentDirectory(), u"C:\\");
}

TEST(MachineFiles, FoldersAndFilesAreToldApart) {
  const FolderTree tree;
  tree.AddFolder(u"folder");
  tree.AddFile(u"file");
  MachineFiles files;
  EXPECT_TRUE(FolderExists(files, tree.PathOf(u"folder")));
  EXPECT_TRUE(FolderExists(files, tree.PathOf(u"FOLDER\\")));
  EXPECT_FALSE(FolderExists(files, tree.PathOf(u"file")));
  EXPECT_FALSE(FolderExists(files, u"Y:"));
}

}  // namespace

}  // namespace krx::test
