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

const folders::Drive kShare{folders::DriveType::Network, true, {}};

template <class T>
void MoveFront(std::vector<T>& from, std::vector<T>& to, std::size_t count) {
  const auto end = from.begin() + static_cast<std::ptrdiff_t>(count);
  to.insert(to.end(), from.begin(), end);
  from.erase(from.begin(), end);
}

}  // namespace

template <class Answer>
class SimulatedFiles::Asked : public folders::Question<Answer> {
 public:
  Asked(const SimulatedFiles& machine, std::string name, Answer answer)
      : machine_(machine), name_(std::move(name)), answer_(std::move(answer)) {}

  std::optional<Answer> Take(folders::Patience patience) override {
    if (machine_.IsHeld(name_, patience)) return std::nullopt;
    return answer_;
  }

 private:
  const SimulatedFiles& machine_;
  const std::string name_;
  const Answer answer_;
};

class SimulatedFiles::Reader : public folders::FolderReader {
 public:
  Reader(const SimulatedFiles& machine, std::string name, folders::FolderPart all,
         std::int32_t refusal)
      : machine_(machine), name_(std::move(name)), rest_(std::move(all)), refusal_(refusal) {}

  folders::FolderPart Take(folders::Patience patience) override {
    folders::FolderPart part;
    if (machine_.IsHeld(opened_ ? "rest of " + name_ : name_, patience)) return part;
    if (refusal_ != 0) throw RuntimeError(refusal_, DescriptionOf(refusal_));
    opened_ = true;
    part.Opened = rest_.Opened;
    const std::size_t count = NextPart(machine_.Slice, rest_.Folders.size() + rest_.Files.size());
    const std::size_t folders = std::min(count, rest_.Folders.size());
    MoveFront(rest_.Folders, part.Folders, folders);
    MoveFront(rest_.Files, part.Files, count - folders);
    part.Complete = rest_.Folders.empty() && rest_.Files.empty();
    return part;
  }

 private:
  static String DescriptionOf(std::int32_t refusal) {
    if (refusal == 68) return u"Device unavailable";
    return refusal == 70 ? u"Permission denied" : u"Path not found";
  }

  const SimulatedFiles& machine_;
  const std::string name_;
  folders::FolderPart rest_;
  const std::int32_t refusal_;
  bool opened_ = false;
};

// Each folder is a question of its own, as on the machine one that is held delays no other.
class SimulatedFiles::Probe : public folders::SubfolderProbe {
 public:
  struct Open {
    std::string Name;
    folders::Marker Answer;
  };
  Probe(const SimulatedFiles& machine, std::vector<Open> open)
      : machine_(machine), open_(std::move(open)) {}

  std::vector<folders::Marker> Take(folders::Patience patience) override {
    std::vector<folders::Marker> part;
    const std::size_t most = NextPart(machine_.Slice, open_.size());
    bool waited = false;
    std::erase_if(open_, [&](const Open& open) {
      if (part.size() >= most) return false;
      if (machine_.IsHeld(open.Name, waited ? folders::kNoPatience : patience)) {
        waited = true;
        return false;
      }
      part.push_back(open.Answer);
      return true;
    });
    return part;
  }

 private:
  const SimulatedFiles& machine_;
  std::vector<Open> open_;
};

SimulatedFiles::SimulatedFiles() {
  AddDrive(u"C:");
}

std::string SimulatedFiles::Call(const char* operation, StringView argument) const {
  std::string name = std::string(operation) + "(" + ToUtf8(argument) + ")";
  if (OnCall) OnCall(name);
  return name;
}

bool SimulatedFiles::IsHeld(const std::string& question, folders::Patience patience) const {
  const bool held = Held && Held(question);
  if (held && OnWait && patience.count() > 0) OnWait(patience);
  return held;
}

SimulatedFiles::Folder* SimulatedFiles::NewFolder() {
  return &folders_.emplace_back();
}

SimulatedFiles::Volume& SimulatedFiles::AddVolume(String path, folders::Drive drive) {
  return volumes_.emplace_back(Volume{std::move(path), std::move(drive), NewFolder()});
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
    return SameName(volume.Path, root);
  });
  if (found != volumes_.end()) place.On = &*found;
  return place;
}

SimulatedFiles::Folder* SimulatedFiles::FolderAt(const Place& place) {
  if (!place.On || !place.On->Drive.Ready) return nullptr;
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
  AddVolume(std::move(path), {type, ready, std::move(label)});
}

