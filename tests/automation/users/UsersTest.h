#pragma once

#include <optional>
#include <string>

#include "support/DialogTest.h"
#include "users/UserStoreFolder.h"

namespace krx::drive {

// Users that every test finds, each with one password.
inline constexpr const wchar_t* kAdministrator = L"admin";
inline constexpr const wchar_t* kOperator = L"eva.meier";  // Eva Meier, of the early shift
inline constexpr const wchar_t* kRenewing = L"neu";        // has to renew the password
inline constexpr const wchar_t* kExpired = L"alt";         // whose password has expired
inline constexpr const wchar_t* kDeactivated = L"ruhend";
inline constexpr const wchar_t* kPassword = L"Sieben Ventile";

// Title of a message that has none of its own.
inline constexpr const wchar_t* kNoTitle = L"KRXDialogs";

// Base of the tests of the user dialogs: a client process with the reference runtime and users of
// its own.
class UsersTest : public DialogTest {
 protected:
  void SetUp() override;

  // Starts a script client with `Dialogs` (English texts), `Users`, `Session`, `CurrentUser` and
  // `LogOn name` at hand; it prints "end" when it has come through.
  void RunUserScript(const std::string& body);
  // The same for one statement whose result it prints.
  void RunDialog(const std::string& call);

  // The form once it waits for the operator with the focus on this control.
  Window Form(const std::wstring& name, const std::wstring& focus);
  // Reads the message that comes next, compares it and confirms it.
  void Confirm(const std::wstring& text, const std::wstring& title = kNoTitle);

  // Types into the control that has the focus and waits until it shows the text.
  void Type(const Window& form, const std::wstring& control, const std::wstring& text);
  // Moves the focus with one key and waits until it has arrived.
  void Move(const Window& form, const wchar_t* key, const std::wstring& control);
  // Types name and password into the log-on dialog and confirms with Enter.
  void LogOn(const std::wstring& name, const std::wstring& password);
  // Fills the change-password dialog and confirms with Enter.
  void ChangePassword(const std::wstring& current, const std::wstring& changed);

  std::optional<UserStoreFolder> Store;
};

}  // namespace krx::drive
