#include <gtest/gtest.h>

#include "Disk.h"
#include "Port.h"
#include "base/Error.h"

// Drives, folders and files as the dialogs see them: what is simulated for the dialogs' tests is no
// kinder than the machine.
namespace krx::test {

namespace {

// More than any folder of these tests takes on the slowest machine.
constexpr std::chrono::milliseconds kLong{300000};
constexpr std::uint32_t kDeviceUnavailable = 68;
constexpr std::uint32_t kPathNotFound = 76;

class FilesContract : public testing::Test {
 protected:
  using Names = std::vector<String>;

  static Names Sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
  }
  folders::FolderPart Read(StringView path) { return files.ReadFolder(path)->Take(kLong); }
  // Number of the runtime error with which a folder is refused; 0 for one that is read.
  std::uint32_t Refusal(StringView path) {
    try {
      files.ReadFolder(path);
      return 0;
    } catch (const Error& error) {
      return error.Status() & 0xFFFFu;
    }
  }
  static String WithSlashes(String path) { return ReplaceAll(std::move(path), u"\\", u"/"); }

  const std::unique_ptr<Port> port = MakePort();
  folders::FileSystem& files = port->Platform().Files();
  const std::unique_ptr<Disk> disk = port->MakeDisk();
};

TEST_F(FilesContract, APathLeadsToItsFolderHoweverItIsWritten) {
  disk->AddFolder(u"Data");
  disk->AddFolder(u"Data\\Logs");
  disk->AddFile(u"Data\\today.log");
  const String data = disk->PathOf(u"Data");
  for (const String& path : {data, data + u'\\', data + u"\\\\", WithSlashes(data), data + u"\\.",
                             data + u"\\Logs\\..", disk->PathOf(u"DATA")}) {
    EXPECT_TRUE(files.FolderExists(path)) << ToUtf8(path);
    EXPECT_EQ(Read(path).Folders, Names{u"Logs"}) << ToUtf8(path);
    EXPECT_TRUE(files.FileExists(path + u"\\TODAY.log")) << ToUtf8(path);
  }
}

TEST_F(FilesContract, ARelativePathBeginsAtTheCurrentFolder) {
  disk->AddFolder(u"Data");
  disk->AddFolder(u"Data\\Logs");
  disk->SetCurrent(disk->PathOf(u"Data"));
  EXPECT_EQ(files.CurrentDirectory(), disk->PathOf(u"Data"));
  for (const StringView path : {u".", u"..\\Data", u"../Data"}) {
    EXPECT_TRUE(files.FolderExists(path)) << ToUtf8(path);
    EXPECT_EQ(Read(path).Folders, Names{u"Logs"}) << ToUtf8(path);
  }
  EXPECT_TRUE(files.FolderExists(u"Logs"));
  EXPECT_FALSE(files.FolderExists(u"Data"));
}

TEST_F(FilesContract, NamesAreKeptAsTheyWereMade) {
  const Names folders{u"MiXeD", u"\u00c4rger", String(200, u'n'), u"two words", u"dot.ted"};
  for (const String& name : folders)
    disk->AddFolder(name);
  disk->AddFile(u"ReadMe.TXT");
  const folders::FolderPart all = Read(disk->Path());
  EXPECT_EQ(Sorted(all.Folders), Sorted(folders));
  EXPECT_EQ(all.Files, Names{u"ReadMe.TXT"});
  EXPECT_TRUE(files.FolderExists(disk->PathOf(u"\u00e4RGER")));
}

TEST_F(FilesContract, FoldersLieDeeperThanOldSystemsReach) {
  String name;
  for (int level = 0; level < 8; ++level) {
    name += (level == 0 ? u"" : u"\\") + String(60, u'd');
    disk->AddFolder(name);
  }
  disk->AddFile(name + u"\\file");
  EXPECT_TRUE(files.FolderExists(disk->PathOf(name)));
  EXPECT_EQ(Read(disk->PathOf(name)).Files, Names{u"file"});
}

TEST_F(FilesContract, FoldersAndFilesAreToldApart) {
  disk->AddFolder(u"folder");
  disk->AddFile(u"file");
  EXPECT_FALSE(files.FileExists(disk->PathOf(u"folder")));
  EXPECT_FALSE(files.FolderExists(disk->PathOf(u"file")));
  for (const String& missing : {disk->PathOf(u"missing"), disk->PathOf(u"*"), String(),
                                disk->PathOf(u"file") + u'\0', disk->MissingDrive()}) {
    EXPECT_FALSE(files.FileExists(missing)) << ToUtf8(missing);
    EXPECT_FALSE(files.FolderExists(missing)) << ToUtf8(missing);
  }
}

TEST_F(FilesContract, AFolderThatCannotBeReadTellsWhy) {
  disk->AddFile(u"file");
  for (const String& path :
       {disk->PathOf(u"missing"), disk->PathOf(u"missing\\below"), disk->PathOf(u"file"),
        disk->PathOf(u"file\\below"), disk->PathOf(u"*"), String(u"\\\\server"), String()})
    EXPECT_EQ(Refusal(path), kPathNotFound) << ToUtf8(path);
  for (const String& path :
       {disk->MissingDrive(), disk->MissingDrive() + u"\\Data", disk->DriveWithoutMedium(),
        disk->DriveWithoutMedium() + u"\\Data", String(u"\\\\krx-no-server\\share")})
    EXPECT_EQ(Refusal(path), kDeviceUnavailable) << ToUtf8(path);
}

TEST_F(FilesContract, AFolderThatVanishesIsCompleteWithWhatItHadAndThenGone) {
  disk->AddFolder(u"Data");
  disk->AddFolder(u"Data\\Logs");
  const auto reader = files.ReadFolder(disk->PathOf(u"Data"));
  disk->Remove(u"Data");
  EXPECT_TRUE(reader->Take(kLong).Complete);
  EXPECT_FALSE(files.FolderExists(disk->PathOf(u"Data")));
  EXPECT_EQ(Refusal(disk->PathOf(u"Data")), kPathNotFound);
}

TEST_F(FilesContract, APathTellsItsDriveWhateverFollows) {
  const String drive = disk->Path().substr(0, 2);
  EXPECT_TRUE(files.DriveExists(drive));
  EXPECT_TRUE(files.DriveExists(drive + u"\\nowhere"));
  EXPECT_TRUE(files.DriveReady(drive));
  for (const String& none :
       {disk->MissingDrive(), String(), String(u"Data"), String(u"\\\\krx-no-server\\share")})
    EXPECT_FALSE(files.DriveExists(none)) << ToUtf8(none);
}

TEST_F(FilesContract, ADriveWithoutAMediumIsThereButNotReady) {
  const String drive = disk->DriveWithoutMedium();
  EXPECT_TRUE(files.DriveExists(drive));
  EXPECT_FALSE(files.DriveReady(drive));
  EXPECT_EQ(files.VolumeLabel(drive), u"");
  EXPECT_FALSE(files.FolderExists(drive));
  EXPECT_FALSE(files.FileExists(drive + u"\\file"));
}

TEST_F(FilesContract, AShareIsReadLikeADrive) {
  disk->AddFolder(u"folder");
  disk->AddFile(u"folder\\file");
  const String share = disk->Share();
  if (share.empty()) GTEST_SKIP() << "no share can be made here";
  for (const String& root : {share, share + u'\\', WithSlashes(share)}) {
    EXPECT_TRUE(files.FolderExists(root)) << ToUtf8(root);
    EXPECT_EQ(Read(root).Folders, Names{u"folder"}) << ToUtf8(root);
  }
  EXPECT_TRUE(files.DriveExists(share + u"\\folder"));
  EXPECT_TRUE(files.DriveReady(share));
  EXPECT_TRUE(files.FileExists(share + u"\\folder\\file"));
  EXPECT_EQ(Refusal(share + u"\\missing"), kPathNotFound);
  const std::vector<folders::Drive> drives = files.Drives();
  EXPECT_TRUE(std::all_of(drives.begin(), drives.end(),
                          [](const folders::Drive& drive) { return drive.Path.size() == 2; }));
}

TEST_F(FilesContract, FoldersWithSubfoldersAreFoundInTheOrderAskedFor) {
  for (const StringView name : {u"full", u"full\\below", u"empty", u"files"})
    disk->AddFolder(name);
  disk->AddFile(u"files\\file");
  const auto probe = files.ProbeSubfolders(disk->Path(), {u"empty", u"full", u"missing", u"files"});
  EXPECT_EQ(probe->Take(kLong), (std::vector<bool>{false, true, false, false}));
}

}  // namespace

}  // namespace krx::test
