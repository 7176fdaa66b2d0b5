#include "support/SimulatedDisk.h"

#include <sqlite3.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

namespace krx::test {
namespace {

constexpr int kSector = 512;

void Apply(std::string& content, const SimulatedDisk::Change& change) {
  if (!change.Bytes) {
    content.resize(std::min(content.size(), change.Offset));
    return;
  }
  content.resize(std::max(content.size(), change.Offset + change.Bytes->size()));
  content.replace(change.Offset, change.Bytes->size(), *change.Bytes);
}

// One open file, as the library keeps it.
struct OpenFile {
  sqlite3_file Base;
  SimulatedDisk* Disk;
  std::shared_ptr<SimulatedDisk::File>* Target;
  std::string* Name;
  bool DeletesOnClose;
  int Level;
};

OpenFile& At(sqlite3_file* file) {
  return *reinterpret_cast<OpenFile*>(file);
}

}  // namespace

// The library's way to the disk.
struct DiskAccess {
  static SimulatedDisk& Disk(sqlite3_vfs* system) {
    return *static_cast<SimulatedDisk*>(system->pAppData);
  }

  static int Open(sqlite3_vfs* system, const char* name, sqlite3_file* file, int flags, int* out) {
    file->pMethods = nullptr;
    SimulatedDisk& disk = Disk(system);
    if (disk.Fails() || disk.Unreadable) return SQLITE_CANTOPEN;
    const std::string path = name ? name : "temporary";
    const auto found = disk.files_.find(path);
    if (found == disk.files_.end()) {
      const bool refused =
          !disk.RefusesNewFiles.empty() && path.find(disk.RefusesNewFiles) != std::string::npos;
      if ((flags & SQLITE_OPEN_CREATE) == 0 || disk.ReadOnly || refused || !disk.Step())
        return SQLITE_CANTOPEN;
      disk.files_[path] = std::make_shared<SimulatedDisk::File>();
    }
    OpenFile& open = At(file);
    open.Disk = &disk;
    open.Target = new std::shared_ptr(disk.files_[path]);
    open.Name = new std::string(path);
    open.DeletesOnClose = (flags & SQLITE_OPEN_DELETEONCLOSE) != 0;
    open.Level = SQLITE_LOCK_NONE;
    file->pMethods = &kMethods;
    if (out) *out = flags;
    return SQLITE_OK;
  }

  static int Delete(sqlite3_vfs* system, const char* name, int flushes) {
    SimulatedDisk& disk = Disk(system);
    if (disk.Fails() || disk.ReadOnly) return SQLITE_IOERR_DELETE;
    const auto found = disk.files_.find(name);
    if (found == disk.files_.end()) return SQLITE_IOERR_DELETE_NOENT;
    if (!disk.Step()) return SQLITE_IOERR_DELETE;
    // A name whose removal is not flushed may come back.
    if (flushes == 0 || disk.LiesOfFlushing) disk.removed_[name] = found->second;
    disk.files_.erase(found);
    return disk.Step() ? SQLITE_OK : SQLITE_IOERR_DELETE;
  }

  static int Access(sqlite3_vfs* system, const char* name, int, int* result) {
    SimulatedDisk& disk = Disk(system);
    *result = disk.Exists(name);
    return disk.Fails() ? SQLITE_IOERR_ACCESS : SQLITE_OK;
  }

  static int FullPathname(sqlite3_vfs*, const char* name, int size, char* full) {
    return sqlite3_snprintf(size, full, "%s", name) ? SQLITE_OK : SQLITE_CANTOPEN;
  }

  static int Close(sqlite3_file* file) {
    OpenFile& open = At(file);
    Unlock(file, SQLITE_LOCK_NONE);
    if (open.DeletesOnClose) open.Disk->files_.erase(*open.Name);
    delete open.Target;
    delete open.Name;
    return SQLITE_OK;
  }

