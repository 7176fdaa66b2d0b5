#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "runtime/users/passwords/KeyProtection.h"

namespace krx::test {

// What a machine's protection of keys promises, the system's and that of the tests alike.
inline void KeepsItsContract(runtime::KeyProtection& protection) {
  std::vector<std::uint8_t> secret(96);
  for (std::size_t i = 0; i < secret.size(); ++i)
    secret[i] = static_cast<std::uint8_t>(7 * i + 1);
  const std::string sealed = protection.Seal(secret);
  const auto opened = protection.Open(sealed);
  ASSERT_TRUE(opened.has_value());
  EXPECT_TRUE(std::ranges::equal(opened->Bytes(), secret));

  const std::string plain(secret.begin(), secret.end());
  EXPECT_EQ(sealed.find(plain.substr(0, 8)), std::string::npos) << "the secret can be read";
  EXPECT_EQ(sealed.find(plain.substr(88)), std::string::npos) << "the secret can be read";
  EXPECT_NE(protection.Seal(std::vector<std::uint8_t>(96, 1)), sealed);

  EXPECT_FALSE(protection.Open("").has_value());
  EXPECT_FALSE(protection.Open("no sealed secret").has_value());
  EXPECT_FALSE(protection.Open(sealed.substr(0, sealed.size() / 2)).has_value());
}

}  // namespace krx::test
