// After late-bound calls no memory of the process holds a password any more.
#include <gtest/gtest.h>

#include <KorvelRuntime.h>

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
  static constexpr std::array<char16_t, 14> kUnits = {
      'q' ^ kMask, 'Z' ^ kMask, '7' ^ kMask, 'k' ^ kMask, 'W' ^ kMask, 'v' ^ kMask, '3' ^ kMask,
      'X' ^ kMask, 'p' ^ kMask, 'J' ^ kMask, '9' ^ kMask, 'm' ^ kMask, 'T' ^ kMask, 0};
  char16_t last_;
  volatile char16_t mask_ = kMask;  // so that the compiler does not take the disguise off
};

void WipeAndFree(BSTR text) {
  SecureZeroMemory(text, SysStringByteLen(text));
  SysFreeString(text);
}

// How often the unit sequence stands in a piece of memory, as UTF-16 and in bytes.
template <class Unit>
int Count(const std::vector<std::uint8_t>& piece, std::size_t size, const Disguised& secret) {
  int found = 0;
  for (std::size_t at = 0; at + Disguised::Length() * sizeof(Unit) <= size; ++at) {
    std::size_t i = 0;
    for (; i < Disguised::Length(); ++i) {
      Unit unit{};
      std::memcpy(&unit, &piece[at + i * sizeof(Unit)], sizeof(Unit));
      if (unit != static_cast<Unit>(secret.Unit(i))) break;
    }
    if (i == Disguised::Length()) ++found;
  }
  return found;
}

struct Copies {
  int Text = 0;   // UTF-16
  int Bytes = 0;  // as it is hashed
};

// In the whole committed memory of this process.
Copies InMemory(const Disguised& secret) {
  constexpr std::size_t kPiece = 1 << 16;
  constexpr std::size_t kOverlap = 2 * Disguised::Length() - 1;
  static std::vector<std::uint8_t> piece(kPiece + kOverlap);
  Copies found;
  MEMORY_BASIC_INFORMATION region{};
  for (auto* at = static_cast<std::uint8_t*>(nullptr);
       VirtualQuery(at, &region, sizeof(region)) == sizeof(region);
       at = static_cast<std::uint8_t*>(region.BaseAddress) + region.RegionSize) {
    const bool is_readable =
        region.State == MEM_COMMIT && (region.Protect & (PAGE_NOACCESS | PAGE_GUARD)) == 0;
    for (std::size_t done = 0; is_readable && done < region.RegionSize; done += kPiece) {
      const std::size_t wanted = std::min<std::size_t>(piece.size(), region.RegionSize - done);
      SIZE_T read = 0;
      ReadProcessMemory(GetCurrentProcess(), static_cast<std::uint8_t*>(region.BaseAddress) + done,
                        piece.data(), wanted, &read);
      found.Text += Count<char16_t>(piece, read, secret);
      found.Bytes += Count<std::uint8_t>(piece, read, secret);
      SecureZeroMemory(piece.data(), piece.size());
    }
  }
  return found;
}

void ExpectForgotten(const Disguised& secret, const char* what) {
  const Copies found = InMemory(secret);
  const int stay = Expected(kFreedCopiesStay, 1, 0);
  EXPECT_LE(found.Text, stay) << what;
  EXPECT_LE(found.Bytes, stay) << what;
}

class SecretInMemory : public testing::Test {
 protected:
  SecretInMemory() {
    folder = std::filesystem::temp_directory_path() /
             ("krx-secret-" + std::to_string(GetCurrentProcessId()));
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

  std::filesystem::path folder;
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

}  // namespace
}  // namespace krx::test
