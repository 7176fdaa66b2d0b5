#pragma once

#include "base/String.h"

namespace krx::test {

// An empty folder of a port's machine in which the contract tests make what they need, and the odd
// places that a machine has besides. Names are relative to it, parted by backslashes; a folder is
// made before what lies in it.
class Disk {
 public:
  virtual ~Disk() = default;

  virtual String Path() const = 0;  // whole, without a separator at its end
  virtual void AddFolder(StringView name) = 0;
  virtual void AddFile(StringView name) = 0;
  virtual void Remove(StringView name) = 0;
  // Makes a folder the current one until the disk's end.
  virtual void SetCurrent(const String& path) = 0;
  // A share that leads to the folder; empty where none can be made.
  virtual String Share() = 0;
  virtual String DriveWithoutMedium() = 0;  // "Q:"
  virtual String MissingDrive() = 0;

  String PathOf(StringView name) const { return Path() + u'\\' + String(name); }
};

}  // namespace krx::test
