#include "runtime/users/passwords/RefusedPasswords.h"

#include <algorithm>

#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {
namespace {

// Those of at least eight characters that head the lists of leaked passwords, in English and
// German, and what suggests itself on a panel.
constexpr StringView kCommon[] = {
    u"00000000",    u"11111111",   u"12341234",  u"12344321",      u"123123123",   u"12345678",
    u"123456789",   u"1234567890", u"1234qwer",  u"123qweasd",     u"1q2w3e4r",    u"1q2w3e4r5t",
    u"1qaz2wsx",    u"87654321",   u"987654321", u"Passw0rd",      u"Password",    u"Password1",
    u"Password123", u"Passwort",   u"Passwort1", u"Passwort123",   u"Willkommen",  u"abc12345",
    u"abcd1234",    u"abcdefgh",   u"admin123",  u"administrator", u"asdfasdf",    u"asdfghjk",
    u"asdfghjkl",   u"baseball",   u"changeme",  u"computer",      u"donotchange", u"engineer",
    u"football",    u"geheim123",  u"hallo123",  u"ichliebedich",  u"iloveyou",    u"letmein1",
    u"maintenance", u"operator",   u"princess",  u"qwer1234",      u"qwertyui",    u"qwertyuiop",
    u"qwertzui",    u"qwertzuiop", u"schalke04", u"service1",      u"startstart",  u"sunshine",
    u"superman",    u"supervisor", u"trustno1",  u"welcome1",      u"welcome123",  u"yxcvbnm1",
};

}  // namespace

RefusedPasswords::RefusedPasswords(const String& file, std::string_view bytes) {
  LineReader lines(file, bytes, kMalformedRules);
  while (lines.Next()) {
    if (!lines.Line().empty() && lines.Line().front() != '#')
      added_.push_back(lines.Text(lines.Line()));
  }
}

bool RefusedPasswords::Contains(const Password& password) const {
  const auto is_password = [&password](StringView refused) {
    return EqualIgnoringCase(refused, password.View());
  };
  return std::any_of(std::begin(kCommon), std::end(kCommon), is_password) ||
         std::any_of(added_.begin(), added_.end(), is_password);
}

}  // namespace krx::runtime
