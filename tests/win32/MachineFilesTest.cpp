#include "ports/win32/MachineFiles.h"

#include <gtest/gtest.h>

#include "FolderTree.h"
#include "MachineFilesSupport.h"
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
    files.ReadFolder(path);
    return 0;
  } catch (const Error& error) {
    return error.Status();
  }
}

// A drive letter that leads nowhere, as that of a reader without a medium. A letter that is not in
// use by the machine.
class EmptyDrive {
 public:
  EmptyDrive() { DefineDosDeviceW(0, L"Q:", L"C:\\there is no such folder"); }
  ~EmptyDrive() { DefineDosDeviceW(DDD_REMOVE_DEFINITION, L"Q:", L"C:\\there is no such folder"); }
};

// A share of this machine as Wine finds shares; nothing on other systems.
class LocalShare {
 public:
  explicit LocalShare(const String& folder) : host_(HostPath(u"C:\\")) {
    // Wine keeps shares next to the links that are its drives.
    host_ = host_.substr(0, host_.rfind("c:")) + "unc";
    if (HostPath(folder).empty()) return;
    made_ = RunHostShell("mkdir -p '" + host_ + "/krx-server' && ln -sfn '" + HostPath(folder) +
                         "' '" + host_ + "/krx-server/share'");
  }
  ~LocalShare() {
    if (made_) RunHostShell("rm -r '" + host_ + "/krx-server'; rmdir '" + host_ + "'");
  }
  bool Made() const { return made_; }

 private:
  std::string host_;
  bool made_ = false;
};

// Puts the current folder back at the end.
class CurrentFolder {
 public:
  explicit CurrentFolder(const String& folder) : before_(MachineFiles().CurrentDirectory()) {
    SetCurrentDirectoryW(win32::Wide(folder));
  }
  ~CurrentFolder() { SetCurrentDirectoryW(win32::Wide(before_)); }

 private:
  const String before_;
};

TEST(MachineFiles, TheDrivesAreThoseOfTheSystemInItsOrder) {
  MachineFiles files;
  DWORD letters = 0;
  String before;
  for (const ui::Drive& drive : files.Drives()) {
    ASSERT_EQ(drive.Path.size(), 2u);
    EXPECT_LT(before, drive.Path);
    letters |= 1u << (drive.Path[0] - u'A');
    before = drive.Path;
    const String root = drive.Path + u'\\';
    if (GetDriveTypeW(win32::Wide(root)) == DRIVE_FIXED) {
      EXPECT_EQ(drive.Type, ui::DriveType::Fixed);
    }
  }
  EXPECT_EQ(letters, GetLogicalDrives());
}

TEST(MachineFiles, TheSystemsDriveIsFixedAndReady) {
  MachineFiles files;
  const auto drives = files.Drives();
  EXPECT_NE(std::find(drives.begin(), drives.end(), ui::Drive{u"C:", ui::DriveType::Fixed}),
            drives.end());
  EXPECT_TRUE(files.DriveReady(u"C:"));
  EXPECT_TRUE(files.DriveReady(u"c:\\"));
  EXPECT_TRUE(files.DriveReady(u"C:\\there is no such folder"));
}

TEST(MachineFiles, APathTellsItsDriveWhateverFollows) {
  MachineFiles files;
  EXPECT_TRUE(files.DriveExists(u"C:"));
  EXPECT_TRUE(files.DriveExists(u"c:\\nowhere"));
  EXPECT_FALSE(files.DriveExists(u"X:\\"));
  EXPECT_FALSE(files.DriveExists(u"1:"));
  EXPECT_FALSE(files.DriveExists(u"Data"));
  EXPECT_FALSE(files.DriveExists(u""));
  EXPECT_FALSE(files.DriveExists(u"\\\\krx-no-server\\share"));
}

TEST(MachineFiles, ADriveWithoutAMediumIsShownButNotReady) {
  const EmptyDrive drive;
  MachineFiles files;
  ASSERT_TRUE(files.DriveExists(u"Q:"));
  const auto drives = files.Drives();
  EXPECT_TRUE(std::any_of(drives.begin(), drives.end(),
                          [](const ui::Drive& d) { return d.Path == u"Q:"; }));
  EXPECT_FALSE(files.DriveReady(u"Q:"));
  EXPECT_EQ(files.VolumeLabel(u"Q:"), u"");
  EXPECT_FALSE(files.FolderExists(u"Q:"));
  EXPECT_EQ(ReadStatus(files, u"Q:"), Status(68));
  EXPECT_EQ(ReadStatus(files, u"Q:\\Data"), Status(68));
}

TEST(MachineFiles, TheLabelIsThatOfTheVolume) {
  std::array<wchar_t, MAX_PATH + 1> label{};
  GetVolumeInformationW(L"C:\\", label.data(), static_cast<DWORD>(label.size()), nullptr, nullptr,
                        nullptr, nullptr, 0);
  MachineFiles files;
  EXPECT_EQ(files.VolumeLabel(u"C:"), win32::Narrow(label.data(), wcslen(label.data())));
  EXPECT_EQ(files.VolumeLabel(u"Y:"), u"");
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
  EXPECT_TRUE(files.FolderExists(u"C:"));
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
  EXPECT_TRUE(files.FolderExists(tree.PathOf(u"folder")));
  EXPECT_TRUE(files.FolderExists(tree.PathOf(u"FOLDER\\")));
  EXPECT_FALSE(files.FileExists(tree.PathOf(u"folder")));
  EXPECT_TRUE(files.FileExists(tree.PathOf(u"folder\\..\\file")));
  EXPECT_FALSE(files.FolderExists(tree.PathOf(u"file")));
  EXPECT_FALSE(files.FileExists(tree.PathOf(u"missing")));
  EXPECT_FALSE(files.FileExists(tree.PathOf(u"*")));
  EXPECT_FALSE(files.FileExists(tree.PathOf(u"file") + u'\0'));
  EXPECT_FALSE(files.FolderExists(u"Y:"));
}

TEST(MachineFiles, AShareIsReadLikeADrive) {
  const FolderTree tree;
  tree.AddFolder(u"folder");
  tree.AddFile(u"folder\\file");
  const LocalShare share(tree.Path());
  if (!share.Made()) GTEST_SKIP() << "no share can be made here";
  MachineFiles files;
  EXPECT_TRUE(files.DriveExists(u"\\\\krx-server\\share\\folder"));
  EXPECT_TRUE(files.DriveReady(u"\\\\krx-server\\share"));
  EXPECT_EQ(ReadAll(files, u"\\\\krx-server\\share").Folders, std::vector<String>{u"folder"});
  EXPECT_EQ(ReadAll(files, u"\\\\krx-server\\share\\folder").Files, std::vector<String>{u"file"});
  EXPECT_TRUE(files.FileExists(u"\\\\krx-server\\share\\folder\\file"));
  EXPECT_EQ(ReadStatus(files, u"\\\\krx-server\\share\\missing"), Status(76));
}

}  // namespace

}  // namespace krx::test
