#include "ports/headless/SimulatedFiles.h"

#include <algorithm>
#include <stdexcept>

#include "base/Error.h"
#include "folders/FolderPath.h"
#include "ports/headless/FoldCase.h"

namespace krx::headless {

namespace {

bool SameName(StringView a, StringView b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char16_t x, char16_t y) { return FoldCase(x) == FoldCase(y); });
}

template <class Named>
auto FindFolder(Named& folders, StringView name) {
  return std::find_if(folders.begin(), folders.end(),
                      [&](const auto& entry) { return SameName(entry.first, name); });
}

std::vector<String> Split(StringView path) {
  std::vector<String> names;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(u'\\'), path.size());
    if (end > 0) names.emplace_back(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return names;
}

// How much of a vector of `size` arrives next.
std::size_t NextPart(std::size_t slice, std::size_t size) {
  return slice == 0 ? size : std::min(slice, size);
}

template <class T>
void MoveFront(std::vector<T>& from, std::vector<T>& to, std::size_t count) {
  const auto end = from.begin() + static_cast<std::ptrdiff_t>(count);
  to.insert(to.end(), from.begin(), end);
  from.erase(from.begin(), end);
}

class Reader : public folders::FolderReader {
 public:
  Reader(folders::FolderPart all, std::size_t slice) : rest_(std::move(all)), slice_(slice) {}

  folders::FolderPart Take(std::chrono::milliseconds) override {
    folders::FolderPart part;
    const std::size_t count = NextPart(slice_, rest_.Folders.size() + rest_.Files.size());
    const std::size_t folders = std::min(count, rest_.Folders.size());
    MoveFront(rest_.Folders, part.Folders, folders);
    MoveFront(rest_.Files, part.Files, count - folders);
    part.Complete = rest_.Folders.empty() && rest_.Files.empty();
    return part;
  }

 private:
  folders::FolderPart rest_;
  std::size_t slice_;
};

class Probe : public folders::SubfolderProbe {
 public:
  Probe(std::vector<bool> answers, std::size_t slice)
      : answers_(std::move(answers)), slice_(slice) {}

  std::vector<bool> Take(std::chrono::milliseconds) override {
    std::vector<bool> part;
    MoveFront(answers_, part, NextPart(slice_, answers_.size()));
    return part;
  }

 private:
  std::vector<bool> answers_;
  std::size_t slice_;
};

}  // namespace

SimulatedFiles::SimulatedFiles() {
  AddDrive(u"C:");
}

void SimulatedFiles::Call(const char* operation, StringView argument) const {
  if (OnCall) OnCall(std::string(operation) + "(" + ToUtf8(argument) + ")");
}

SimulatedFiles::Folder* SimulatedFiles::NewFolder() {
  return &folders_.emplace_back();
}

SimulatedFiles::Volume& SimulatedFiles::AddVolume(folders::Drive drive, bool ready, String label) {
  return volumes_.emplace_back(Volume{std::move(drive), std::move(label), ready, NewFolder()});
}

// As the machine does, relative paths, slashes and dots are taken for what they mean.
SimulatedFiles::Place SimulatedFiles::Find(StringView path) {
  Place place;
  String full;
  try {
    full = folders::FullPath(path, [this] { return CurrentFolder; });
  } catch (const Error&) {
    return {};
  }
  place.Named = true;
  const std::size_t end = full.starts_with(u"\\\\") ? folders::RootLength(full) : 2;
  const StringView root = StringView(full).substr(0, end);
  place.Names = Split(StringView(full).substr(end));
  const auto found = std::find_if(volumes_.begin(), volumes_.end(), [&](const Volume& volume) {
    return SameName(volume.Drive.Path, root);
  });
  if (found != volumes_.end()) place.On = &*found;
  return place;
}

SimulatedFiles::Folder* SimulatedFiles::FolderAt(const Place& place) {
  if (!place.On || !place.On->Ready) return nullptr;
  Folder* folder = place.On->Root;
  for (const String& name : place.Names) {
    const auto found = FindFolder(folder->Folders, name);
    if (found == folder->Folders.end()) return nullptr;
    folder = found->second;
  }
  return folder;
}

SimulatedFiles::Folder& SimulatedFiles::Make(const Place& place) {
  if (!place.On) throw std::logic_error("no such drive in the simulated machine");
  Folder* folder = place.On->Root;
  for (const String& name : place.Names) {
    auto found = FindFolder(folder->Folders, name);
    if (found == folder->Folders.end()) found = folder->Folders.insert(found, {name, NewFolder()});
    folder = found->second;
  }
  return *folder;
}

void SimulatedFiles::AddDrive(String path, folders::DriveType type, bool ready, String label) {
  AddVolume({std::move(path), type}, ready, std::move(label));
}

