#include "runtime/users/store/StoreFile.h"

#include <stdexcept>
#include <utility>

#include "runtime/users/store/StoreFormat.h"

namespace krx::runtime {

StoreFile::StoreFile(Files& files, std::filesystem::path folder)
    : files_(files),
      folder_(std::move(folder)),
      file_(folder_ / "users.dat"),
      replacement_(folder_ / "users.new") {}

StoreFile::Hold::Hold(StoreFile& store)
    : store_(store), lock_(store.files_.Lock(store.folder_ / "users.lock")) {}

std::shared_ptr<const UserStore> StoreFile::Hold::Read() {
  std::optional<std::string> bytes = store_.files_.Read(store_.file_);
  if (!bytes) bytes = store_.Recover();
  std::shared_ptr<const UserStore> users;
  if (bytes) users = store_.Parsed(std::move(*bytes));
  has_read_ = true;
  return users;
}

void StoreFile::Hold::Save(const UserStore& store) {
  if (!has_read_) throw std::logic_error("a store is replaced that has not been read");
  try {
    const std::string bytes = Serialize(store);
    store_.files_.WriteFlushed(store_.replacement_, bytes);
    Replace(bytes);
  } catch (const Error& failure) {
    throw UnableToSave(failure.Description());
  }
}

void StoreFile::Hold::Replace(const std::string& bytes) {
  Files& files = store_.files_;
  try {
    files.Replace(store_.replacement_, store_.file_);
  } catch (const Error&) {
    // On some file systems a replacement can fail half-way, with the old file gone and the new one
    // not yet in its place, or be reported as failed although it was done.
    const std::optional<std::string> found = files.Read(store_.file_);
    if (found == bytes) return;
    if (found) throw;
    files.Replace(store_.replacement_, store_.file_);
  }
}

// A replacement that was interrupted half-way left the whole new store under its first name.
std::optional<std::string> StoreFile::Recover() {
  std::optional<std::string> bytes = files_.Read(replacement_);
  if (!bytes) return std::nullopt;
  try {
    ParseStore(replacement_.u16string(), *bytes);
  } catch (const Error&) {
    return std::nullopt;  // cut off while the very first store was written: there never was one
  }
  files_.Replace(replacement_, file_);
  return bytes;
}

std::shared_ptr<const UserStore> StoreFile::Parsed(std::string bytes) {
  const std::lock_guard lock(guard_);
  if (cached_ == nullptr || bytes != cached_bytes_) {
    cached_ = std::make_shared<const UserStore>(ParseStore(file_.u16string(), bytes));
    cached_bytes_ = std::move(bytes);
  }
  return cached_;
}

}  // namespace krx::runtime
