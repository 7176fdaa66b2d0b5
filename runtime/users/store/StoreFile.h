#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "runtime/core/KorvelError.h"
#include "runtime/users/store/UserStore.h"
#include "runtime/users/system/Files.h"

namespace krx::runtime {

// The store could not be written; the old one is still in force.
class UnableToSave : public Error {
 public:
  explicit UnableToSave(String description)
      : Error(KorvelError(kUnableToSaveUsers, std::move(description))) {}
};

// The stored users of one folder: read as a whole, replaced as a whole. Whatever happens while it
// is replaced, the store is the old or the new one; a store that cannot be read is never written.
class StoreFile {
 public:
  StoreFile(Files& files, std::filesystem::path folder);

  // The store, held against every other thread and process until this object goes.
  class Hold {
   public:
    explicit Hold(StoreFile& store);

    // The users, or null when there is no store. A store that is damaged, unreadable or of another
    // version raises Error and stays as it is.
    std::shared_ptr<const UserStore> Read();
    // Replaces the store; raises UnableToSave, and then the old one is still in force. Only after
    // Read has shown what is replaced.
    void Save(const UserStore& store);

   private:
    void Replace(const std::string& bytes);

    StoreFile& store_;
    std::unique_ptr<FileLock> lock_;
    bool has_read_ = false;
  };

  const std::filesystem::path& Folder() const { return folder_; }

 private:
  std::shared_ptr<const UserStore> Parsed(std::string bytes);
  std::optional<std::string> Recover();

  Files& files_;
  std::filesystem::path folder_;
  std::filesystem::path file_;
  std::filesystem::path replacement_;

  // The users of the bytes that were read last: lists of users ask for one user after the other.
  std::mutex guard_;
  std::string cached_bytes_;
  std::shared_ptr<const UserStore> cached_;
};

}  // namespace krx::runtime
