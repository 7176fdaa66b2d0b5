#include "ports/win32/FolderReading.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>

#include "FolderTree.h"
#include "MachineFilesSupport.h"
#include "Person.h"
#include "ports/win32/MachineFiles.h"
#include "ports/win32/System.h"
#include "soak/Counters.h"

namespace krx::test {

namespace {

using std::chrono::milliseconds;
using win32::MachineFiles;

constexpr int kMany = 100000;
constexpr int kAttempts = 20;  // of what a moment's pause of this thread may spoil

// Whether the condition holds in one of several attempts.
bool InOneOfThem(const std::function<bool()>& attempt) {
  for (int i = 0; i < kAttempts; ++i)
    if (attempt()) return true;
  return false;
}

// The shortest of several times that something takes.
milliseconds Shortest(const std::function<milliseconds()>& time) {
  constexpr int kTimes = 5;
  milliseconds shortest = kLong;
  for (int i = 0; i < kTimes; ++i)
    shortest = std::min(shortest, time());
  return shortest;
}

using soak::CountHeapBlocks;
using soak::CountKernelHandles;

// What the system's own search finds, in its order.
folders::FolderPart Search(const String& folder) {
  folders::FolderPart found;
  WIN32_FIND_DATAW data{};
  const String pattern = u"\\\\?\\" + folder + u"\\*";
  const HANDLE search = FindFirstFileW(win32::Wide(pattern), &data);
  if (search == INVALID_HANDLE_VALUE) return found;
  do {
    const String name(win32::Narrow(data.cFileName, wcslen(data.cFileName)));
    if (name == u"." || name == u"..") continue;
    const bool folder_entry = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    (folder_entry ? found.Folders : found.Files).push_back(name);
  } while (FindNextFileW(search, &data));
  FindClose(search);
  return found;
}

// Work that was given up ends soon, though not at once.
bool SoonBack(long (*count)(), long expected) {
  return Within([&] { return count() <= expected; });
}

// Waits until work that was given up has ended: nothing comes or goes any more.
void AwaitRest(long (*count)()) {
  constexpr int kLooks = 20;
  long last = count();
  int same = 0;
  Within([&] {
    const long now = count();
    same = now == last ? same + 1 : 0;
    last = now;
    return same == kLooks;
  });
}

TEST(FolderReading, EverythingButTheFolderAndItsParentIsReadInTheSystemsOrder) {
  const FolderTree tree;
  for (const StringView name : {u"zebra", u"Apple", u".config", u"\u00C4rger", u"..2", u"CON"})
    tree.AddFolder(name);
  for (const StringView name : {u"b.txt", u"A.TXT", u"hidden", u"nul", u"a;b,[c]"})
    tree.AddFile(name);
  SetFileAttributesW(win32::Wide(tree.PathOf(u"hidden")),
                     FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  MachineFiles files;
  const folders::FolderPart all = ReadAll(files, tree.Path());
  const folders::FolderPart expected = Search(tree.Path());
  ASSERT_EQ(expected.Folders.size(), 6u);
  ASSERT_EQ(expected.Files.size(), 5u);
  EXPECT_EQ(all.Folders, expected.Folders);
  EXPECT_EQ(all.Files, expected.Files);
  EXPECT_TRUE(all.Complete);
}

TEST(FolderReading, AnEmptyFolderIsComplete) {
  const FolderTree tree;
  MachineFiles files;
  const folders::FolderPart all = ReadAll(files, tree.Path());
  EXPECT_TRUE(all.Complete);
  EXPECT_TRUE(all.Folders.empty());
  EXPECT_TRUE(all.Files.empty());
}

TEST(FolderReading, NamesAreThoseOfTheSystemAndLeadBackToIt) {
  const std::set<String> names{u"three dots...", u"blank ", u"both. ",    u"\U0001F600 face",
                               u"\u4E2D\u6587",  u"COM1",   u"percent%20"};
  const FolderTree tree;
  for (const String& name : names) {
    tree.AddFolder(name);
    tree.AddFile(name + u"\\inside");
  }
  MachineFiles files;
  const folders::FolderPart all = ReadAll(files, tree.Path());
  EXPECT_EQ(std::set<String>(all.Folders.begin(), all.Folders.end()), names);
  for (const String& name : all.Folders) {
    EXPECT_TRUE(FolderExists(files, tree.PathOf(name))) << ToUtf8(name);
    EXPECT_EQ(ReadAll(files, tree.PathOf(name)).Files, std::vector<String>{u"inside"});
  }
}

// Not every file system keeps half a surrogate pair.
TEST(FolderReading, HalfASurrogatePairIsKept) {
  const FolderTree tree;
  const String name{u'x', 0xD83D};
  try {
    tree.AddFile(name);
  } catch (const std::exception&) {
    GTEST_SKIP() << "the file system refuses such names";
  }
  MachineFiles files;
  EXPECT_EQ(ReadAll(files, tree.Path()).Files, std::vector<String>{name});
}

TEST(FolderReading, PathsMayBeLongerThanTheSystemsUsualLimit) {
  const FolderTree tree;
  String name;
  for (char16_t letter = u'a'; letter < u'a' + 12; ++letter) {
    name += String(name.empty() ? 0 : 1, u'\\') + String(100, letter);
    tree.AddFolder(name);
  }
  tree.AddFile(name + u"\\deep");
  ASSERT_GT(tree.PathOf(name).size(), 1200u);
  MachineFiles files;
  EXPECT_EQ(ReadAll(files, tree.PathOf(name)).Files, std::vector<String>{u"deep"});
  EXPECT_TRUE(FolderExists(files, tree.PathOf(name)));
  const String parent = name.substr(0, name.rfind(u'\\'));
  EXPECT_EQ(HaveFolders(files, tree.PathOf(parent), {String(100, u'l')}), std::vector<bool>{false});
}

TEST(FolderReading, AFolderThatHangsInsideItselfIsReadAtEveryLevel) {
  const FolderTree tree;
  tree.AddFile(u"file");
  if (!tree.AddLink(u"loop", ".")) GTEST_SKIP() << "no links can be made here";
  MachineFiles files;
  String path = tree.Path();
  for (int level = 0; level < 10; ++level) {
    const folders::FolderPart all = ReadAll(files, path);
    EXPECT_EQ(all.Folders, std::vector<String>{u"loop"});
    EXPECT_EQ(all.Files, std::vector<String>{u"file"});
    path += u"\\loop";
  }
  EXPECT_EQ(HaveFolders(files, tree.Path(), {u"loop"}), std::vector<bool>{true});
}

TEST(FolderReading, LinksThatLeadNowhereEndNothing) {
  const FolderTree tree;
  tree.AddFile(u"file");
  if (!tree.AddLink(u"circle", "circle") || !tree.AddLink(u"nowhere", "missing"))
    GTEST_SKIP() << "no links can be made here";
  MachineFiles files;
  const folders::FolderPart all = ReadAll(files, tree.Path());
  EXPECT_NE(std::find(all.Files.begin(), all.Files.end(), u"file"), all.Files.end());
  for (const StringView link : {u"circle", u"nowhere"}) {
    EXPECT_THROW(ReadAll(files, tree.PathOf(link)), Error);
    EXPECT_EQ(HaveFolders(files, tree.Path(), {String(link)}), std::vector<bool>{false});
  }
}

class LargeFolder : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    tree_ = new FolderTree;
    tree_->AddFiles(u"", kMany);
  }
  static void TearDownTestSuite() { delete tree_; }
  const String& Path() const { return tree_->Path(); }