  static int Read(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset) {
    OpenFile& open = At(file);
    std::memset(bytes, 0, static_cast<std::size_t>(size));
    if (open.Disk->Fails()) return SQLITE_IOERR_READ;
    const std::string& content = (*open.Target)->Visible;
    const auto at = static_cast<std::size_t>(offset);
    if (at >= content.size()) return SQLITE_IOERR_SHORT_READ;
    const std::size_t count =
        content.copy(static_cast<char*>(bytes), static_cast<std::size_t>(size), at);
    return count == static_cast<std::size_t>(size) ? SQLITE_OK : SQLITE_IOERR_SHORT_READ;
  }

  static int Write(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
    OpenFile& open = At(file);
    if (open.Disk->Fails()) return SQLITE_IOERR_WRITE;
    if (open.Disk->ReadOnly) return SQLITE_FULL;
    const auto end = static_cast<std::size_t>(offset) + static_cast<std::size_t>(size);
    if (open.Disk->Full && end > (*open.Target)->Visible.size()) return SQLITE_FULL;
    const std::string all(static_cast<const char*>(bytes), static_cast<std::size_t>(size));
    return open.Disk->Write(**open.Target, static_cast<std::size_t>(offset), all)
               ? SQLITE_OK
               : SQLITE_IOERR_WRITE;
  }

  static int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    OpenFile& open = At(file);
    if (open.Disk->Fails() || open.Disk->ReadOnly || !open.Disk->Step())
      return SQLITE_IOERR_TRUNCATE;
    const SimulatedDisk::Change change{static_cast<std::size_t>(size), std::nullopt};
    Apply((*open.Target)->Visible, change);
    (*open.Target)->Pending.push_back(change);
    return SQLITE_OK;
  }

  static int Sync(sqlite3_file* file, int) {
    OpenFile& open = At(file);
    if (open.Disk->Fails() || !open.Disk->Step()) return SQLITE_IOERR_FSYNC;
    ++open.Disk->Flushes;
    if (!open.Disk->LiesOfFlushing) {
      (*open.Target)->Durable = (*open.Target)->Visible;
      (*open.Target)->Pending.clear();
    }
    return open.Disk->Step() ? SQLITE_OK : SQLITE_IOERR_FSYNC;
  }

  static int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    *size = static_cast<sqlite3_int64>((*At(file).Target)->Visible.size());
    return At(file).Disk->Fails() ? SQLITE_IOERR_FSTAT : SQLITE_OK;
  }

  static int Lock(sqlite3_file* file, int level) {
    OpenFile& open = At(file);
    if (open.Level >= level) return SQLITE_OK;
    if (open.Disk->Fails()) return SQLITE_IOERR_LOCK;
    SimulatedDisk::Locks& locks = open.Disk->locks_[*open.Name];
    if (level == SQLITE_LOCK_SHARED) {
      if (locks.Pending || locks.Exclusive) return SQLITE_BUSY;
      ++locks.Shared;
    } else {
      if (locks.Reserved && locks.Reserved != file) return SQLITE_BUSY;
      locks.Reserved = file;
      if (level == SQLITE_LOCK_EXCLUSIVE) {
        locks.Pending = file;
        open.Level = SQLITE_LOCK_PENDING;
        if (locks.Shared > 1) return SQLITE_BUSY;
        locks.Exclusive = file;
      }
    }
    open.Level = level;
    return SQLITE_OK;
  }

  static int Unlock(sqlite3_file* file, int level) {
    OpenFile& open = At(file);
    SimulatedDisk::Locks& locks = open.Disk->locks_[*open.Name];
    for (const void** holder : {&locks.Reserved, &locks.Pending, &locks.Exclusive}) {
      if (*holder == file) *holder = nullptr;
    }
    if (level == SQLITE_LOCK_NONE && open.Level >= SQLITE_LOCK_SHARED) --locks.Shared;
    open.Level = std::min(open.Level, level);
    return SQLITE_OK;
  }

  static int CheckReserved(sqlite3_file* file, int* result) {
    OpenFile& open = At(file);
    *result = open.Disk->locks_[*open.Name].Reserved != nullptr;
    return open.Disk->Fails() ? SQLITE_IOERR_CHECKRESERVEDLOCK : SQLITE_OK;
  }

  static int Control(sqlite3_file*, int, void*) { return SQLITE_NOTFOUND; }
  static int SectorSize(sqlite3_file*) { return kSector; }
  static int Characteristics(sqlite3_file*) { return 0; }

  static const sqlite3_io_methods kMethods;
};

