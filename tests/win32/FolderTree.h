#pragma once

#include <string>

#include "base/String.h"

namespace krx::test {

// A temporary folder in which a test makes what it needs; all of it is removed at the end. Names
// are relative to it and parted by backslashes.
class FolderTree {
 public:
  FolderTree();
  ~FolderTree();
  FolderTree(const FolderTree&) = delete;
  FolderTree& operator=(const FolderTree&) = delete;

  // Without a separator at its end.
  const String& Path() const { return path_; }
  String PathOf(StringView name) const { return path_ + u'\\' + String(name); }
  // As programs of the platform take it; without a name the tree itself.
  std::wstring WidePath(const std::wstring& name = {}) const;

  void AddFolder(StringView name) const;
  void AddFile(StringView name) const;
  // "file000001.txt" to the number in an existing folder; "" is the tree's own.
  void AddFiles(StringView folder, int count) const;
  // "folder00001" to the number; each third, from the first one, with a folder in it.
  void AddFolders(StringView folder, int count) const;
  // A link to a folder; false where the system does not let us make one.
  bool AddLink(StringView name, const char* target) const;
  void Remove(StringView name) const;

 private:
  // Runs a line of the shell below Wine in the tree; false where there is none.
  bool Shell(const std::string& line) const;

  String path_;
};

// How Wine's host names a path; empty on other systems.
std::string HostPath(const String& path);
// Runs a line of the shell of Wine's host; false where there is none or it fails.
bool RunHostShell(const std::string& line);

}  // namespace krx::test