  MachineFiles files_;

 private:
  static inline FolderTree* tree_ = nullptr;
};

TEST_F(LargeFolder, ArrivesInPartsInTheSystemsOrder) {
  const std::vector<String> expected = Search(Path()).Files;
  ASSERT_EQ(expected.size(), static_cast<std::size_t>(kMany));
  EXPECT_TRUE(InOneOfThem([&] {
    const auto reader = files_.ReadFolder({Path()});
    std::vector<String> names;
    int parts = 0;
    const Stopwatch watch;
    for (bool complete = false; !complete && watch.Passed() < kLong;) {
      folders::FolderPart part = reader->Take(milliseconds(1));
      parts += !part.Files.empty();
      names.insert(names.end(), part.Files.begin(), part.Files.end());
      EXPECT_TRUE(part.Folders.empty());
      complete = part.Complete;
    }
    EXPECT_EQ(names, expected);
    return parts > 3;
  }));
}

TEST_F(LargeFolder, TheCallThatBeginsToReadReturnsBeforeItIsRead) {
  EXPECT_TRUE(
      InOneOfThem([this] { return !files_.ReadFolder({Path()})->Take(milliseconds(0)).Complete; }));
}

TEST_F(LargeFolder, AReaderEndsAtOnceAndItsWorkSoon) {
  const long handles = CountKernelHandles();
  const milliseconds whole = Shortest([this] {
    const Stopwatch watch;
    files_.ReadFolder({Path()})->Take(kLong);
    return watch.Passed();
  });
  const milliseconds end = Shortest([this] {
    auto reader = files_.ReadFolder({Path()});
    reader->Take(milliseconds(1));
    const Stopwatch watch;
    reader.reset();
    return watch.Passed();
  });
  EXPECT_LT(end, whole / 4) << whole.count() << " ms";
  // The thread of the pool, with its handles, may stay.
  EXPECT_TRUE(SoonBack(&CountKernelHandles, handles + 4));
}

TEST_F(LargeFolder, TheOwnerMayGoBeforeTheReader) {
  std::unique_ptr<folders::FolderReader> reader;
  {
    MachineFiles gone;
    reader = gone.ReadFolder({Path()});
  }
  EXPECT_EQ(reader->Take(kLong).Files.size(), static_cast<std::size_t>(kMany));
}

TEST_F(LargeFolder, ManyAreReadAtOnce) {
  std::vector<std::unique_ptr<folders::FolderReader>> readers;
  for (int i = 0; i < 5; ++i)
    readers.push_back(files_.ReadFolder({Path()}));
  for (const auto& reader : readers)
    EXPECT_EQ(reader->Take(kLong).Files.size(), static_cast<std::size_t>(kMany));
}

TEST(FolderReading, AFolderThatVanishesWhileItIsReadIsCompleteWithWhatItHad) {
  const FolderTree tree;
  tree.AddFolder(u"vanishing");
  tree.AddFiles(u"vanishing", 20000);
  const folders::FolderPart before = Search(tree.PathOf(u"vanishing"));
  MachineFiles files;
  const auto reader = files.ReadFolder({tree.PathOf(u"vanishing")});
  AwaitOpening(*reader);
  tree.Remove(u"vanishing");
  const folders::FolderPart all = reader->Take(kLong);
  EXPECT_TRUE(all.Complete);
  EXPECT_LE(all.Files.size(), before.Files.size());
  EXPECT_TRUE(
      std::includes(before.Files.begin(), before.Files.end(), all.Files.begin(), all.Files.end()));
  EXPECT_FALSE(FolderExists(files, tree.PathOf(u"vanishing")));
}

class ManyFolders : public testing::Test {
 protected:
  static constexpr int kFolders = 10000;
  static void SetUpTestSuite() {
    tree_ = new FolderTree;
    tree_->AddFolders(u"", kFolders);
  }
  static void TearDownTestSuite() { delete tree_; }
  const FolderTree& Tree() const { return *tree_; }