const sqlite3_io_methods DiskAccess::kMethods = {
    1,       &Close,         &Read,    &Write,      &Truncate,        &Sync,   &FileSize, &Lock,
    &Unlock, &CheckReserved, &Control, &SectorSize, &Characteristics, nullptr, nullptr,   nullptr,
    nullptr, nullptr,        nullptr};

SimulatedDisk::SimulatedDisk() {
  static std::atomic<int> count = 0;
  name_ = "simulated disk " + std::to_string(++count);
  sqlite3_initialize();
  auto* const system = new sqlite3_vfs(*sqlite3_vfs_find(nullptr));
  system->iVersion = 1;
  system->szOsFile = sizeof(OpenFile);
  system->pNext = nullptr;
  system->zName = name_.c_str();
  system->pAppData = this;
  system->xOpen = &DiskAccess::Open;
  system->xDelete = &DiskAccess::Delete;
  system->xAccess = &DiskAccess::Access;
  system->xFullPathname = &DiskAccess::FullPathname;
  sqlite3_vfs_register(system, 0);
  system_ = std::shared_ptr<void>(system, [system](void*) {
    sqlite3_vfs_unregister(system);
    delete system;
  });
}

SimulatedDisk::~SimulatedDisk() = default;

// Whether the machine still runs.
bool SimulatedDisk::Step() {
  if (HasStopped()) return false;
  ++steps_;
  return !HasStopped();
}

bool SimulatedDisk::Fails() {
  if (HasStopped()) return true;
  ++operations_;
  return fail_at_ > 0 && (operations_ == fail_at_ || (fails_for_good_ && operations_ > fail_at_));
}

bool SimulatedDisk::Write(File& file, std::size_t offset, std::string bytes) {
  if (!Step()) return false;
  const Change half{offset, bytes.substr(0, bytes.size() / 2)};
  Apply(file.Visible, half);
  file.Pending.push_back(half);
  if (!Step()) return false;
  ++Writes;
  file.Pending.back().Bytes = std::move(bytes);
  Apply(file.Visible, file.Pending.back());
  return Step();
}

std::string SimulatedDisk::AfterPowerFailure(const File& file, Loss loss,
                                             std::mt19937& random) const {
  std::string content = file.Durable.value_or("");
  for (Change change : file.Pending) {
    const auto fate = loss == Loss::Everything ? 0u : loss == Loss::Nothing ? 1u : random() % 3;
    if (fate == 1) continue;
    if (fate == 2 && change.Bytes) {
      for (std::size_t i = random() % (change.Bytes->size() + 1); i < change.Bytes->size(); ++i)
        (*change.Bytes)[i] = static_cast<char>(random() % 256);
    }
    Apply(content, change);
  }
  return content;
}

void SimulatedDisk::Restart(std::optional<Loss> loss, unsigned seed) {
  stop_at_ = 0;
  fail_at_ = 0;
  locks_.clear();
  if (!loss) return;
  std::mt19937 random(seed);
  for (const auto& [name, file] : removed_) {
    if (*loss == Loss::Nothing || (*loss == Loss::ByChance && random() % 2 == 0))
      files_.emplace(name, file);
  }
  removed_.clear();
  for (auto file = files_.begin(); file != files_.end();) {
    File& one = *file->second;
    const bool keeps_name =
        one.Durable || *loss == Loss::Everything || (*loss == Loss::ByChance && random() % 2 == 0);
    one.Visible = AfterPowerFailure(one, *loss, random);
    one.Pending.clear();
    one.Durable = one.Visible;
    file = keeps_name ? std::next(file) : files_.erase(file);
  }
}

SimulatedDisk::Files SimulatedDisk::Copy() const {
  Files copy;
  for (const auto& [name, file] : files_)
    copy[name] = std::make_shared<File>(*file);
  return copy;
}

void SimulatedDisk::Put(const Files& files) {
  files_.clear();
  removed_.clear();
  locks_.clear();
  for (const auto& [name, file] : files)
    files_[name] = std::make_shared<File>(*file);
}

}  // namespace krx::test
