// What another process learns of a password that is being typed: its length.

#include <array>

#include "platform/Platform.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

constexpr const wchar_t* kShown = L"**************";

class PasswordSecrecy : public UsersTest {
 protected:
  Window TypedPassword() {
    RunDialog("KRUserLogOn()");
    const Window form = Form(L"FLogOn", L"txtName");
    Type(form, L"txtName", kOperator);
    Move(form, L"Enter", L"txtPassword");
    Type(form, L"txtPassword", kPassword);
    return form;
  }

  void LogOnAndCompare() {
    PressKey(L"Enter");
    EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
  }
};

std::wstring TextOfSystem(HWND window) {
  std::array<wchar_t, 100> text{};
  return {text.data(), static_cast<std::size_t>(
                           GetWindowTextW(window, text.data(), static_cast<int>(text.size())))};
}

std::wstring Line(HWND edit) {
  std::array<wchar_t, 100> text{};
  text[0] = text.size();
  const LRESULT length = SendMessageW(edit, EM_GETLINE, 0, reinterpret_cast<LPARAM>(text.data()));
  return {text.data(), static_cast<std::size_t>(length)};
}

std::wstring Clipboard() {
  std::wstring text;
  if (!OpenClipboard(nullptr)) return text;
  if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
    text = static_cast<const wchar_t*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

void PutOnClipboard(const std::wstring& text) {
  const HANDLE data = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  std::copy_n(text.c_str(), text.size() + 1, static_cast<wchar_t*>(GlobalLock(data)));
  GlobalUnlock(data);
  ASSERT_TRUE(Within(kPatience, [] { return OpenClipboard(nullptr) != FALSE; }));
  EmptyClipboard();
  SetClipboardData(CF_UNICODETEXT, data);
  CloseClipboard();
}

TEST_F(PasswordSecrecy, NeitherTextNorLineTellsIt) {
  const Window box = TypedPassword().Child(L"txtPassword");
  EXPECT_EQ(box.Text(), kShown);
  EXPECT_EQ(TextOfSystem(box.Handle()).find_first_not_of(L'*'), std::wstring::npos);
  const std::wstring line = test::MayAskForLine(box.Handle()) ? Line(box.Handle()) : L"";
  EXPECT_EQ(line.find_first_not_of(L'*'), std::wstring::npos);
  LogOnAndCompare();
}

TEST_F(PasswordSecrecy, NothingStandsBehindTheStars) {
  const Window box = TypedPassword().Child(L"txtPassword");
  SendMessageW(box.Handle(), EM_SETPASSWORDCHAR, 0, 0);
  EXPECT_EQ(box.Text(), kShown);
  LogOnAndCompare();
}

TEST_F(PasswordSecrecy, ItCannotBeCopied) {
  const Window form = TypedPassword();
  PutOnClipboard(L"before");
  SendMessageW(form.Child(L"txtPassword").Handle(), EM_SETSEL, 0, -1);
  SendMessageW(form.Child(L"txtPassword").Handle(), WM_COPY, 0, 0);
  PressKey(L"Ctrl+c");
  PressKey(L"Ctrl+x");
  Move(form, L"Tab", L"keyOK");  // all keys before have been handled
  const std::wstring copied = Clipboard();
  EXPECT_TRUE(copied == L"before" || copied.find_first_not_of(L'*') == std::wstring::npos)
      << Narrow(copied);
  EXPECT_EQ(form.Child(L"txtPassword").Text(), kShown);
  LogOnAndCompare();
}

TEST_F(PasswordSecrecy, ItCanBePasted) {
  RunDialog("KRUserLogOn()");
  const Window form = Form(L"FLogOn", L"txtName");
  Type(form, L"txtName", kOperator);
  Move(form, L"Enter", L"txtPassword");
  PutOnClipboard(kPassword);
  PressKey(L"Ctrl+v");
  form.Child(L"txtPassword").WaitForText(kShown);
  LogOnAndCompare();
}

}  // namespace
}  // namespace krx::drive