  MachineFiles files_;

 private:
  static inline FolderTree* tree_ = nullptr;
};

TEST_F(ManyFolders, EachTellsWhetherItHasSubfolders) {
  const std::vector<String> folders = ReadAll(files_, Tree().Path()).Folders;
  ASSERT_EQ(folders.size(), static_cast<std::size_t>(kFolders));
  const auto probe = files_.ProbeSubfolders(Tree().Path(), folders);
  std::map<std::size_t, bool> answers;
  const Stopwatch watch;
  while (answers.size() < folders.size() && watch.Passed() < kLong) {
    for (const folders::Marker& marker : probe->Take(milliseconds(5)))
      EXPECT_TRUE(answers.emplace(marker.Folder, marker.HasFolders).second) << "told twice";
  }
  ASSERT_EQ(answers.size(), folders.size());
  for (const auto& [folder, has_folders] : answers) {
    const int number = std::stoi(ToUtf8(folders.at(folder).substr(6)));
    ASSERT_EQ(has_folders, number % 3 == 1) << number;
  }
  EXPECT_TRUE(probe->Take(milliseconds(0)).empty());
}

TEST_F(ManyFolders, AProbeBeginsAndEndsAtOnce) {
  const std::vector<String> folders = ReadAll(files_, Tree().Path()).Folders;
  const Stopwatch watch;
  EXPECT_EQ(files_.ProbeSubfolders(Tree().Path(), folders)->Take(kLong).size(), folders.size());
  const milliseconds whole = watch.Passed();
  const milliseconds given_up = Shortest([&] {
    const Stopwatch begun;
    files_.ProbeSubfolders(Tree().Path(), folders).reset();
    return begun.Passed();
  });
  EXPECT_LT(given_up, whole / 4) << whole.count() << " ms";
}

TEST(SubfolderProbing, WhatIsNoFolderOrCannotBeReadHasNoSubfolders) {
  const FolderTree tree;
  tree.AddFile(u"file");
  tree.AddFolder(u"files only");
  tree.AddFiles(u"files only", 300);
  tree.AddFolder(u"mixed");
  tree.AddFiles(u"mixed", 300);
  tree.AddFolder(u"mixed\\zzz behind all files");
  MachineFiles files;
  // An empty name leads to the folder itself, which has some.
  EXPECT_EQ(
      HaveFolders(files, tree.Path(), {u"file", u"missing", u"files only", u"mixed", u"", u"*"}),
      (std::vector<bool>{false, false, false, true, true, false}));
  EXPECT_EQ(HaveFolders(files, u"Y:\\", {u"a", u"b"}), std::vector<bool>(2));
  EXPECT_TRUE(files.ProbeSubfolders(tree.Path(), {})->Take(kLong).empty());
}

void ReadAndProbe(const FolderTree& tree, int rounds) {
  for (int i = 0; i < rounds; ++i) {
    MachineFiles files;
    const std::vector<String> folders = ReadAll(files, tree.Path()).Folders;
    files.ProbeSubfolders(tree.Path(), folders)->Take(kLong);
    files.ReadFolder({tree.Path()});  // and is given up
    files.ProbeSubfolders(tree.Path(), folders);
    EXPECT_THROW(ReadAll(files, tree.PathOf(u"missing")), Error);
    EXPECT_TRUE(DriveOf(files, u"C:").Ready);
    files.AskFolder(tree.Path());  // and is given up
  }
}

TEST(FolderReading, AThousandReadingsLeaveNothingBehind) {
  const FolderTree tree;
  tree.AddFolders(u"", 20);
  tree.AddFiles(u"", 100);
  ReadAndProbe(tree, 100);
  AwaitRest(&CountHeapBlocks);
  const long handles = CountKernelHandles();
  const long blocks = CountHeapBlocks();
  ASSERT_GT(blocks, 0);
  ReadAndProbe(tree, 1000);
  EXPECT_TRUE(SoonBack(&CountKernelHandles, handles + 4)) << CountKernelHandles() - handles;
  EXPECT_TRUE(SoonBack(&CountHeapBlocks, blocks + 50)) << CountHeapBlocks() - blocks;
}

}  // namespace

}  // namespace krx::test
