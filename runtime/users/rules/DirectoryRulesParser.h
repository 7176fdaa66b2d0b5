#pragma once

#include <map>
#include <string>
#include <string_view>

#include "runtime/core/LineReader.h"
#include "runtime/users/rules/UserRules.h"

namespace krx::runtime {

// Reads the settings of the directory service out of the rules' file, all of which begin with
// "directory". What is wrong is refused with file, line and reason.
class DirectoryRulesParser {
 public:
  explicit DirectoryRulesParser(const LineReader& lines) : lines_(lines) {}

  // Takes the setting of the current line; false when there is none of this name.
  bool Take(std::string_view name, std::string_view value);
  // The settings, once all lines are read; `rules` has the classes.
  DirectoryRules Finish(const UserRules& rules);

 private:
  struct TextSetting;
  struct NumberSetting;
  struct ChoiceSetting;

  void TakeServers(std::string_view value);
  DirectoryServer Server(std::string_view text) const;
  void TakeGroup(std::string_view value);
  void TakeSearchIdentity(std::string_view value);
  bool TakeText(std::string_view name, std::string_view value);
  bool TakeNumber(std::string_view name, std::string_view value);
  bool TakeChoice(std::string_view name, std::string_view value);
  String Filter(std::string_view value) const;
  std::string Attribute(std::string_view value) const;

  const LineReader& lines_;
  DirectoryRules rules_;
  std::map<std::string, std::int32_t, std::less<>> seen_;  // and in which line
};

}  // namespace krx::runtime
