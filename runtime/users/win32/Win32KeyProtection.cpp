#include "runtime/users/win32/Win32KeyProtection.h"

#include <windows.h>

#include <dpapi.h>
#include <wincrypt.h>

#include <algorithm>
#include <utility>

#include "com/SystemLibrary.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

Error Failure(String reason) {
  return KorvelError(kCryptographyFailure, std::move(reason));
}

struct DataProtection {
  static const DataProtection& Get() {
    static const DataProtection functions;
    return functions;
  }

  decltype(&::CryptProtectData) Protect;
  decltype(&::CryptUnprotectData) Unprotect;

 private:
  DataProtection() {
    const com::SystemLibrary library(L"crypt32.dll", Failure);
    library.Find(Protect, "CryptProtectData");
    library.Find(Unprotect, "CryptUnprotectData");
  }
};

// What the system hands out, wiped when it goes.
struct Blob {
  Blob() = default;
  Blob(const Blob&) = delete;
  Blob& operator=(const Blob&) = delete;
  ~Blob() {
    Wipe(Data.pbData, Data.cbData);
    LocalFree(Data.pbData);
  }

  DATA_BLOB Data{};
};

// The functions take pointers to writable memory though they only read it.
DATA_BLOB Input(const void* bytes, std::size_t size) {
  return {static_cast<DWORD>(size), static_cast<BYTE*>(const_cast<void*>(bytes))};
}

}  // namespace

std::string Win32KeyProtection::Seal(std::span<const std::uint8_t> secret) {
  DATA_BLOB input = Input(secret.data(), secret.size());
  Blob sealed;
  if (!DataProtection::Get().Protect(&input, nullptr, nullptr, nullptr, nullptr,
                                     CRYPTPROTECT_LOCAL_MACHINE | CRYPTPROTECT_UI_FORBIDDEN,
                                     &sealed.Data)) {
    throw Failure(u"protecting a key: " + com::SystemMessage(HRESULT_FROM_WIN32(GetLastError())));
  }
  return {reinterpret_cast<const char*>(sealed.Data.pbData), sealed.Data.cbData};
}

std::optional<SecretBytes> Win32KeyProtection::Open(std::string_view sealed) {
  DATA_BLOB input = Input(sealed.data(), sealed.size());
  Blob opened;
  if (sealed.empty() || !DataProtection::Get().Unprotect(&input, nullptr, nullptr, nullptr, nullptr,
                                                         CRYPTPROTECT_UI_FORBIDDEN, &opened.Data)) {
    return std::nullopt;
  }
  SecretBytes secret(opened.Data.cbData);
  std::copy_n(opened.Data.pbData, opened.Data.cbData, secret.Bytes().begin());
  return secret;
}

}  // namespace krx::runtime
