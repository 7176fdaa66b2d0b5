#include "folders/FolderPath.h"

#include <gtest/gtest.h>

#include "ports/headless/SimulatedFiles.h"
#include "support/Errors.h"

namespace krx::test {
namespace {

using folders::FullPath;
using folders::LastName;
using folders::Levels;
using folders::PathIn;

struct PathCase {
  StringView Given;
  StringView Full;
};

TEST(FolderPathTest, EveryPathHasOneNormalForm) {
  headless::SimulatedFiles files;
  files.CurrentFolder = u"C:\\Plant\\One";
  const PathCase cases[] = {
      {u"C:\\Data", u"C:\\Data"},
      {u"C:\\Data\\", u"C:\\Data"},
      {u"C:\\\\Data\\\\Logs", u"C:\\Data\\Logs"},
      {u"c:\\data", u"c:\\data"},
      {u"C:/Data/Logs", u"C:\\Data\\Logs"},
      {u"C:\\", u"C:\\"},
      {u"c:", u"C:\\"},
      {u"D:Data", u"D:\\Data"},
      {u"\\", u"C:\\"},
      {u"\\Data", u"C:\\Data"},
      {u"Data", u"C:\\Plant\\One\\Data"},
      {u".", u"C:\\Plant\\One"},
      {u"..\\Two", u"C:\\Plant\\Two"},
      {u"..\\..\\..\\..", u"C:\\"},
      {u"C:\\Data\\.\\Logs\\..", u"C:\\Data"},
      {u"C:\\..\\Data", u"C:\\Data"},
      {u"\\\\server\\share", u"\\\\server\\share"},
      {u"\\\\server\\share\\", u"\\\\server\\share"},
      {u"\\\\server\\share\\a\\..\\..", u"\\\\server\\share"},
      {u"C:\\trail. \\...", u"C:\\trail. \\..."},
  };
  for (const PathCase& c : cases)
    EXPECT_EQ(ToUtf8(FullPath(c.Given, files)), ToUtf8(c.Full)) << ToUtf8(c.Given);
}

TEST(FolderPathTest, ARelativePathOfTheCurrentDriveBeginsAtTheCurrentDirectory) {
  headless::SimulatedFiles files;
  files.CurrentFolder = u"C:\\Plant\\One";
  EXPECT_EQ(FullPath(u"C:Data", files), u"C:\\Plant\\One\\Data");
  EXPECT_EQ(FullPath(u"c:..\\Two", files), u"c:\\Plant\\Two");
  EXPECT_EQ(FullPath(u"C:\\Data", files), u"C:\\Data");
}

TEST(FolderPathTest, AWholePathStaysAsItIsWritten) {
  headless::SimulatedFiles files;
  for (const StringView path : {u"", u"C:", u"d:", u"c:\\data\\", u"C:\\\\Data",
                                u"\\\\server\\share", u"\\\\server\\share\\a\\", u"\\\\server"})
    EXPECT_EQ(ToUtf8(folders::WholePath(path, files)), ToUtf8(path));
}

TEST(FolderPathTest, WhateverElseIsPassedIsMadeAWholePath) {
  headless::SimulatedFiles files;
  files.CurrentFolder = u"C:\\Plant\\One";
  const PathCase cases[] = {
      {u"C:/bar/Data", u"C:\\bar\\Data"},
      {u".", u"C:\\Plant\\One"},
      {u"..", u"C:\\Plant"},
      {u"Data", u"C:\\Plant\\One\\Data"},
      {u"C:Data", u"C:\\Plant\\One\\Data"},
      {u"D:Data", u"D:\\Data"},
      {u"\\Data", u"C:\\Data"},
      {u"C:\\Data\\..\\Logs", u"C:\\Logs"},
      {u"//server/share/a", u"\\\\server\\share\\a"},
  };
  for (const PathCase& c : cases)
    EXPECT_EQ(ToUtf8(folders::WholePath(c.Given, files)), ToUtf8(c.Full)) << ToUtf8(c.Given);
}

TEST(FolderPathTest, ARootOfTheCurrentShareIsTheShare) {
  headless::SimulatedFiles files;
  files.CurrentFolder = u"\\\\server\\share\\Plant";
  EXPECT_EQ(FullPath(u"\\", files), u"\\\\server\\share");
  EXPECT_EQ(FullPath(u"One", files), u"\\\\server\\share\\Plant\\One");
}

TEST(FolderPathTest, WhatCannotNameAFolderIsPathNotFound) {
  headless::SimulatedFiles files;
  for (const StringView path : {u"", u"\\\\", u"\\\\server", u"\\\\server\\", u"//server"})
    EXPECT_EQ(StatusOf([&] { FullPath(path, files); }), kPathNotFound) << ToUtf8(path);
  files.CurrentFolder.clear();
  EXPECT_EQ(StatusOf([&] { FullPath(u"Data", files); }), kPathNotFound);
}

TEST(FolderPathTest, OnlyPathsWithoutDriveAskForTheCurrentDirectory) {
  headless::SimulatedFiles files;
  files.OnCall = [](const std::string& call) { FAIL() << call; };
  FullPath(u"C:\\Data", files);
  FullPath(u"\\\\server\\share\\Data", files);
}

TEST(FolderPathTest, LevelsLeadFromTheRootDown) {
  using Lengths = std::vector<std::size_t>;
  EXPECT_EQ(Levels(u""), Lengths{});
  EXPECT_EQ(Levels(u"C:\\"), Lengths{3});
  EXPECT_EQ(Levels(u"C:\\Data\\Logs"), (Lengths{3, 7, 12}));
  EXPECT_EQ(Levels(u"\\\\server\\share"), Lengths{14});
  EXPECT_EQ(Levels(u"\\\\server\\share\\a"), (Lengths{14, 16}));
}

TEST(FolderPathTest, NamesAreTakenOffAndPutOn) {
  EXPECT_EQ(LastName(u"C:\\Data\\Logs"), u"Logs");
  EXPECT_EQ(LastName(u"C:\\Data"), u"Data");
  EXPECT_EQ(LastName(u"C:\\"), u"C:\\");
  EXPECT_EQ(LastName(u"\\\\server\\share"), u"\\\\server\\share");
  EXPECT_EQ(LastName(u"\\\\server\\share\\a"), u"a");
  EXPECT_EQ(PathIn(u"C:\\", u"Data"), u"C:\\Data");
  EXPECT_EQ(PathIn(u"C:\\Data", u"Logs"), u"C:\\Data\\Logs");
  EXPECT_EQ(PathIn(u"\\\\server\\share", u"a"), u"\\\\server\\share\\a");
}

}  // namespace
}  // namespace krx::test
