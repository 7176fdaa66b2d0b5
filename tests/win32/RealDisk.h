#pragma once

#include <memory>
#include <optional>
#include <string>

#include "FolderTree.h"
#include "contract/Disk.h"

namespace krx::test {

// A drive letter that leads nowhere, as that of a reader without a medium. A letter that is not in
// use by the machine.
class EmptyDrive {
 public:
  EmptyDrive();
  ~EmptyDrive();
  EmptyDrive(const EmptyDrive&) = delete;
  EmptyDrive& operator=(const EmptyDrive&) = delete;

  static constexpr StringView kDrive = u"Q:";
};

// A share of this machine as Wine finds shares; nothing on other systems.
class LocalShare {
 public:
  explicit LocalShare(const String& folder);
  ~LocalShare();
  LocalShare(const LocalShare&) = delete;
  LocalShare& operator=(const LocalShare&) = delete;

  bool Made() const { return made_; }
  static constexpr StringView kPath = u"\\\\krx-server\\share";

 private:
  std::string host_;
  bool made_ = false;
};

// Puts the current folder back at the end.
class CurrentFolder {
 public:
  explicit CurrentFolder(const String& folder);
  ~CurrentFolder();
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  const String before_;
};

// The machine itself, for the contract tests.
class RealDisk final : public Disk {
 public:
  String Path() const override { return tree_.Path(); }
  void AddFolder(StringView name) override { tree_.AddFolder(name); }
  void AddFile(StringView name) override { tree_.AddFile(name); }
  void Remove(StringView name) override { tree_.Remove(name); }
  void SetCurrent(const String& path) override { current_.emplace(path); }
  String Share() override;
  String DriveWithoutMedium() override;
  String MissingDrive() override { return u"X:"; }

 private:
  const FolderTree tree_;
  std::optional<CurrentFolder> current_;
  std::optional<LocalShare> share_;
  std::optional<EmptyDrive> empty_;
};

}  // namespace krx::test
