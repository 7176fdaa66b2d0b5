#include "runtime/users/passwords/CommonPasswords.h"

#include <algorithm>

#include "runtime/users/passwords/SecretBytes.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

// What the list lacks: German ones, and what suggests itself on a panel.
constexpr StringView kOfPanels[] = {
    u"00000000",      u"12341234", u"123123123",   u"87654321",    u"987654321",    u"abcdefgh",
    u"administrator", u"Passwort", u"Passwort1",   u"Passwort123", u"Willkommen",   u"donotchange",
    u"geheim123",     u"yxcvbnm1", u"maintenance", u"startstart",  u"ichliebedich", u"supervisor",
};

constexpr std::size_t kLongest = 64;  // no listed one is longer

// The line of a sorted list that `at` lies in.
std::string_view LineAt(std::string_view list, std::size_t at) {
  const std::size_t before = at == 0 ? list.npos : list.rfind('\n', at - 1);
  const std::size_t begin = before == list.npos ? 0 : before + 1;
  return list.substr(begin, list.find('\n', begin) - begin);
}

bool IsListed(std::string_view list, std::string_view word) {
  while (!list.empty()) {
    const std::string_view line = LineAt(list, list.size() / 2);
    if (line == word) return true;
    const auto begin = static_cast<std::size_t>(line.data() - list.data());
    list = word < line ? list.substr(0, begin) : list.substr(begin + line.size() + 1);
  }
  return false;
}

}  // namespace

bool IsCommonPassword(const Password& password) {
  const StringView units = password.View();
  const auto is_password = [units](StringView one) { return EqualIgnoringCase(one, units); };
  if (std::any_of(std::begin(kOfPanels), std::end(kOfPanels), is_password)) return true;
  const auto is_foreign = [](char16_t unit) { return unit > u'~'; };
  if (units.size() > kLongest || std::any_of(units.begin(), units.end(), is_foreign)) return false;
  SecretBytes word(units.size());
  std::transform(units.begin(), units.end(), word.Bytes().begin(), [](char16_t unit) {
    return static_cast<std::uint8_t>(unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit);
  });
  return IsListed(CommonPasswords(),
                  {reinterpret_cast<const char*>(word.Bytes().data()), word.Bytes().size()});
}

}  // namespace krx::runtime
