#include "runtime/users/win32/Win32Cryptography.h"

#include <windows.h>

#include <bcrypt.h>

#include <algorithm>
#include <array>
#include <vector>

#include "runtime/core/KorvelError.h"
#include "runtime/users/passwords/PasswordHash.h"
#include "runtime/users/passwords/SecretBytes.h"

namespace krx::runtime {
namespace {

void Check(NTSTATUS status, const char16_t* what) {
  if (status >= 0) return;
  String digits;
  for (int shift = 28; shift >= 0; shift -= 4)
    digits += u"0123456789ABCDEF"[(static_cast<std::uint32_t>(status) >> shift) & 0xF];
  throw KorvelError(kCryptographyFailure, String(what) + u" failed with status 0x" + digits);
}

// The functions take pointers to writable memory though they only read it.
PUCHAR Input(std::span<const std::uint8_t> bytes) {
  static std::uint8_t empty = 0;
  return bytes.empty() ? &empty : const_cast<PUCHAR>(bytes.data());
}

}  // namespace

Win32Cryptography::Win32Cryptography() {
  Check(BCryptOpenAlgorithmProvider(&algorithm_, BCRYPT_SHA256_ALGORITHM, nullptr,
                                    BCRYPT_ALG_HANDLE_HMAC_FLAG),
        u"opening HMAC-SHA256");
  try {
    Check(BCryptOpenAlgorithmProvider(&digest_, BCRYPT_SHA256_ALGORITHM, nullptr, 0),
          u"opening SHA-256");
  } catch (...) {
    BCryptCloseAlgorithmProvider(algorithm_, 0);
    throw;
  }
}

Win32Cryptography::~Win32Cryptography() {
  BCryptCloseAlgorithmProvider(digest_, 0);
  BCryptCloseAlgorithmProvider(algorithm_, 0);
}

void Win32Cryptography::DeriveKey(std::span<const std::uint8_t> password,
                                  std::span<const std::uint8_t> salt, std::uint32_t iterations,
                                  std::span<std::uint8_t> key) {
  Check(BCryptDeriveKeyPBKDF2(algorithm_, Input(password), static_cast<ULONG>(password.size()),
                              Input(salt), static_cast<ULONG>(salt.size()), iterations, key.data(),
                              static_cast<ULONG>(key.size()), 0),
        u"deriving a key");
  TakePlaces(salt, password.size());
}

// The system does not wipe what it notes of a password, as seen under Wine; the same work on zeros
// takes its places in memory.
void Win32Cryptography::TakePlaces(std::span<const std::uint8_t> salt, std::size_t size) {
  constexpr int kTimes = 4;
  const std::vector<std::uint8_t> zeros(size);
  std::array<std::uint8_t, kKeySize> key{};
  for (int i = 0; i < kTimes; ++i) {
    Check(BCryptDeriveKeyPBKDF2(algorithm_, Input(zeros), static_cast<ULONG>(size), Input(salt),
                                static_cast<ULONG>(salt.size()), 1, key.data(),
                                static_cast<ULONG>(key.size()), 0),
          u"deriving a key");
  }
}

Digest Win32Cryptography::Hash(std::span<const std::uint8_t> bytes) {
  Digest digest{};
  Check(BCryptHash(digest_, nullptr, 0, Input(bytes), static_cast<ULONG>(bytes.size()),
                   digest.data(), static_cast<ULONG>(digest.size())),
        u"hashing");
  return digest;
}

Digest Win32Cryptography::Authenticate(std::span<const std::uint8_t> key,
                                       std::span<const std::uint8_t> bytes) {
  Digest digest{};
  Check(BCryptHash(algorithm_, Input(key), static_cast<ULONG>(key.size()), Input(bytes),
                   static_cast<ULONG>(bytes.size()), digest.data(),
                   static_cast<ULONG>(digest.size())),
        u"authenticating");
  return digest;
}

void Win32Cryptography::FillRandom(std::span<std::uint8_t> bytes) {
  Check(BCryptGenRandom(nullptr, bytes.data(), static_cast<ULONG>(bytes.size()),
                        BCRYPT_USE_SYSTEM_PREFERRED_RNG),
        u"generating random bytes");
}

Password Win32Cryptography::Normalized(const Password& password) {
  const StringView units = password.View();
  const auto is_ascii = [](char16_t unit) { return unit < 0x80; };
  if (std::all_of(units.begin(), units.end(), is_ascii)) return Password(units);
  static_assert(sizeof(wchar_t) == sizeof(char16_t));
  const auto* const text = reinterpret_cast<const wchar_t*>(units.data());
  const int length = static_cast<int>(units.size());
  const int most = 3 * length;  // no character has more parts in this form
  SecretBytes memory(static_cast<std::size_t>(most) * sizeof(wchar_t));
  auto* const normal = reinterpret_cast<wchar_t*>(memory.Bytes().data());
  const int made = NormalizeString(NormalizationC, text, length, normal, most);
  if (made > 0)
    return Password({reinterpret_cast<const char16_t*>(normal), static_cast<std::size_t>(made)});
  if (GetLastError() == ERROR_NO_UNICODE_TRANSLATION) return Password(units);
  throw KorvelError(kCryptographyFailure, u"a password cannot be normalised");
}

}  // namespace krx::runtime
