#include <gtest/gtest.h>

#include <array>
#include <string>

#include "ControlsForm.h"
#include "Person.h"
#include "SelfProcess.h"
#include "platform/Platform.h"

namespace krx::test {

namespace {

constexpr const wchar_t* kWindow = L"KRX_TEST_WINDOW";
constexpr std::array<WORD, 12> kKeys{'Q', 'X', '7', 'Z', 'V', '3', 'K', 'W', '9', 'J', 'Y', '5'};

// The characters of the secret; never all of them side by side in the test's own memory.
wchar_t SecretUnit(std::size_t i) {
  const WORD key = kKeys[i];
  return static_cast<wchar_t>(key >= 'A' ? key + ('a' - 'A') : key);
}

bool IsSecret(const wchar_t* text) {
  for (std::size_t i = 0; i < kKeys.size(); ++i)
    if (text[i] != SecretUnit(i)) return false;
  return true;
}

std::wstring Read(HWND window, UINT message) {
  std::array<wchar_t, 64> text{};
  text[0] = message == EM_GETLINE ? static_cast<wchar_t>(text.size()) : L'\0';
  const WPARAM w = message == EM_GETLINE ? 0 : text.size();
  const auto length = SendMessageW(window, message, w, reinterpret_cast<LPARAM>(text.data()));
  return std::wstring(text.data(), static_cast<std::size_t>(length));
}

// Tries everything that once read such boxes.
void ExpectNothingReadable(HWND box) {
  const std::wstring mask(kKeys.size(), L'*');
  const auto look = [&](const char* after) {
    EXPECT_EQ(Read(box, WM_GETTEXT), mask) << after;
    const std::wstring line = MayAskForLine(box) ? Read(box, EM_GETLINE) : std::wstring();
    EXPECT_EQ(line.find_first_not_of(L'*'), std::wstring::npos) << after;
    std::array<wchar_t, 64> text{};
    GetWindowTextW(box, text.data(), static_cast<int>(text.size()));
    EXPECT_EQ(std::wstring(text.data()).find_first_not_of(L'*'), std::wstring::npos) << after;
  };
  look("as it is");
  SendMessageW(box, EM_SETPASSWORDCHAR, 0, 0);
  look("without the password character");
  PostMessageW(box, EM_SETPASSWORDCHAR, 0, 0);
  SendMessageW(box, WM_NULL, 0, 0);
  look("without the password character, posted");
  SetWindowLongW(box, GWL_STYLE, GetWindowLongW(box, GWL_STYLE) & ~ES_PASSWORD);
  SendMessageW(box, EM_SETSEL, 0, -1);
  SendMessageW(box, WM_COPY, 0, 0);
  look("without the style");
}

// All places of this process's memory that hold the secret.
int Copies() {
  int found = 0;
  MEMORY_BASIC_INFORMATION block{};
  const char* at = nullptr;
  while (VirtualQuery(at, &block, sizeof block) == sizeof block) {
    at = static_cast<const char*>(block.BaseAddress) + block.RegionSize;
    if (block.State != MEM_COMMIT || block.Protect != PAGE_READWRITE) continue;
    const auto* unit = static_cast<const wchar_t*>(block.BaseAddress);
    const auto* const end = reinterpret_cast<const wchar_t*>(at) - kKeys.size();
    for (; unit < end; ++unit)
      found += IsSecret(unit);
  }
  return found;
}

class PasswordSecrecy : public testing::Test {
 protected:
  PasswordSecrecy() { form.txtPassword.TabIndex = 0; }

  void TypeAnd(const std::function<void(Person&, HWND)>& then) {
    ShowWith(form, [&](Person& person) {
      const HWND box = person.Control(person.AwaitForm(u"FControls"), u"txtPassword");
      person.AwaitFocus(box);
      for (const WORD key : kKeys)
        person.Press(key);
      person.Await([&] { return TextOf(box).size() == kKeys.size(); }, "the text");
      then(person, box);
      person.Press(VK_ESCAPE);
    });
  }

  win32::Win32Platform platform;
  ControlsForm form{platform};
};

TEST_F(PasswordSecrecy, NoOtherThreadReadsTheText) {
  TypeAnd([](Person&, HWND box) { ExpectNothingReadable(box); });
  EXPECT_TRUE(IsSecret(reinterpret_cast<const wchar_t*>(form.txtPassword.Text().View().data())));
}

TEST_F(PasswordSecrecy, NoOtherProcessReadsTheText) {
  TypeAnd([](Person&, HWND box) {
    const std::wstring handle = std::to_wstring(reinterpret_cast<ULONG_PTR>(box));
    EXPECT_EQ(RunSelf(L"PasswordSpy.*", kWindow, handle), 0u);
  });
  EXPECT_TRUE(IsSecret(reinterpret_cast<const wchar_t*>(form.txtPassword.Text().View().data())));
}

TEST(PasswordSpy, ReadsNothing) {
  const auto handle = GivenNumber(kWindow);
  if (!handle) GTEST_SKIP() << "not started by the test of the password box";
  const auto box = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(*handle));
  ASSERT_TRUE(IsWindow(box));
  ASSERT_NE(GetWindowThreadProcessId(box, nullptr), GetCurrentThreadId());
  ExpectNothingReadable(box);
}

// A password store fills the box in.
TEST_F(PasswordSecrecy, AnotherProgramMaySetTheText) {
  ShowWith(form, [&](Person& person) {
    const HWND box = person.Control(person.AwaitForm(u"FControls"), u"txtPassword");
    SendMessageW(box, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"stored"));
    EXPECT_EQ(TextOf(box), u"******");
    SendMessageW(box, EM_SETSEL, 0, 3);
    SendMessageW(box, EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(L"fl"));
    EXPECT_EQ(TextOf(box), u"*****");
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(ToUtf8(form.txtPassword.Text().View()), "flred");
}

TEST_F(PasswordSecrecy, OnlyTheModelHoldsTheText) {
  TypeAnd([](Person&, HWND) {});
  EXPECT_EQ(Copies(), 1);
  form.txtPassword.Text = Password();
  EXPECT_EQ(Copies(), 0);
}

// Selected and typed over, as after a refused log-on.
TEST_F(PasswordSecrecy, NoCopyIsLeftOfATextThatWasTypedOver) {
  TypeAnd([&](Person& person, HWND box) {
    person.Press(VK_HOME);
    person.Press(VK_END, VK_SHIFT);
    person.Press('A');
    person.Await([&] { return TextOf(box) == u"*"; }, "the other text");
  });
  EXPECT_EQ(Copies(), 0);
}

}  // namespace

}  // namespace krx::test
