// After calls, late and early bound, no memory of the process holds a password any more.
#include <gtest/gtest.h>

#include <KorvelRuntime.h>
#include <bcrypt.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <vector>

#include "com/ComPtr.h"
#include "platform/Differences.h"
#include "runtime/users/administration/Provisioning.h"
#include "runtime/users/administration/UserDirectory.h"
#include "runtime/users/win32/Win32Clock.h"
#include "runtime/users/win32/Win32Cryptography.h"
#include "runtime/users/win32/Win32Files.h"
#include "support/MemoryScan.h"

namespace krx::test {
namespace {

using com::ComPtr;

constexpr char16_t kMask = 0x5555;

// A password that stands in the program only in disguise.
class Disguised {
 public:
  explicit constexpr Disguised(char16_t last) : last_(last) {}

  char16_t Unit(std::size_t i) const {
    return static_cast<char16_t>((i + 1 < kUnits.size() ? kUnits[i] : last_) ^ mask_);
  }
  static constexpr std::size_t Length() { return kUnits.size(); }
  BSTR Text() const {
    const BSTR text = SysAllocStringLen(nullptr, Length());
    for (std::size_t i = 0; i < Length(); ++i)
      text[i] = Unit(i);
    return text;
  }

 private:
  static constexpr std::array<char16_t, 28> kUnits = {
      'q' ^ kMask, 'Z' ^ kMask, '7' ^ kMask, 'k' ^ kMask, 'W' ^ kMask, 'v' ^ kMask, '3' ^ kMask,
      'X' ^ kMask, 'p' ^ kMask, 'J' ^ kMask, '9' ^ kMask, 'm' ^ kMask, 'T' ^ kMask, 'f' ^ kMask,
      'R' ^ kMask, '2' ^ kMask, 'h' ^ kMask, 'B' ^ kMask, 'x' ^ kMask, '8' ^ kMask, 'N' ^ kMask,
      'd' ^ kMask, 'L' ^ kMask, '5' ^ kMask, 'g' ^ kMask, 'Q' ^ kMask, 'y' ^ kMask, 0};
  char16_t last_;
  volatile char16_t mask_ = kMask;  // so that the compiler does not take the disguise off
};

void WipeAndFree(BSTR text) {
  SecureZeroMemory(text, SysStringByteLen(text));
  SysFreeString(text);
}

// Only its second half is looked for: some platforms write over the beginning of what is freed.
Copies InMemory(const Disguised& secret) {
  constexpr std::size_t kHalf = Disguised::Length() / 2;
  return CopiesIn(GetCurrentProcess(), Disguised::Length() - kHalf,
                  [&secret](std::size_t i) { return secret.Unit(kHalf + i); });
}

void ExpectForgotten(const Disguised& secret, const char* what) {
  const Copies found = InMemory(secret);
  EXPECT_EQ(found.Text, 0) << what;
  EXPECT_EQ(found.Bytes, 0) << what;
}

class SecretInMemory : public testing::Test {
 protected:
  SecretInMemory() {
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "users.conf") << "hash-iterations = 1000\n";
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", folder.c_str());
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Provision();
  }
  ~SecretInMemory() override {
    CoUninitialize();
    SetEnvironmentVariableW(L"KORVEL_USERS_FOLDER", nullptr);
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  }

  // The administrator's password is the first one.
  void Provision() {
    runtime::Win32Files files;
    runtime::Win32Cryptography crypto;
    runtime::Win32Clock clock;
    runtime::Session session;
    runtime::UserManagement management({files, crypto, clock}, folder, session);
    const Password generated = runtime::GeneratePassword(crypto, management.Rules());
    runtime::ProvisionFirstAdministrator(management, u"boss", generated);
    const BSTR text = first.Text();
    const Password own(StringView(reinterpret_cast<const char16_t*>(text), SysStringLen(text)));
    WipeAndFree(text);
    ASSERT_EQ(runtime::UserDirectory(management).ChangeUserPassword(u"boss", own, generated),
              host::ChangePasswordSucceeded);
  }

  // The result of a late-bound call; the arguments, in their order, are wiped and freed.
  static LONG Call(IDispatch& object, const wchar_t* method, std::vector<VARIANT> arguments) {
    DISPID id = 0;
    auto* name = const_cast<wchar_t*>(method);
    EXPECT_EQ(S_OK, object.GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id));
    LONG answer = -1;
    VARIANT result{};
    result.vt = VT_I4 | VT_BYREF;
    result.plVal = &answer;
    arguments.push_back(result);
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS passed{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    EXPECT_EQ(S_OK, object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &passed,
                                  nullptr, nullptr, nullptr));
    for (const VARIANT& argument : arguments)
      if (argument.vt == VT_BSTR) WipeAndFree(argument.bstrVal);
    return answer;
  }
  static VARIANT Text(BSTR text) {
    VARIANT value{};
    value.vt = VT_BSTR;
    value.bstrVal = text;
    return value;
  }
  static VARIANT Text(const wchar_t* text) { return Text(SysAllocString(text)); }
  template <class Type>
  static ComPtr<IDispatch> Create(const Type& id) {
    ComPtr<IDispatch> object;
    EXPECT_EQ(S_OK,
              CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.PutVoid()));
    return object;
  }

  std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                 ("krx-secret-" + std::to_string(GetCurrentProcessId()));
  const Disguised first{u'a' ^ kMask};
  const Disguised second{u'b' ^ kMask};
  const Disguised third{u'c' ^ kMask};
};

