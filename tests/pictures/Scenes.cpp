#include "Scenes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "Plant.h"
#include "Seen.h"
#include "client/Methods.h"
#include "driver/Input.h"

namespace krx::pictures {

namespace {

using client::BasicString;

constexpr long kSecondsLeft = 10;
constexpr long kNoStandardButton = 6;
constexpr const wchar_t* kHelp = L"plant.chm";

// What is said in a message box, in both languages.
struct Saying {
  const wchar_t* English;
  const wchar_t* German;

  BasicString In(const Look& look) const { return BasicString(look.German ? German : English); }
};

constexpr Saying kNothing{L"", L""};
constexpr Saying kRecipe{L"Recipe", L"Rezept"};

// Takes a path that nobody asks for.
class Dropped {
 public:
  ~Dropped() { SysFreeString(text_); }
  operator BSTR*() { return &text_; }

 private:
  BSTR text_ = nullptr;
};

Scene Box(const char* name, long style, Saying title, Saying text, const wchar_t* help = L"") {
  return {"box-" + std::string(name), "KRMsgBox", L"FMessageBox",
          [=](IKRXDialog& dialogs, const Look& look) {
            long result = 0;
            return dialogs.KRMsgBox(text.In(look), style, title.In(look), BasicString(help), 0,
                                    &result);
          }};
}

struct Free {
  Saying First = kNothing, Second = kNothing, Third = kNothing;
  const wchar_t* Help = L"";
  long Seconds = 0;
};

Scene FreeBox(const char* name, long style, Saying title, Saying text, Free free) {
  Scene scene{"box-" + std::string(name), "KRMsgBoxEx", L"FMessageBox",
              [=](IKRXDialog& dialogs, const Look& look) {
                KRMsgBoxResult result{};
                return dialogs.KRMsgBoxEx(text.In(look), style, title.In(look),
                                          BasicString(free.Help), 0, free.First.In(look),
                                          free.Second.In(look), free.Third.In(look), free.Seconds,
                                          &result);
              }};
  scene.Seconds = free.Seconds != 0;
  return scene;
}

std::vector<Scene> StandardBoxes() {
  return {
      Box("ok", MB_OK | MB_ICONINFORMATION, kRecipe,
          {L"The recipe has been saved.", L"Das Rezept ist gespeichert."}),
      Box("ok-cancel-help", MB_OKCANCEL | MB_ICONEXCLAMATION, {L"Limit", L"Grenzwert"},
          {L"The limit is exceeded.", L"Der Grenzwert ist \u00FCberschritten."}, kHelp),
      Box("abort-retry-ignore", MB_ABORTRETRYIGNORE | MB_ICONHAND, {L"Drive 4", L"Laufwerk 4"},
          {L"The drive does not answer.", L"Das Laufwerk antwortet nicht."}),
      Box("yes-no-cancel", MB_YESNOCANCEL | MB_ICONQUESTION | MB_DEFBUTTON3, kRecipe,
          {L"Save before closing?", L"Vor dem Schlie\u00DFen speichern?"}),
      Box("yes-no", MB_YESNO | MB_DEFBUTTON2, {L"Tank", L"Beh\u00E4lter"},
          {L"Empty the tank?\nThe second line.", L"Beh\u00E4lter leeren?\nDie zweite Zeile."}),
      Box("retry-cancel", MB_RETRYCANCEL | MB_ICONHAND, {L"Station\nLine 2", L"Station\nLinie 2"},
          {L"The station is not connected.", L"Die Station ist nicht verbunden."}),
      Box("no-answer", kNoStandardButton | MB_ICONINFORMATION, {L"Notice", L"Hinweis"},
          {L"Only the close button is left.", L"Es bleibt nur das Kreuz."}),
  };
}

// Longer than the screen is high.
std::wstring Long(const Look& look) {
  std::wstring text;
  for (int boiler = 1; boiler <= 110; ++boiler)
    text += look.Say(L"Boiler ", L"Kessel ") + std::to_wstring(boiler) + L"\n";
  return text;
}

std::vector<Scene> OtherBoxes() {
  std::vector<Scene> boxes{
      FreeBox("three-free-help", MB_ICONQUESTION, {L"Conveyor", L"F\u00F6rderband"},
              {L"Which way?", L"Wohin?"},
              {{L"&Left", L"&Links"},
               {L"&Straight on", L"&Geradeaus"},
               {L"&Right", L"&Rechts"},
               kHelp}),
      FreeBox("standard-and-free", MB_YESNO | MB_ICONEXCLAMATION, {L"Alarm", L"Alarm"},
              {L"Acknowledge the alarm?", L"Alarm quittieren?"},
              {kNothing, kNothing, {L"&Later", L"&Sp\u00E4ter"}}),
      FreeBox("by-itself", MB_OKCANCEL | MB_ICONINFORMATION, {L"Countdown", L"Countdown"},
              {L"Continuing by itself.", L"Es geht von selbst weiter."}, {.Seconds = kSecondsLeft}),
  };
  boxes.push_back(
      {"box-long", "KRMsgBox", L"FMessageBox", [](IKRXDialog& dialogs, const Look& look) {
         long result = 0;
         return dialogs.KRMsgBox(BasicString(Long(look)), MB_OK | MB_ICONEXCLAMATION,
                                 BasicString(look.Say(L"Boilers", L"Kessel")), nullptr, 0, &result);
       }});
  return boxes;
}

using Asking = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(VARIANT_BOOL*);
using Telling = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)();

Scene OfUsers(const char* name, const char* method, const wchar_t* form, Asking call) {
  return {name, method, form, [call](IKRXDialog& dialogs, const Look&) {
            VARIANT_BOOL result = VARIANT_FALSE;
            return (dialogs.*call)(&result);
          }};
}

Scene OfUsers(const char* name, const char* method, const wchar_t* form, Telling call) {
  return {name, method, form,
          [call](IKRXDialog& dialogs, const Look&) { return (dialogs.*call)(); }};
}

std::function<bool(HWND)> Rows(int rows) {
  return [rows](HWND form) { return RowsOn(form) == rows; };
}

Scene FilledLogOn() {
  Scene scene = OfUsers("log-on-filled", "KRUserLogOn", L"FLogOn", &IKRXDialog::KRUserLogOn);
  scene.Act = [](HWND) {
    drive::TypeText(L"berger");
    drive::PressKey(VK_TAB);
    drive::TypeText(L"secret");
  };
  scene.Complete = [](HWND form) {
    const HWND password = ControlNamed(form, L"txtPassword");
    return password && GetWindowTextLengthW(password) == 6;
  };
  return scene;
}

Scene OpenListOfUsers() {
  Scene scene = OfUsers("log-on-by-list-open", "KRUserLogOnCombo", L"FLogOnCombo",
                        &IKRXDialog::KRUserLogOnCombo);
  scene.Act = [](HWND) { drive::PressKey(VK_F4); };
  scene.Complete = [](HWND form) { return OpenList(form) != nullptr; };
  scene.Shown = Scene::Part::FormAndList;
  return scene;
}

Scene Keyboard() {
  Scene scene = OfUsers("keyboard", "KRUserLogOn", L"FLogOn", &IKRXDialog::KRUserLogOn);
  scene.Complete = [](HWND) { return FormNamed(L"FKeyboard") != nullptr; };
  scene.Shown = Scene::Part::Keyboard;
  return scene;
}

std::vector<Scene> Users() {
  std::vector<Scene> scenes{
      OfUsers("log-on", "KRUserLogOn", L"FLogOn", &IKRXDialog::KRUserLogOn),
      FilledLogOn(),
      Keyboard(),
      OfUsers("log-on-by-list", "KRUserLogOnCombo", L"FLogOnCombo", &IKRXDialog::KRUserLogOnCombo),
      OpenListOfUsers(),
      OfUsers("password", "KRChangePassword", L"FChangePassword", &IKRXDialog::KRChangePassword),
      OfUsers("who-am-i", "KRWhoAmI", L"FWhoAmI", &IKRXDialog::KRWhoAmI),
      OfUsers("add-user", "KRAddUser", L"FAddUser", &IKRXDialog::KRAddUser),
      OfUsers("users", "KRUser", L"FUser", &IKRXDialog::KRUser),
  };
  scenes.back().Complete = Rows(kUsers);
  return scenes;
}

using Directory = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, VARIANT_BOOL, BSTR, BSTR*);
using File = HRESULT (STDMETHODCALLTYPE IKRXDialog::*)(BSTR, BSTR, BSTR, VARIANT_BOOL, BSTR, BSTR*);

