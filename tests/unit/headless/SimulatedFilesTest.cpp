#include "ports/headless/SimulatedFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "support/Errors.h"
#include "support/Print.h"

namespace krx::test {

namespace {

constexpr std::chrono::milliseconds kNoWait{0};

class SimulatedMachine : public testing::Test {
 protected:
  using Names = std::vector<String>;

  SimulatedMachine() {
    machine.AddFolder(u"C:\\Data\\Logs");
    machine.AddFolder(u"C:\\Data\\Bilder");
    machine.AddFolder(u"C:\\Empty");
    machine.AddFile(u"C:\\Data\\b.txt");
    machine.AddFile(u"C:\\Data\\A.TXT");
  }
  folders::FolderPart All(StringView path) { return machine.ReadFolder(path)->Take(kNoWait); }
  std::uint32_t Refusal(StringView path) {
    return StatusOf([&] { machine.ReadFolder(path); }) & 0xFFFFu;
  }

  headless::SimulatedFiles machine;
};

TEST_F(SimulatedMachine, HasOneReadyFixedDriveAtFirst) {
  headless::SimulatedFiles fresh;
  EXPECT_EQ(fresh.Drives(), (std::vector<folders::Drive>{{u"C:", folders::DriveType::Fixed}}));
  EXPECT_TRUE(fresh.DriveReady(u"C:"));
  EXPECT_EQ(fresh.CurrentDirectory(), u"C:\\");
  const folders::FolderPart root = fresh.ReadFolder(u"C:")->Take(kNoWait);
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
  EXPECT_TRUE(machine.FolderExists(u"c:\\DATA\\logs"));
  EXPECT_TRUE(machine.FileExists(u"C:\\data\\a.txt"));
  EXPECT_EQ(All(u"c:\\data\\").Folders.size(), 2u);
}

TEST_F(SimulatedMachine, KnowsFoldersFromFiles) {
  EXPECT_FALSE(machine.FolderExists(u"C:\\Data\\b.txt"));
  EXPECT_FALSE(machine.FileExists(u"C:\\Data\\Logs"));
  EXPECT_FALSE(machine.FolderExists(u"C:\\Nowhere"));
  EXPECT_FALSE(machine.FileExists(u"C:"));
  EXPECT_TRUE(machine.FolderExists(u"C:"));
  EXPECT_TRUE(machine.FolderExists(u"C:\\"));
}

TEST_F(SimulatedMachine, RefusesAsTheSystemDoes) {
  machine.AddDrive(u"A:", folders::DriveType::Removable, false, u"FLOPPY");
  machine.Deny(u"C:\\Data\\Logs");
  EXPECT_EQ(Refusal(u"C:\\Nowhere"), 76u);
  EXPECT_EQ(Refusal(u"C:\\Data\\Logs"), 70u);
  EXPECT_EQ(Refusal(u"A:"), 68u);
  EXPECT_EQ(Refusal(u"Q:\\x"), 68u);
  EXPECT_EQ(Refusal(u"nonsense"), 76u);
  EXPECT_TRUE(machine.FolderExists(u"C:\\Data\\Logs"));
}

TEST_F(SimulatedMachine, DrivesComeGoAndBecomeReady) {
  machine.AddDrive(u"D:", folders::DriveType::Optical, false, u"DISC");
  EXPECT_TRUE(machine.DriveExists(u"d:\\anything"));
  EXPECT_FALSE(machine.DriveReady(u"D:"));
  EXPECT_EQ(machine.VolumeLabel(u"D:"), u"");
  machine.SetReady(u"D:", true);
  EXPECT_TRUE(machine.DriveReady(u"D:"));
  EXPECT_EQ(machine.VolumeLabel(u"D:"), u"DISC");
  machine.RemoveDrive(u"d:");
  EXPECT_FALSE(machine.DriveExists(u"D:"));
  EXPECT_EQ(machine.Drives().size(), 1u);
  EXPECT_THROW(machine.SetReady(u"D:", true), std::logic_error);
  EXPECT_THROW(machine.AddFolder(u"D:\\x"), std::logic_error);
}

TEST_F(SimulatedMachine, SharesAreReachedButAreNoDrives) {
  machine.AddFolder(u"\\\\server\\share\\below");
  EXPECT_TRUE(machine.FolderExists(u"\\\\Server\\Share\\below"));
  EXPECT_EQ(All(u"\\\\server\\share").Folders, (Names{u"below"}));
  EXPECT_FALSE(machine.FolderExists(u"\\\\server\\other"));
  EXPECT_FALSE(machine.FolderExists(u"\\\\server"));
  EXPECT_EQ(machine.Drives().size(), 1u);
}

TEST_F(SimulatedMachine, ALinkLeadsToTheSameFolderAlsoInACircle) {
  machine.AddLink(u"C:\\Data\\Logs\\up", u"C:\\Data");
  EXPECT_TRUE(machine.FolderExists(u"C:\\Data\\Logs\\up\\Logs\\up\\Bilder"));
  machine.AddFile(u"C:\\Data\\Logs\\up\\new.txt");
  EXPECT_TRUE(machine.FileExists(u"C:\\Data\\new.txt"));
}

TEST_F(SimulatedMachine, WhatIsRemovedIsGone) {
  machine.Remove(u"C:\\Data\\logs");
  machine.Remove(u"C:\\Data\\a.txt");
  EXPECT_EQ(All(u"C:\\Data").Folders, (Names{u"Bilder"}));
  EXPECT_EQ(All(u"C:\\Data").Files, (Names{u"b.txt"}));
}

TEST_F(SimulatedMachine, ReadsInSlicesFoldersFirst) {
  machine.Slice = 3;
  const auto reader = machine.ReadFolder(u"C:\\Data");
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

TEST_F(SimulatedMachine, ProbesForSubfoldersInTheOrderAskedFor) {
  machine.AddFolder(u"C:\\Data\\Logs\\old");
  machine.AddFolder(u"C:\\Locked\\inside");
  machine.Deny(u"C:\\Locked");
  const auto probe = machine.ProbeSubfolders(u"C:", {u"Empty", u"Data", u"Locked", u"Missing"});
  EXPECT_EQ(probe->Take(kNoWait), (std::vector<bool>{false, true, false, false}));
  EXPECT_TRUE(probe->Take(kNoWait).empty());
}

TEST_F(SimulatedMachine, ProbesInSlices) {
  machine.Slice = 2;
  const auto probe = machine.ProbeSubfolders(u"C:", {u"Empty", u"Data", u"Empty"});
  EXPECT_EQ(probe->Take(kNoWait), (std::vector<bool>{false, true}));
  EXPECT_EQ(probe->Take(kNoWait), (std::vector<bool>{false}));
}

TEST_F(SimulatedMachine, TellsEveryCallWhichMayFailIt) {
  std::string calls;
  machine.OnCall = [&](const std::string& call) {
    calls += call + ";";
    if (call.starts_with("ReadFolder")) throw RuntimeError(57, u"Device I/O error");
  };
  machine.Drives();
  machine.DriveExists(u"C:");
  machine.DriveReady(u"C:");
  machine.VolumeLabel(u"C:");
  machine.CurrentDirectory();
  machine.FolderExists(u"C:\\Data");
  machine.FileExists(u"C:\\x");
  machine.ProbeSubfolders(u"C:\\Data", {});
  EXPECT_EQ(Refusal(u"C:\\Data"), 57u);
  EXPECT_EQ(calls,
            "Drives();DriveExists(C:);DriveReady(C:);VolumeLabel(C:);CurrentDirectory();"
            "FolderExists(C:\\Data);FileExists(C:\\x);ProbeSubfolders(C:\\Data);"
            "ReadFolder(C:\\Data);");
}

}  // namespace

}  // namespace krx::test
