#include "runtime/core/Languages.h"

#include <utility>

#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr StringView kLastResort = u"en";

// Letters and digits in parts joined by "-". The name becomes a part of a file name, so nothing
// that could lead to another folder passes.
bool IsLanguageName(StringView name) {
  bool in_part = false;
  for (const char16_t unit : name) {
    const bool letter = unit >= u'a' && unit <= u'z';
    const bool digit = unit >= u'0' && unit <= u'9';
    if (!letter && !digit && !(unit == u'-' && in_part)) return false;
    in_part = unit != u'-';
  }
  return in_part && name.size() <= 32;
}

}  // namespace

void Languages::Select(StringView name) {
  const std::lock_guard lock(mutex_);
  if (name.empty()) {
    choice_ = ChooseSystem();
    return;
  }
  Choice choice = Choose(AsciiLower(name));
  if (choice.Name.empty()) {
    throw KorvelError(kInvalidArgument, u"There are no texts for the language \"" + String(name) +
                                            u"\". Name \"de\", \"en\" or the language of a file "
                                            u"KorvelTexts.<language>.txt.");
  }
  choice_ = std::move(choice);
}

String Languages::Current() {
  const std::lock_guard lock(mutex_);
  return InForce().Name;
}

std::optional<String> Languages::Find(StringView key, std::int32_t group) {
  const std::lock_guard lock(mutex_);
  for (const auto& table : InForce().Tables) {
    if (const String* text = table->Find(key, group)) return *text;
  }
  return std::nullopt;
}

String Languages::Text(StringView key, std::int32_t group) {
  return Find(key, group).value_or(String(key));
}

// The language and what it falls back to. Its name stays empty if neither it nor the language
// without its region has texts.
Languages::Choice Languages::Choose(const String& name) {
  Choice choice;
  if (IsLanguageName(name)) {
    for (String part = name; !part.empty();) {
      if (auto table = Table(part)) {
        if (choice.Name.empty()) choice.Name = part;
        choice.Tables.push_back(std::move(table));
      }
      const std::size_t region = part.rfind(u'-');
      part.resize(region == String::npos ? 0 : region);
    }
  }
  if (auto last_resort = Table(String(kLastResort))) choice.Tables.push_back(last_resort);
  return choice;
}

Languages::Choice Languages::ChooseSystem() {
  Choice choice = Choose(AsciiLower(source_.SystemLanguage()));
  if (choice.Name.empty()) choice.Name = kLastResort;
  return choice;
}

const Languages::Choice& Languages::InForce() {
  if (!choice_) choice_ = ChooseSystem();
  return *choice_;
}

// Null if the language is unknown. That is not remembered, so a file brought later is found.
std::shared_ptr<const TextTable> Languages::Table(const String& language) {
  if (const auto known = tables_.find(language); known != tables_.end()) return known->second;
  const std::vector<TextFile> files = source_.Read(language);
  if (files.empty()) return nullptr;
  auto table = std::make_shared<TextTable>();
  for (const TextFile& file : files)
    table->Add(file.Name, file.Bytes);
  return tables_[language] = std::move(table);
}

}  // namespace krx::runtime
