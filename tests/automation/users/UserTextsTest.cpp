// What stands on the user dialogs in each language of the reference runtime.

#include <map>

#include "users/UsersTest.h"

namespace krx::drive {
namespace {

using Texts = std::map<std::wstring, std::wstring>;

struct Language {
  const char* Code;
  Texts LogOn;
  Texts LogOnCombo;
  Texts ChangePassword;
  Texts WhoAmI;
  std::wstring InvalidPassword;
  std::wstring NobodyLoggedOn;
};

const Language kEnglish{"en",
                        {{L"idxCaption", L"Log on"},
                         {L"lblName", L"Name"},
                         {L"lblPassword", L"Password"},
                         {L"keyOK", L"OK"},
                         {L"keyCancel", L"Cancel"},
                         {L"keyLogOut", L"Log off"}},
                        {{L"idxCaption", L"Log on "},
                         {L"lblName", L"Name"},
                         {L"lblPassword", L"Password"},
                         {L"keyOK", L"OK"},
                         {L"keyCancel", L"Cancel"},
                         {L"keyLogOff", L"Log off"}},
                        {{L"idxCaption", L"Change password"},
                         {L"lblChangePW(0)", L"Name"},
                         {L"lblChangePW(1)", L"Full name"},
                         {L"lblChangePW(2)", L"Comment"},
                         {L"lblChangePW(3)", L"Current password"},
                         {L"lblChangePW(4)", L"New password"},
                         {L"lblChangePW(5)", L"Repeat password"},
                         {L"keyOK", L"OK"},
                         {L"keyCancel", L"Cancel"}},
                        {{L"idxCaption", L"Logged-on user"},
                         {L"lblWhoAmI(0)", L"Full name"},
                         {L"lblWhoAmI(1)", L"Name"},
                         {L"lblWhoAmI(2)", L"Comment"},
                         {L"lblWhoAmI(3)", L"User class"},
                         {L"keyOK", L"OK"}},
                        kInvalidPassword,
                        kNobody};

const Language kGerman{"de",
                       {{L"idxCaption", L"Anmelden"},
                        {L"lblName", L"Name"},
                        {L"lblPassword", L"Passwort"},
                        {L"keyOK", L"OK"},
                        {L"keyCancel", L"Abbrechen"},
                        {L"keyLogOut", L"Abmelden"}},
                       {{L"idxCaption", L"Anmelden "},
                        {L"lblName", L"Name"},
                        {L"lblPassword", L"Passwort"},
                        {L"keyOK", L"OK"},
                        {L"keyCancel", L"Abbrechen"},
                        {L"keyLogOff", L"Abmelden"}},
                       {{L"idxCaption", L"Passwort \u00e4ndern"},
                        {L"lblChangePW(0)", L"Name"},
                        {L"lblChangePW(1)", L"Vollst\u00e4ndiger Name"},
                        {L"lblChangePW(2)", L"Kommentar"},
                        {L"lblChangePW(3)", L"Aktuelles Passwort"},
                        {L"lblChangePW(4)", L"Neues Passwort"},
                        {L"lblChangePW(5)", L"Passwort wiederholen"},
                        {L"keyOK", L"OK"},
                        {L"keyCancel", L"Abbrechen"}},
                       {{L"idxCaption", L"Angemeldeter Benutzer"},
                        {L"lblWhoAmI(0)", L"Vollst\u00e4ndiger Name"},
                        {L"lblWhoAmI(1)", L"Name"},
                        {L"lblWhoAmI(2)", L"Kommentar"},
                        {L"lblWhoAmI(3)", L"Benutzerklasse"},
                        {L"keyOK", L"OK"}},
                       L"Das Passwort ist nicht g\u00fcltig.\nBitte geben Sie es noch einmal ein.",
                       L"Es ist niemand angemeldet."};

class UserTexts : public UsersTest, public ::testing::WithParamInterface<const Language*> {
 protected:
  void Run(const std::string& body) {
    RunUserScript(std::string("Runtime.Language = \"") + GetParam()->Code + "\"\r\n" + body);
  }

  void Expect(const Window& form, const Texts& texts) {
    for (const auto& [control, text] : texts)
      EXPECT_EQ(Narrow(Shown(form.Child(control))), Narrow(text)) << Narrow(control);
  }
};

TEST_P(UserTexts, LogOnAndItsMessage) {
  Run("WScript.Echo CStr(Dialogs.KRUserLogOn())\r\n");
  Expect(Form(L"FLogOn", L"txtName"), GetParam()->LogOn);
  LogOn(kOperator, L"falsch");
  Confirm(GetParam()->InvalidPassword);
  Form(L"FLogOn", L"txtPassword");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(UserTexts, LogOnWithTheList) {
  Run("WScript.Echo CStr(Dialogs.KRUserLogOnCombo())\r\n");
  Expect(Form(L"FLogOnCombo", L"cboName"), GetParam()->LogOnCombo);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False", "end"}));
}

TEST_P(UserTexts, ChangePassword) {
  Run("LogOn \"eva.meier\"\r\nDialogs.KRChangePassword\r\n");
  Expect(Form(L"FChangePassword", L"txtActPassword"), GetParam()->ChangePassword);
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"end"});
}

TEST_P(UserTexts, WhoAmIWithAndWithoutUser) {
  Run("Dialogs.KRWhoAmI\r\nLogOn \"eva.meier\"\r\nDialogs.KRWhoAmI\r\n");
  Confirm(GetParam()->NobodyLoggedOn, GetParam()->WhoAmI.at(L"idxCaption"));
  Expect(Form(L"FWhoAmI", L"keyOK"), GetParam()->WhoAmI);
  PressKey(L"Enter");
  EXPECT_EQ(Printed(), Lines{"end"});
}

INSTANTIATE_TEST_SUITE_P(Languages, UserTexts, ::testing::Values(&kEnglish, &kGerman),
                         [](const auto& language) { return std::string(language.param->Code); });

}  // namespace
}  // namespace krx::drive