Scene OfDirectories(const char* name, const char* method, const wchar_t* form,
                    const wchar_t* folder, Directory call, int rows) {
  Scene scene{name, method, form, [=](IKRXDialog& dialogs, const Look&) {
                return (dialogs.*call)(BasicString(folder), VARIANT_TRUE, nullptr, Dropped());
              }};
  scene.Complete = Rows(rows);
  return scene;
}

Scene OfFiles(const char* name, const char* method, const wchar_t* form, const wchar_t* file,
              File call, int rows) {
  Scene scene{name, method, form, [=](IKRXDialog& dialogs, const Look& look) {
                const BasicString filter(
                    look.Say(L"Recipes|*.rcp|All files|*.*", L"Rezepte|*.rcp|Alle Dateien|*.*"));
                return (dialogs.*call)(BasicString(file), BasicString(kRecipes), filter,
                                       VARIANT_TRUE, nullptr, Dropped());
              }};
  scene.Complete = Rows(rows);
  return scene;
}

std::vector<Scene> Files() {
  constexpr int kAbove = 3;                                    // the drive, the plant and the line
  constexpr int kUp = 1;                                       // the row that leads there
  constexpr int kFilesAndFolders = kRecipeFiles + kAbove + 2;  // and the recipes with their archive
  return {
      OfDirectories("directory", "KRSelectDirectory", L"FSelectDirectory", kLine,
                    &IKRXDialog::KRSelectDirectory, kAbove + kFolders),
      OfFiles("open-file", "KROpenFile", L"FFileSelect", L"Malt.rcp", &IKRXDialog::KROpenFile,
              kFilesAndFolders),
      OfFiles("save-file", "KRSaveFileAs", L"FFileSelect", L"Rye 80.rcp", &IKRXDialog::KRSaveFileAs,
              kFilesAndFolders),
      OfDirectories("directory-touch", "KRSelectDirectoryTouch", L"FDirectorySelectTouch", kRecipes,
                    &IKRXDialog::KRSelectDirectoryTouch, kUp + kFolders),
      OfFiles("open-file-touch", "KROpenFileTouch", L"FFileSelectTouch", L"Malt.rcp",
              &IKRXDialog::KROpenFileTouch, kUp + kFolders + kLineFiles),
  };
}

void RequireEveryMethod(const std::vector<Scene>& scenes) {
  for (const client::Method& method : client::Methods()) {
    const auto of = [&](const Scene& scene) { return scene.Method == method.Name; };
    if (std::none_of(scenes.begin(), scenes.end(), of))
      throw std::runtime_error("there is no scene of " + method.Name);
  }
}

}  // namespace

std::vector<Scene> Scenes() {
  std::vector<Scene> scenes;
  for (const std::vector<Scene>& part : {StandardBoxes(), OtherBoxes(), Users(), Files()})
    scenes.insert(scenes.end(), part.begin(), part.end());
  RequireEveryMethod(scenes);
  return scenes;
}

}  // namespace krx::pictures
