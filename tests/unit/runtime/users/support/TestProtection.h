#pragma once

#include "runtime/users/passwords/KeyProtection.h"

namespace krx::test {

// Seals by the number of a machine, with a mark that shows what it was.
class TestProtection : public runtime::KeyProtection {
 public:
  std::string Seal(std::span<const std::uint8_t> secret) override {
    std::string sealed{Machine, static_cast<char>(secret.size())};
    for (const std::uint8_t byte : secret)
      sealed += static_cast<char>(byte ^ 0xA5 ^ Machine);
    return sealed;
  }
  std::optional<runtime::SecretBytes> Open(std::string_view sealed) override {
    if (sealed.size() < 2 || sealed[0] != Machine ||
        sealed.size() - 2 != static_cast<unsigned char>(sealed[1]))
      return std::nullopt;
    runtime::SecretBytes secret(sealed.size() - 2);
    for (std::size_t i = 2; i < sealed.size(); ++i)
      secret.Bytes()[i - 2] = static_cast<std::uint8_t>(sealed[i] ^ 0xA5 ^ Machine);
    return secret;
  }

  char Machine = 1;
};

}  // namespace krx::test