void SimulatedFiles::RemoveDrive(StringView path) {
  std::erase_if(volumes_, [&](const Volume& v) { return SameName(v.Drive.Path, path); });
}

void SimulatedFiles::SetReady(StringView drive, bool ready) {
  const Place place = Find(drive);
  if (!place.On) throw std::logic_error("no such drive in the simulated machine");
  place.On->Ready = ready;
}

void SimulatedFiles::AddFolder(StringView path) {
  Place place = Find(path);
  if (!place.On && path.starts_with(u"\\\\")) {
    const std::size_t share = path.find(u'\\', 2);
    const std::size_t end = std::min(path.find(u'\\', share + 1), path.size());
    AddVolume({String(path.substr(0, end)), folders::DriveType::Network}, true, {});
    place = Find(path);
  }
  Make(place);
}

void SimulatedFiles::AddFile(StringView path) {
  Place place = Find(path);
  const String name = place.Names.back();
  place.Names.pop_back();
  Make(place).Files.push_back(name);
}

void SimulatedFiles::AddShare(StringView share, StringView target) {
  AddVolume({String(share), folders::DriveType::Network}, true, {}).Root = FolderAt(Find(target));
}

void SimulatedFiles::AddLink(StringView path, StringView target) {
  Place place = Find(path);
  const String name = place.Names.back();
  place.Names.pop_back();
  Make(place).Folders.emplace_back(name, FolderAt(Find(target)));
}

void SimulatedFiles::Remove(StringView path) {
  Place place = Find(path);
  const String name = place.Names.back();
  place.Names.pop_back();
  Folder& folder = Make(place);
  std::erase_if(folder.Folders, [&](const auto& entry) { return SameName(entry.first, name); });
  std::erase_if(folder.Files, [&](const String& file) { return SameName(file, name); });
}

void SimulatedFiles::Deny(StringView path) {
  Make(Find(path)).Denied = true;
}

std::vector<folders::Drive> SimulatedFiles::Drives() {
  Call("Drives", {});
  std::vector<folders::Drive> drives;
  for (const Volume& volume : volumes_) {
    if (!volume.Drive.Path.starts_with(u"\\\\")) drives.push_back(volume.Drive);
  }
  return drives;
}

bool SimulatedFiles::DriveExists(StringView path) {
  Call("DriveExists", path);
  const bool has_root = path.starts_with(u"\\\\") || (path.size() >= 2 && path[1] == u':');
  return has_root && Find(path).On != nullptr;
}

bool SimulatedFiles::DriveReady(StringView drive) {
  Call("DriveReady", drive);
  const Place place = Find(drive);
  return place.On && place.On->Ready;
}

String SimulatedFiles::VolumeLabel(StringView drive) {
  Call("VolumeLabel", drive);
  const Place place = Find(drive);
  return place.On && place.On->Ready ? place.On->Label : String();
}

String SimulatedFiles::CurrentDirectory() {
  Call("CurrentDirectory", {});
  return CurrentFolder;
}

bool SimulatedFiles::FolderExists(StringView path) {
  Call("FolderExists", path);
  return FolderAt(Find(path)) != nullptr;
}

bool SimulatedFiles::FileExists(StringView path) {
  Call("FileExists", path);
  Place place = Find(path);
  if (place.Names.empty()) return false;
  const String name = place.Names.back();
  place.Names.pop_back();
  const Folder* const folder = FolderAt(place);
  return folder && std::any_of(folder->Files.begin(), folder->Files.end(),
                               [&](const String& file) { return SameName(file, name); });
}

std::unique_ptr<folders::FolderReader> SimulatedFiles::ReadFolder(StringView path) {
  Call("ReadFolder", path);
  const Place place = Find(path);
  if (!place.Named) throw RuntimeError(76, u"Path not found");
  if (!place.On || !place.On->Ready) throw RuntimeError(68, u"Device unavailable");
  const Folder* const folder = FolderAt(place);
  if (!folder) throw RuntimeError(76, u"Path not found");
  if (folder->Denied) throw RuntimeError(70, u"Permission denied");
  folders::FolderPart all;
  for (const auto& [name, below] : folder->Folders)
    all.Folders.push_back(name);
  all.Files = folder->Files;
  return std::make_unique<Reader>(std::move(all), Slice);
}

std::unique_ptr<folders::SubfolderProbe> SimulatedFiles::ProbeSubfolders(
    StringView path, std::vector<String> folders) {
  Call("ProbeSubfolders", path);
  const Folder* const parent = FolderAt(Find(path));
  std::vector<bool> answers;
  for (const String& name : folders) {
    bool has = false;
    if (parent) {
      const auto found = FindFolder(parent->Folders, name);
      has = found != parent->Folders.end() && !found->second->Denied &&
            !found->second->Folders.empty();
    }
    answers.push_back(has);
  }
  return std::make_unique<Probe>(std::move(answers), Slice);
}

}  // namespace krx::headless
