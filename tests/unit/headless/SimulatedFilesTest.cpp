#include "ports/headless/SimulatedFiles.h"

#include <gtest/gtest.h>

#include <set>
#include <stdexcept>

#include "contract/Asked.h"
#include "support/Errors.h"
#include "support/Print.h"

namespace krx::test {

namespace {

constexpr std::chrono::milliseconds kNoWait{0};

class SimulatedMachine : public testing::Test {
 protected:
  using Names = std::vector<String>;
  using Markers = std::vector<folders::Marker>;

  SimulatedMachine() {
    machine.AddFolder(u"C:\\Data\\Logs");
    machine.AddFolder(u"C:\\Data\\Bilder");
    machine.AddFolder(u"C:\\Empty");
    machine.AddFile(u"C:\\Data\\b.txt");
    machine.AddFile(u"C:\\Data\\A.TXT");
  }
  folders::FolderPart All(StringView path) { return ReadAll(machine, path); }
  std::uint32_t Refusal(StringView path) {
    return StatusOf([&] { ReadAll(machine, path); }) & 0xFFFFu;
  }

  headless::SimulatedFiles machine;
};

TEST_F(SimulatedMachine, HasOneReadyFixedDriveAtFirst) {
  headless::SimulatedFiles fresh;
  EXPECT_EQ(fresh.Drives(), Names{u"C:"});
  EXPECT_EQ(DriveOf(fresh, u"C:"), (folders::Drive{folders::DriveType::Fixed, true, {}}));
  EXPECT_EQ(fresh.CurrentDirectory(), u"C:\\");
  const folders::FolderPart root = ReadAll(fresh, u"C:");
  EXPECT_TRUE(root.Folders.empty());
  EXPECT_TRUE(root.Files.empty());
  EXPECT_TRUE(root.Complete);
}

TEST_F(SimulatedMachine, KeepsTheOrderInWhichThingsWereMade) {
  EXPECT_EQ(All(u"C:\\Data").Folders, (Names{u"Logs", u"Bilder"}));
  EXPECT_EQ(All(u"C:\\Data").Files, (Names{u"b.txt", u"A.TXT"}));
  EXPECT_EQ(All(u"C:").Folders, (Names{u"Data", u"Empty"}));
}

TEST_F(SimulatedMachine, TellsNamesApartInAnyCase) {
  EXPECT_TRUE(FolderExists(machine, u"c:\\DATA\\logs"));
  EXPECT_EQ(All(u"c:\\data\\").Folders.size(), 2u);
}

TEST_F(SimulatedMachine, KnowsFoldersFromFiles) {
  EXPECT_FALSE(FolderExists(machine, u"C:\\Data\\b.txt"));
  EXPECT_FALSE(FolderExists(machine, u"C:\\Nowhere"));
  EXPECT_TRUE(FolderExists(machine, u"C:"));
  EXPECT_TRUE(FolderExists(machine, u"C:\\"));
}

TEST_F(SimulatedMachine, RefusesAsTheSystemDoes) {
  machine.AddDrive(u"A:", folders::DriveType::Removable, false, u"FLOPPY");
  machine.Deny(u"C:\\Data\\Logs");
  EXPECT_EQ(Refusal(u"C:\\Nowhere"), 76u);
  EXPECT_EQ(Refusal(u"C:\\Data\\Logs"), 70u);
  EXPECT_EQ(Refusal(u"A:"), 68u);
  EXPECT_EQ(Refusal(u"Q:\\x"), 68u);
  EXPECT_EQ(Refusal(u"nonsense"), 76u);
  EXPECT_TRUE(FolderExists(machine, u"C:\\Data\\Logs"));
}

TEST_F(SimulatedMachine, DrivesComeGoAndBecomeReady) {
  machine.AddDrive(u"D:", folders::DriveType::Optical, false, u"DISC");
  EXPECT_EQ(DriveOf(machine, u"d:"), (folders::Drive{folders::DriveType::Optical, false, {}}));
  machine.SetReady(u"D:", true);
  EXPECT_EQ(DriveOf(machine, u"D:"), (folders::Drive{folders::DriveType::Optical, true, u"DISC"}));
  machine.RemoveDrive(u"d:");
  EXPECT_EQ(DriveOf(machine, u"D:"), folders::Drive());
  EXPECT_EQ(machine.Drives().size(), 1u);
  EXPECT_THROW(machine.SetReady(u"D:", true), std::logic_error);
  EXPECT_THROW(machine.AddFolder(u"D:\\x"), std::logic_error);
}

TEST_F(SimulatedMachine, SharesAreReachedButAreNoDrives) {
  machine.AddFolder(u"\\\\server\\share\\below");
  EXPECT_TRUE(FolderExists(machine, u"\\\\Server\\Share\\below"));
  EXPECT_EQ(All(u"\\\\server\\share").Folders, (Names{u"below"}));
  EXPECT_FALSE(FolderExists(machine, u"\\\\server\\other"));
  EXPECT_FALSE(FolderExists(machine, u"\\\\server"));
  EXPECT_EQ(machine.Drives().size(), 1u);
}

TEST_F(SimulatedMachine, ALinkLeadsToTheSameFolderAlsoInACircle) {
  machine.AddLink(u"C:\\Data\\Logs\\up", u"C:\\Data");
  EXPECT_TRUE(FolderExists(machine, u"C:\\Data\\Logs\\up\\Logs\\up\\Bilder"));
  machine.AddFile(u"C:\\Data\\Logs\\up\\new.txt");
  EXPECT_EQ(All(u"C:\\Data").Files.back(), u"new.txt");
}

TEST_F(SimulatedMachine, WhatIsRemovedIsGone) {
  machine.Remove(u"C:\\Data\\logs");
  machine.Remove(u"C:\\Data\\a.txt");
  EXPECT_EQ(All(u"C:\\Data").Folders, (Names{u"Bilder"}));
  EXPECT_EQ(All(u"C:\\Data").Files, (Names{u"b.txt"}));
}

TEST_F(SimulatedMachine, ReadsInSlicesFoldersFirst) {
  machine.Slice = 3;
  const auto reader = machine.ReadFolder({u"C:\\Data"});
  const folders::FolderPart first = reader->Take(kNoWait);
  EXPECT_EQ(first.Folders, (Names{u"Logs", u"Bilder"}));
  EXPECT_EQ(first.Files, (Names{u"b.txt"}));
  EXPECT_FALSE(first.Complete);
  // What changes meanwhile is not seen.
  machine.AddFile(u"C:\\Data\\late.txt");
  const folders::FolderPart second = reader->Take(kNoWait);
  EXPECT_TRUE(second.Folders.empty());
  EXPECT_EQ(second.Files, (Names{u"A.TXT"}));
  EXPECT_TRUE(second.Complete);
  EXPECT_TRUE(reader->Take(kNoWait).Complete);
}

TEST_F(SimulatedMachine, ProbesForSubfolders) {
  machine.AddFolder(u"C:\\Data\\Logs\\old");
  machine.AddFolder(u"C:\\Locked\\inside");
  machine.Deny(u"C:\\Locked");
  EXPECT_EQ(HaveFolders(machine, u"C:", {u"Empty", u"Data", u"Locked", u"Missing"}),
            (std::vector<bool>{false, true, false, false}));
}

TEST_F(SimulatedMachine, ProbesInSlices) {
  machine.Slice = 2;
  const auto probe = machine.ProbeSubfolders(u"C:", {u"Empty", u"Data", u"Empty"});
  EXPECT_EQ(probe->Take(kNoWait), (Markers{{0, false}, {1, true}}));
  EXPECT_EQ(probe->Take(kNoWait), (Markers{{2, false}}));
  EXPECT_EQ(probe->Take(kNoWait), Markers());
}

TEST_F(SimulatedMachine, HoldsAnswersBackAndTellsWhoWaits) {
  std::set<std::string> held{"AskDrive(C:)", "AskFolder(C:\\Data)", "rest of ReadFolder(C:\\Data)",
                             "probe of Data"};
  folders::Patience waited{0};
  machine.Slice = 1;
  machine.Held = [&](const std::string& question) { return held.contains(question); };
  machine.OnWait = [&](folders::Patience patience) { waited += patience; };
  const auto drive = machine.AskDrive(u"C:");
  const auto folder = machine.AskFolder(u"C:\\Data");
  const auto reader = machine.ReadFolder({u"C:\\Data"});
  const auto probe = machine.ProbeSubfolders(u"C:", {u"Data", u"Empty"});
  EXPECT_EQ(drive->Take(folders::Patience(3)), std::nullopt);
  EXPECT_EQ(folder->Take(folders::Patience(4)), std::nullopt);
  EXPECT_EQ(waited, folders::Patience(7));
  EXPECT_EQ(reader->Take(kNoWait).Folders, Names{u"Logs"});
  EXPECT_TRUE(reader->Take(kNoWait).Folders.empty());
  EXPECT_EQ(probe->Take(kNoWait), (Markers{{1, false}})) << "one that is held delays no other";
  held.clear();
  EXPECT_EQ(drive->Take(kNoWait)->Ready, true);
  EXPECT_EQ(folder->Take(kNoWait), true);
  EXPECT_EQ(reader->Take(kNoWait).Folders, Names{u"Bilder"});
  EXPECT_EQ(probe->Take(kNoWait), (Markers{{0, true}}));
}

TEST_F(SimulatedMachine, TellsEveryCallWhichMayFailIt) {
  std::string calls;
  machine.OnCall = [&](const std::string& call) {
    calls += call + ";";
    if (call.starts_with("ReadFolder")) throw RuntimeError(57, u"Device I/O error");
  };
  machine.Drives();
  machine.CurrentDirectory();
  machine.AskDrive(u"C:");
  machine.AskFolder(u"C:\\Data");
  machine.ProbeSubfolders(u"C:\\Data", {});
  EXPECT_EQ(Refusal(u"C:\\Data"), 57u);
  EXPECT_EQ(calls,
            "Drives();CurrentDirectory();AskDrive(C:);AskFolder(C:\\Data);"
            "ProbeSubfolders(C:\\Data);ReadFolder(C:\\Data);");
}

}  // namespace

}  // namespace krx::test
