#include "runtime/users/passwords/RefusedPasswords.h"

#include <algorithm>
#include <utility>

#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {

RefusedPasswords::RefusedPasswords(const String& file, std::string_view bytes,
                                   Cryptography* cryptography) {
  LineReader lines(file, bytes, kMalformedRules);
  while (lines.Next()) {
    if (lines.Line().empty() || lines.Line().front() == '#') continue;
    String text = lines.Text(lines.Line());
    if (cryptography != nullptr) text = cryptography->Normalized(Password(text)).View();
    added_.push_back(std::move(text));
  }
}

bool RefusedPasswords::Contains(const Password& password) const {
  const auto is_password = [&password](StringView refused) {
    return EqualIgnoringCase(refused, password.View());
  };
  return std::any_of(added_.begin(), added_.end(), is_password);
}

}  // namespace krx::runtime
