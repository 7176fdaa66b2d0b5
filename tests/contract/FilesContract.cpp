#include <gtest/gtest.h>

#include "Asked.h"
#include "Disk.h"
#include "Port.h"
#include "base/Error.h"

// Drives, folders and files as the dialogs see them: what is simulated for the dialogs' tests is no
// kinder than the machine.
namespace krx::test {

namespace {

constexpr std::uint32_t kDeviceUnavailable = 68;
constexpr std::uint32_t kPathNotFound = 76;

class FilesContract : public testing::Test {
 protected:
  using Names = std::vector<String>;

  static Names Sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
  }
  folders::FolderPart Read(StringView path) { return ReadAll(files, path); }
  bool HasFile(StringView folder, StringView name) {
    const Names all = Read(folder).Files;
    return std::find(all.begin(), all.end(), name) != all.end();
  }
  // Number of the runtime error with which a folder is refused; 0 for one that is read.
  std::uint32_t Refusal(StringView path) {
    try {
      Read(path);
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
    EXPECT_TRUE(FolderExists(files, path)) << ToUtf8(path);
    EXPECT_EQ(Read(path).Folders, Names{u"Logs"}) << ToUtf8(path);
    EXPECT_TRUE(HasFile(path, u"today.log")) << ToUtf8(path);
  }
}

TEST_F(FilesContract, ARelativePathBeginsAtTheCurrentFolder) {
  disk->AddFolder(u"Data");
  disk->AddFolder(u"Data\\Logs");
  disk->SetCurrent(disk->PathOf(u"Data"));
  EXPECT_EQ(files.CurrentDirectory(), disk->PathOf(u"Data"));
  for (const StringView path : {u".", u"..\\Data", u"../Data"}) {
    EXPECT_TRUE(FolderExists(files, path)) << ToUtf8(path);
    EXPECT_EQ(Read(path).Folders, Names{u"Logs"}) << ToUtf8(path);
  }
  EXPECT_TRUE(FolderExists(files, u"Logs"));
  EXPECT_FALSE(FolderExists(files, u"Data"));
}

TEST_F(FilesContract, NamesAreKeptAsTheyWereMade) {
  const Names folders{u"MiXeD", u"\u00c4rger", String(200, u'n'), u"two words", u"dot.ted"};
  for (const String& name : folders)
    disk->AddFolder(name);
  disk->AddFile(u"ReadMe.TXT");
  const folders::FolderPart all = Read(disk->Path());
  EXPECT_EQ(Sorted(all.Folders), Sorted(folders));
  EXPECT_EQ(all.Files, Names{u"ReadMe.TXT"});
  EXPECT_TRUE(FolderExists(files, disk->PathOf(u"\u00e4RGER")));
}

TEST_F(FilesContract, FoldersLieDeeperThanOldSystemsReach) {
  String name;
  for (int level = 0; level < 8; ++level) {
    name += (level == 0 ? u"" : u"\\") + String(60, u'd');
    disk->AddFolder(name);
  }
  disk->AddFile(name + u"\\file");
  EXPECT_TRUE(FolderExists(files, disk->PathOf(name)));
  EXPECT_EQ(Read(disk->PathOf(name)).Files, Names{u"file"});
}

TEST_F(FilesContract, FoldersAndFilesAreToldApart) {
  disk->AddFolder(u"folder");
  disk->AddFile(u"file");
  EXPECT_EQ(Read(disk->Path()).Folders, Names{u"folder"});
  EXPECT_EQ(Read(disk->Path()).Files, Names{u"file"});
  EXPECT_FALSE(FolderExists(files, disk->PathOf(u"file")));
  for (const String& missing : {disk->PathOf(u"missing"), disk->PathOf(u"*"), String(),
                                disk->PathOf(u"file") + u'\0', disk->MissingDrive()})
    EXPECT_FALSE(FolderExists(files, missing)) << ToUtf8(missing);
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
  const auto reader = files.ReadFolder({disk->PathOf(u"Data")});
  AwaitOpening(*reader);
  disk->Remove(u"Data");
  EXPECT_TRUE(reader->Take(kLong).Complete);
  EXPECT_FALSE(FolderExists(files, disk->PathOf(u"Data")));
  EXPECT_EQ(Refusal(disk->PathOf(u"Data")), kPathNotFound);
}

TEST_F(FilesContract, TheFirstFolderThatCanBeOpenedIsRead) {
  disk->AddFolder(u"Data");
  disk->AddFolder(u"Data\\Logs");
  const String data = disk->PathOf(u"Data");
  const auto read = [&](std::vector<String> paths) {
    return files.ReadFolder(std::move(paths))->Take(kLong);
  };
  EXPECT_EQ(read({data, disk->Path()}).Opened, 0u);
  const folders::FolderPart second = read({data + u"\\missing", data, disk->Path()});
  EXPECT_EQ(second.Opened, 1u);
  EXPECT_EQ(second.Folders, Names{u"Logs"});
  EXPECT_EQ(read({String(), disk->MissingDrive(), disk->DriveWithoutMedium(), data}).Opened, 3u);
  EXPECT_THROW(read({}), Error);
  try {
    read({disk->DriveWithoutMedium(), data + u"\\missing"});
    ADD_FAILURE() << "nothing can be opened";
  } catch (const Error& error) {
    EXPECT_EQ(error.Status() & 0xFFFFu, kDeviceUnavailable) << "the first one's refusal counts";
  }
}

TEST_F(FilesContract, TheDrivesOfTheMachineAreNamedByTheirLetters) {
  const String drive = disk->Path().substr(0, 2);
  const Names drives = files.Drives();
  EXPECT_NE(std::find(drives.begin(), drives.end(), drive), drives.end());
  EXPECT_EQ(std::find(drives.begin(), drives.end(), disk->MissingDrive()), drives.end());
  EXPECT_TRUE(DriveOf(files, drive).Ready);
  for (const String& none : {disk->MissingDrive(), String(), String(u"Data")})
    EXPECT_FALSE(DriveOf(files, none).Ready) << ToUtf8(none);
}

TEST_F(FilesContract, ADriveWithoutAMediumIsThereButNotReady) {
  const String drive = disk->DriveWithoutMedium();
  const Names drives = files.Drives();
  EXPECT_NE(std::find(drives.begin(), drives.end(), drive), drives.end());
  EXPECT_FALSE(DriveOf(files, drive).Ready);
  EXPECT_EQ(DriveOf(files, drive).Label, u"");
  EXPECT_FALSE(FolderExists(files, drive));
}

TEST_F(FilesContract, AShareIsReadLikeADrive) {
  disk->AddFolder(u"folder");
  disk->AddFile(u"folder\\file");
  const String share = disk->Share();
  if (share.empty()) GTEST_SKIP() << "no share can be made here";
  for (const String& root : {share, share + u'\\', WithSlashes(share)}) {
    EXPECT_TRUE(FolderExists(files, root)) << ToUtf8(root);
    EXPECT_EQ(Read(root).Folders, Names{u"folder"}) << ToUtf8(root);
  }
  EXPECT_TRUE(HasFile(share + u"\\folder", u"file"));
  EXPECT_EQ(Refusal(share + u"\\missing"), kPathNotFound);
  const Names drives = files.Drives();
  EXPECT_TRUE(std::all_of(drives.begin(), drives.end(),
                          [](const String& drive) { return drive.size() == 2; }));
}

TEST_F(FilesContract, FoldersWithSubfoldersAreFound) {
  for (const StringView name : {u"full", u"full\\below", u"empty", u"files"})
    disk->AddFolder(name);
  disk->AddFile(u"files\\file");
  EXPECT_EQ(HaveFolders(files, disk->Path(), {u"empty", u"full", u"missing", u"files"}),
            (std::vector<bool>{false, true, false, false}));
}

}  // namespace

}  // namespace krx::test