void SimulatedFiles::RemoveDrive(StringView path) {
  std::erase_if(volumes_, [&](const Volume& v) { return SameName(v.Path, path); });
}

void SimulatedFiles::SetReady(StringView drive, bool ready) {
  const Place place = Find(drive);
  if (!place.On) throw std::logic_error("no such drive in the simulated machine");
  place.On->Drive.Ready = ready;
}

void SimulatedFiles::AddFolder(StringView path) {
  Place place = Find(path);
  if (!place.On && path.starts_with(u"\\\\")) {
    const std::size_t share = path.find(u'\\', 2);
    const std::size_t end = std::min(path.find(u'\\', share + 1), path.size());
    AddVolume(String(path.substr(0, end)), kShare);
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
  AddVolume(String(share), kShare).Root = FolderAt(Find(target));
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

std::vector<String> SimulatedFiles::Drives() {
  Call("Drives", {});
  std::vector<String> drives;
  for (const Volume& volume : volumes_) {
    if (!volume.Path.starts_with(folders::kNetwork)) drives.push_back(volume.Path);
  }
  return drives;
}

String SimulatedFiles::CurrentDirectory() {
  Call("CurrentDirectory", {});
  return CurrentFolder;
}

std::unique_ptr<folders::Question<folders::Drive>> SimulatedFiles::AskDrive(StringView drive) {
  std::string name = Call("AskDrive", drive);
  const Place place = folders::HasDrive(drive) ? Find(drive.substr(0, 2)) : Place();
  folders::Drive known = place.On ? place.On->Drive : folders::Drive();
  if (known.Type == folders::DriveType::Network) known.Ready = false;
  if (!known.Ready) known.Label.clear();
  return std::make_unique<Asked<folders::Drive>>(*this, std::move(name), std::move(known));
}

std::unique_ptr<folders::Question<bool>> SimulatedFiles::AskFolder(StringView path) {
  std::string name = Call("AskFolder", path);
  const bool exists = FolderAt(Find(path)) != nullptr;
  return std::make_unique<Asked<bool>>(*this, std::move(name), exists);
}

std::int32_t SimulatedFiles::RefusalOf(StringView path) {
  const Place place = Find(path);
  if (!place.Named) return 76;
  if (!place.On || !place.On->Drive.Ready) return 68;
  const Folder* const folder = FolderAt(place);
  if (!folder) return 76;
  return folder->Denied ? 70 : 0;
}

folders::FolderPart SimulatedFiles::Contents(StringView path) {
  const Folder& folder = *FolderAt(Find(path));
  folders::FolderPart all;
  for (const auto& [name, below] : folder.Folders)
    all.Folders.push_back(name);
  all.Files = folder.Files;
  return all;
}

std::unique_ptr<folders::FolderReader> SimulatedFiles::ReadFolder(std::vector<String> paths) {
  String names;
  for (const String& path : paths)
    names += (names.empty() ? u"" : u"|") + path;
  std::string name = Call("ReadFolder", names);
  for (std::size_t i = 0; i < paths.size(); ++i) {
    if (RefusalOf(paths[i]) != 0) continue;
    folders::FolderPart all = Contents(paths[i]);
    all.Opened = i;
    return std::make_unique<Reader>(*this, std::move(name), std::move(all), 0);
  }
  const std::int32_t refusal = paths.empty() ? 76 : RefusalOf(paths.front());
  return std::make_unique<Reader>(*this, std::move(name), folders::FolderPart(), refusal);
}

std::unique_ptr<folders::SubfolderProbe> SimulatedFiles::ProbeSubfolders(
    StringView path, std::vector<String> folders) {
  Call("ProbeSubfolders", path);
  const Folder* const parent = FolderAt(Find(path));
  std::vector<Probe::Open> open;
  for (std::size_t i = 0; i < folders.size(); ++i) {
    bool has = false;
    if (parent) {
      const auto found = FindFolder(parent->Folders, folders[i]);
      has = found != parent->Folders.end() && !found->second->Denied &&
            !found->second->Folders.empty();
    }
    open.push_back({"probe of " + ToUtf8(folders[i]), {i, has}});
  }
  return std::make_unique<Probe>(*this, std::move(open));
}

}  // namespace krx::headless