TEST_F(SecretInMemory, TheScanFindsWhatIsThere) {
  const BSTR text = second.Text();
  EXPECT_EQ(InMemory(second).Text, 1);
  WipeAndFree(text);
  EXPECT_EQ(InMemory(second).Text, 0);
}

TEST_F(SecretInMemory, LateBoundCallsLeaveNoPasswordBehind) {
  const ComPtr<IDispatch> session = Create(__uuidof(::UserSession));
  const ComPtr<IDispatch> users = Create(__uuidof(::UserAdministration));
  ASSERT_TRUE(session && users);
  EXPECT_EQ(Call(*session.Get(), L"LogOnUser", {Text(L"boss"), Text(first.Text())}),
            host::LogOnSucceeded);
  ExpectForgotten(first, "log-on");
  EXPECT_EQ(Call(*users.Get(), L"ChangeUserPassword",
                 {Text(L"boss"), Text(second.Text()), Text(first.Text())}),
            0);
  ExpectForgotten(first, "change, old password");
  ExpectForgotten(second, "change, new password");
  VARIANT date{};
  date.vt = VT_DATE;
  VARIANT state{};
  state.vt = VT_I4;
  state.lVal = 1;
  EXPECT_EQ(Call(*users.Get(), L"CreateUser",
                 {Text(L"anna"), Text(L""), Text(L""), Text(third.Text()), Text(L"Operator"), date,
                  state}),
            0);
  ExpectForgotten(third, "creation");
  EXPECT_EQ(Call(*session.Get(), L"LogOffUser", {}), 0);
}

// Where it is the system that keeps copies, its derivation alone does, and ours takes their places.
TEST_F(SecretInMemory, TheSystemsDerivationKeepsACopyAndOursDoesNot) {
  const auto derive = [](const Disguised& secret, const auto& derivation) {
    runtime::SecretBytes password(2 * Disguised::Length());
    for (std::size_t i = 0; i < Disguised::Length(); ++i) {
      password.Bytes()[2 * i] = static_cast<std::uint8_t>(secret.Unit(i) & 0xFF);
      password.Bytes()[2 * i + 1] = static_cast<std::uint8_t>(secret.Unit(i) >> 8);
    }
    std::vector<std::uint8_t> salt(16);
    std::vector<std::uint8_t> key(32);
    derivation(password.Bytes(), salt, key);
  };
  derive(second, [](auto password, auto& salt, auto& key) {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    ASSERT_EQ(0, BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_SHA256_ALGORITHM, nullptr,
                                             BCRYPT_ALG_HANDLE_HMAC_FLAG));
    EXPECT_EQ(0,
              BCryptDeriveKeyPBKDF2(algorithm, password.data(), static_cast<ULONG>(password.size()),
                                    salt.data(), static_cast<ULONG>(salt.size()), 1000, key.data(),
                                    static_cast<ULONG>(key.size()), 0));
    BCryptCloseAlgorithmProvider(algorithm, 0);
  });
  EXPECT_EQ(InMemory(second).Text > 0, Expected(kFreedCopiesStay, true, false));
  derive(third, [](auto password, auto& salt, auto& key) {
    runtime::Win32Cryptography().DeriveKey(password, salt, 1000, key);
  });
  EXPECT_EQ(InMemory(third).Text, 0);
}

// A text for one call, wiped like the others.
class Argument {
 public:
  explicit Argument(const Disguised& secret) : text_(secret.Text()) {}
  explicit Argument(const wchar_t* text) : text_(SysAllocString(text)) {}
  ~Argument() { WipeAndFree(text_); }
  Argument(const Argument&) = delete;
  Argument& operator=(const Argument&) = delete;
  operator BSTR() const { return text_; }

 private:
  BSTR text_;
};

TEST_F(SecretInMemory, EarlyBoundCallsLeaveNoPasswordBehind) {
  ComPtr<IUserSession> session;
  ComPtr<IUserAdministration> users;
  ASSERT_EQ(S_OK, CoCreateInstance(__uuidof(::UserSession), nullptr, CLSCTX_INPROC_SERVER,
                                   __uuidof(IUserSession), session.PutVoid()));
  ASSERT_EQ(S_OK, CoCreateInstance(__uuidof(::UserAdministration), nullptr, CLSCTX_INPROC_SERVER,
                                   __uuidof(IUserAdministration), users.PutVoid()));
  LONG answer = -1;
  EXPECT_EQ(S_OK, session->LogOnUser(Argument(L"boss"), Argument(first), &answer));
  EXPECT_EQ(answer, host::LogOnSucceeded);
  ExpectForgotten(first, "log-on");
  EXPECT_EQ(S_OK, users->ChangeUserPassword(Argument(L"boss"), Argument(second), Argument(first),
                                            &answer));
  EXPECT_EQ(answer, host::ChangePasswordSucceeded);
  ExpectForgotten(first, "change, old password");
  ExpectForgotten(second, "change, new password");
  EXPECT_EQ(S_OK, users->CreateUser(Argument(L"anna"), Argument(L""), Argument(L""),
                                    Argument(third), Argument(L"Operator"), 0, 1, &answer));
  EXPECT_EQ(answer, host::CreateUserSucceeded);
  ExpectForgotten(third, "creation");
  EXPECT_EQ(S_OK, session->LogOffUser(&answer));
}

}  // namespace
}  // namespace krx::test
