// One dialog of each kind, called by JavaScript: from a file of the script host and inside the
// script control, which a script of another language holds.

#include "FolderTree.h"
#include "driver/List.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

enum class Engine { File, Control };

// In single quotes, which both engines' sources take as they stand.
std::string Literal(const std::wstring& text) {
  std::string literal(1, '\'');
  for (const char unit : Narrow(text)) {
    if (unit == '\\' || unit == '\'') literal += '\\';
    literal += unit;
  }
  return literal += '\'';
}

class JavaScript : public UsersTest, public ::testing::WithParamInterface<Engine> {
 protected:
  // Prints the value of an expression that finds the component as `dialogs`.
  void Evaluate(const std::string& expression) {
    if (GetParam() == Engine::File) {
      RunPlainScript(
          "new ActiveXObject('KorvelRuntime.RuntimeSettings').Language = 'en';\r\n"
          "var dialogs = new ActiveXObject('KRXDialogs.KRXDialog');\r\n"
          "WScript.Echo('[' + (" +
              expression + ") + ']');\r\n",
          L".js");
    } else {
      RunScript(
          "Dim Control\r\n"
          "Set Control = CreateObject(\"MSScriptControl.ScriptControl\")\r\n"
          "Control.Language = \"JScript\"\r\n"
          "Control.AddObject \"dialogs\", Dialogs\r\n"
          "WScript.Echo Control.Eval(\"'[' + (" +
          expression + ") + ']'\")\r\n");
    }
  }
  void ExpectValue(const std::wstring& value) {
    EXPECT_EQ(Printed(), Lines{Narrow(L"[" + value + L"]")});
  }
  std::wstring PathOf(const std::wstring& name) const { return tree_.WidePath(name); }
  std::string Tree() const { return Literal(tree_.WidePath()); }

  test::FolderTree tree_;
};

TEST_P(JavaScript, SetsAHeightAndAsksAQuestion) {
  Evaluate(
      "(dialogs.ButtonMinHeight = 900) + ' ' + dialogs.ButtonMinHeight + ' ' + "
      "dialogs.KRMsgBox('Start the pump?', 36, 'Pump')");
  const Window box = NextBox();
  EXPECT_EQ(box.Child(L"idxMessage").Text(), L"Start the pump?");
  EXPECT_EQ(box.Child(L"idxCaption").Text(), L"Pump");
  box.Child(L"keyButton(0)").Click();
  ExpectValue(L"900 900 6");
}

TEST_P(JavaScript, LogsAUserOn) {
  Evaluate("dialogs.KRUserLogOn()");
  LogOn(kOperator, kPassword);
  ExpectValue(L"true");
}

TEST_P(JavaScript, ShowsTheUsers) {
  Evaluate("dialogs.KRUserLogOn() + ' ' + dialogs.KRUser()");
  LogOn(kAdministrator, kPassword);
  const Window overview = Form(L"FUser", L"lvwUser");
  EXPECT_EQ(overview.Text(), Text("capOverviewUsers"));
  List(overview, L"lvwUser").Find(kOperator);
  overview.Child(L"keyOK").Click();
  ExpectValue(L"true undefined");
}

TEST_P(JavaScript, SelectsADirectory) {
  tree_.AddFolder(u"Alpha");
  Evaluate("dialogs.KRSelectDirectory(" + Tree() + ", true, 'Where?')");
  const Window form = Form(L"FSelectDirectory", L"dirSelect");
  EXPECT_EQ(form.Text(), L"Where?");
  const List list(form, L"dirSelect");
  list.Click(list.Find(L"Alpha"));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Alpha"));
  form.Child(L"keyOK").Click();
  ExpectValue(PathOf(L"Alpha"));
}

TEST_P(JavaScript, OpensAFile) {
  tree_.AddFile(u"notes.txt");
  tree_.AddFile(u"plan.bmp");
  Evaluate("dialogs.KROpenFile('', " + Tree() + ", 'Text|*.txt|All|*.*')");
  const Window form = Form(L"FFileSelect", L"txtFileName");
  const List files(form, L"filSelect");
  files.Click(files.Find(L"notes.txt"));
  form.Child(L"txtFileName").WaitForText(L"notes.txt");
  EXPECT_EQ(files.Count(), 1);
  form.Child(L"keyOK").Click();
  ExpectValue(PathOf(L"notes.txt"));
}

TEST_P(JavaScript, SelectsADirectoryByTouch) {
  tree_.AddFolder(u"Alpha");
  tree_.AddFolder(u"Zeta");
  Evaluate("dialogs.KRSelectDirectoryTouch(" + Literal(PathOf(L"Alpha")) + ")");
  const Window form = Form(L"FDirectorySelectTouch", L"grdFolders");
  const List folders(form, L"grdFolders");
  folders.Click(folders.Find(L"Zeta", 1));
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  form.Child(L"keyOK").Click();
  ExpectValue(PathOf(L"Zeta"));
}

TEST_P(JavaScript, OpensAFileByTouch) {
  tree_.AddFolder(u"Alpha");
  tree_.AddFile(u"notes.txt");
  Evaluate("dialogs.KROpenFileTouch('', " + Literal(PathOf(L"Alpha")) + ", 'Text|*.txt')");
  const Window form = Form(L"FFileSelectTouch", L"grdFolders");
  const List files(form, L"grdFiles");
  files.Click(files.Find(L"notes.txt"));
  form.Child(L"txtFullPath").WaitForText(PathOf(L"notes.txt"));
  form.Child(L"keyOK").Click();
  ExpectValue(PathOf(L"notes.txt"));
}

TEST_P(JavaScript, CatchesAFailureWithNumberAndText) {
  Evaluate(
      "(function() { try { dialogs.KRMsgBox('Text', 256, 'Title'); } catch (error) {"
      " return (error.number & 65535) + ' ' + error.description; } })()");
  ExpectValue(L"13 Type mismatch");
}

INSTANTIATE_TEST_SUITE_P(All, JavaScript, ::testing::Values(Engine::File, Engine::Control),
                         [](const auto& test) {
                           return test.param == Engine::File ? "FromAFile" : "InTheScriptControl";
                         });

}  // namespace
}  // namespace krx::drive
