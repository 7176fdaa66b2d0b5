#include "support/TestCryptography.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <unicode/unorm2.h>

#include <mutex>

#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/SecretBytes.h"
#include "runtime/users/rules/Names.h"

namespace krx::test {
namespace {

std::mutex random_guard;

}  // namespace

void TestCryptography::DeriveKey(std::span<const std::uint8_t> password,
                                 std::span<const std::uint8_t> salt, std::uint32_t iterations,
                                 std::span<std::uint8_t> key) {
  ++Derivations;
  Iterations += iterations;
  if (Fails) throw runtime::KorvelError(runtime::kCryptographyFailure, u"no cryptography");
  const char* const text = password.empty() ? "" : reinterpret_cast<const char*>(password.data());
  if (PKCS5_PBKDF2_HMAC(text, static_cast<int>(password.size()), salt.data(),
                        static_cast<int>(salt.size()), static_cast<int>(IsQuick ? 1 : iterations),
                        EVP_sha256(), static_cast<int>(key.size()), key.data()) != 1) {
    throw runtime::KorvelError(runtime::kCryptographyFailure, u"the derivation failed");
  }
}

runtime::Digest TestCryptography::Hash(std::span<const std::uint8_t> bytes) {
  runtime::Digest digest{};
  if (HashFails ||
      EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, EVP_sha256(), nullptr) != 1)
    throw runtime::KorvelError(runtime::kCryptographyFailure, u"the digest failed");
  return digest;
}

runtime::Digest TestCryptography::Authenticate(std::span<const std::uint8_t> key,
                                               std::span<const std::uint8_t> bytes) {
  runtime::Digest digest{};
  if (HMAC(EVP_sha256(), key.data(), static_cast<int>(key.size()), bytes.data(), bytes.size(),
           digest.data(), nullptr) == nullptr)
    throw runtime::KorvelError(runtime::kCryptographyFailure, u"the authentication failed");
  return digest;
}

void TestCryptography::FillRandom(std::span<std::uint8_t> bytes) {
  const std::lock_guard lock(random_guard);
  for (std::uint8_t& byte : bytes)
    byte = static_cast<std::uint8_t>(random_() & 0xFF);
}

Password TestCryptography::Normalized(const Password& password) {
  const StringView units = password.View();
  if (!runtime::IsWellFormed(units)) return Password(units);
  UErrorCode status = U_ZERO_ERROR;
  const auto most = static_cast<int32_t>(3 * units.size());
  runtime::SecretBytes memory(static_cast<std::size_t>(most) * sizeof(char16_t));
  auto* const normal = reinterpret_cast<char16_t*>(memory.Bytes().data());
  const int32_t made = unorm2_normalize(unorm2_getNFCInstance(&status), units.data(),
                                        static_cast<int32_t>(units.size()), normal, most, &status);
  if (U_FAILURE(status))
    throw runtime::KorvelError(runtime::kCryptographyFailure, u"no normal form");
  return Password({normal, static_cast<std::size_t>(made)});
}

}  // namespace krx::test
