#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/String.h"
#include "runtime/core/TextTable.h"

namespace krx::runtime {

// One file of texts as it was found: its name for messages, and its bytes.
struct TextFile {
  String Name;
  std::string Bytes;
};

// Where texts come from and which language the operator's system speaks.
class TextSource {
 public:
  virtual ~TextSource() = default;
  // The text files of a language ("de", "pt-br": lower case), later ones replacing texts of
  // earlier ones; none if the language is unknown. A file that cannot be read raises Error.
  virtual std::vector<TextFile> Read(const String& language) = 0;
  // Name of the system's language, for example "de-DE".
  virtual String SystemLanguage() = 0;
};

// The texts of the runtime in its current language; safe to use from several threads.
//
// A language is read when it is first needed. A key that it lacks is looked up in the language
// without its region ("pt" for "pt-br"), then in English.
class Languages {
 public:
  explicit Languages(TextSource& source) : source_(source) {}

  // Makes a language the current one; an empty name follows the operator's system, and English
  // where that language is unknown. An unknown name or a malformed file raises Error and leaves
  // the current language as it was.
  void Select(StringView name);

  // Name of the language in force.
  String Current();

  // The text in the current language, then English; nothing if the key is unknown.
  std::optional<String> Find(StringView key, std::int32_t group);

  // As Find; the key itself if it is unknown.
  String Text(StringView key, std::int32_t group);

 private:
  struct Choice {
    String Name;
    std::vector<std::shared_ptr<const TextTable>> Tables;  // in the order of the search
  };

  Choice Choose(const String& name);
  Choice ChooseSystem();
  const Choice& InForce();
  std::shared_ptr<const TextTable> Table(const String& language);

  TextSource& source_;
  std::mutex mutex_;
  std::map<String, std::shared_ptr<const TextTable>> tables_;
  std::optional<Choice> choice_;
};

}  // namespace krx::runtime
