#include "runtime/users/passwords/RefusedPasswords.h"

#include <algorithm>

#include "runtime/core/KorvelError.h"
#include "runtime/core/LineReader.h"
#include "runtime/users/rules/Names.h"

namespace krx::runtime {

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
  return std::any_of(added_.begin(), added_.end(), is_password);
}

}  // namespace krx::runtime
