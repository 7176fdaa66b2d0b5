#include "driver/Texts.h"

#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

#include "runtime/core/TextTable.h"

namespace krx::drive {

namespace {

// By key alone, for no key stands in two groups.
using Texts = std::map<std::string, String>;

Texts Read(const std::string& language) {
  const std::string path = KRX_TEXTS "/" + language + ".txt";
  std::ostringstream bytes;
  if (!(bytes << std::ifstream(path, std::ios::binary).rdbuf()))
    throw std::runtime_error("there is no " + path);
  runtime::TextTable table;
  table.Add(String(path.begin(), path.end()), bytes.str());
  Texts texts;
  for (const auto& [name, text] : table.Entries()) {
    if (!texts.emplace(ToUtf8(name.second), text).second)
      throw std::runtime_error(ToUtf8(name.second) + " stands in two groups of " + path);
  }
  return texts;
}

}  // namespace

std::wstring Text(const std::string& key, const std::string& language) {
  static std::map<std::string, Texts> languages;
  Texts& texts = languages[language];
  if (texts.empty()) texts = Read(language);
  const auto found = texts.find(key);
  if (found == texts.end()) throw std::runtime_error("no text of the key " + key);
  std::wstring text(found->second.begin(), found->second.end());
  std::erase(text, L'&');
  return text;
}

}  // namespace krx::drive
