// What an assistive program reads and does beyond names: rows, values, secrets, and objects that it
// keeps for longer than there is a window.

#include "access/AccessTest.h"
#include "driver/List.h"

namespace krx::drive {
namespace {

class Readers : public AccessTest {
 protected:
  std::wstring PathOf(const std::wstring& name) const { return Tree->WidePath(name); }
  // The touch dialog at a folder of the tree, once its rows are complete.
  Window OpenAtLogs() {
    RunUserScript("WScript.Echo Dialogs.KRSelectDirectoryTouch(" + ScriptLiteral(PathOf(L"Logs")) +
                  ")\r\n");
    const Window form = Form(L"FDirectorySelectTouch", L"grdFolders");
    const List rows(form, L"grdFolders");
    rows.Find(L"Zeta", 1);
    EXPECT_TRUE(Within(kPatience, [&] { return rows.Cell(2, 0) == L" +"; })) << "no marker";
    return form;
  }
};

TEST_F(Readers, ReadTheRowsOfAGridAndTheSelectedOne) {
  const Window form = OpenAtLogs();
  const List rows(form, L"grdFolders");
  const Element grid = Control(form, L"grdFolders");
  ASSERT_EQ(grid.Count(), 4);
  for (int i = 0; i < 4; ++i) {
    const Element row = grid.Inside(i + 1);
    EXPECT_EQ(row.Role(), ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(Narrow(row.Name()), Narrow(rows.Cell(i, 1)));
    const RECT place = row.Place();
    const RECT shown = rows.RowBounds(i);
    EXPECT_TRUE(EqualRect(&place, &shown)) << i;
    EXPECT_EQ(row.Has(STATE_SYSTEM_SELECTED), i == 2) << i;
    EXPECT_TRUE(row.Has(STATE_SYSTEM_SELECTABLE)) << i;
    EXPECT_FALSE(row.Has(STATE_SYSTEM_OFFSCREEN)) << i;
  }
  EXPECT_EQ(grid.Selected(), 3);
  EXPECT_EQ(Narrow(grid.Inside(3).Description()), "+") << "it has folders of its own";
  EXPECT_EQ(Narrow(grid.Inside(4).Description()), "");
  VARIANT beyond = grid.Part();
  beyond.lVal = 5;
  BSTR name = nullptr;
  EXPECT_EQ(grid.Object().get_accName(beyond, &name), E_INVALIDARG);
  Leave(form, L"keyCancel");
  EXPECT_EQ(Printed(), (Lines{"", "end"}));
}

TEST_F(Readers, SelectARowAsTheOperatorDoes) {
  const Window form = OpenAtLogs();
  const Element grid = Control(form, L"grdFolders");
  grid.Inside(4).Select(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION);
  form.Child(L"txtDirectory").WaitForText(PathOf(L"Zeta"));
  EXPECT_EQ(grid.Selected(), 4);
  EXPECT_TRUE(grid.Inside(4).Has(STATE_SYSTEM_FOCUSED));
  Leave(form, L"keyOK");
  EXPECT_EQ(Printed(), (Lines{Narrow(PathOf(L"Zeta")), "end"}));
}

TEST_F(Readers, HearWhatTheColumnsSayOfAUser) {
  RunUserScript("LogOn \"admin\"\r\nDialogs.KRUser\r\n");
  const Window form = Form(L"FUser", L"lvwUser");
  const Element list = Control(form, L"lvwUser");
  ASSERT_EQ(list.Count(), 5);
  const Element eva = list.Inside(List(form, L"lvwUser").Find(kOperator) + 1);
  EXPECT_EQ(eva.Name(), kOperator);
  EXPECT_NE(eva.Description().find(Text("lblFullName") + L": Eva Meier; " + Text("lblUserClass") +
                                   L": Operator"),
            std::wstring::npos)
      << Narrow(eva.Description());
  EXPECT_EQ(list.Selected(), 0);
  Leave(form, L"keyOK");
  EXPECT_EQ(Printed(), Lines{"end"});
}

TEST_F(Readers, FillInAndConfirmALogOnAndNeverHearThePassword) {
  RunDialog("KRUserLogOn()");
  const Window form = Form(L"FLogOn", L"txtName");
  const Element name = Control(form, L"txtName");
  const Element password = Control(form, L"txtPassword");
  const Element ok = Control(form, L"keyOK");
  EXPECT_TRUE(ok.Has(STATE_SYSTEM_UNAVAILABLE));
  name.SetValue(kOperator);
  EXPECT_EQ(name.Value(), kOperator);
  EXPECT_FALSE(ok.Has(STATE_SYSTEM_UNAVAILABLE));
  password.SetValue(kPassword);
  EXPECT_EQ(form.Child(L"txtPassword").Text(), std::wstring(std::wcslen(kPassword), L'*'));
  BSTR secret = nullptr;
  EXPECT_EQ(password.Object().get_accValue(password.Part(), &secret), E_ACCESSDENIED);
  EXPECT_EQ(secret, nullptr);
  EXPECT_EQ(ok.Action(), L"Press");
  password.Select(SELFLAG_TAKEFOCUS);
  form.WaitForFocusOn(L"txtPassword");
  EXPECT_TRUE(password.Has(STATE_SYSTEM_FOCUSED));
  Leave(form, L"keyOK");
  EXPECT_EQ(Printed(), (Lines{"True, eva.meier", "end"}));
}

TEST_F(Readers, HearTheNoticeBeforeALogOnAndAcknowledgeIt) {
  Store->Write("log-on-notice.txt", "Authorised staff only.\nWhat you do is recorded.");
  RunDialog("KRUserLogOn()");
  const Window box = NextBox();
  const Element notice(box);
  EXPECT_EQ(notice.Role(), ROLE_SYSTEM_DIALOG);
  EXPECT_EQ(Narrow(notice.Name()), Narrow(Text("capLogon")));
  EXPECT_EQ(Narrow(notice.Description()), "Authorised staff only.\nWhat you do is recorded.");
  EXPECT_TRUE(Control(box, L"keyButton(0)").Has(STATE_SYSTEM_FOCUSED));
  Leave(box, L"keyButton(0)");
  Leave(Form(L"FLogOn", L"txtName"), L"keyCancel");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(Readers, ReadAndOpenTheListOfAComboBox) {
  RunDialog("KRUserLogOnCombo()");
  const Window form = Form(L"FLogOnCombo", L"cboName");
  const Element combo = Control(form, L"cboName");
  EXPECT_TRUE(combo.Has(STATE_SYSTEM_COLLAPSED));
  combo.Press();
  EXPECT_TRUE(Within(kPatience, [&] { return combo.Has(STATE_SYSTEM_EXPANDED); }));
  combo.Press();
  EXPECT_TRUE(Within(kPatience, [&] { return combo.Has(STATE_SYSTEM_COLLAPSED); }));
  PressKey(L"Down");
  const Window shown = form.Child(L"cboName");
  EXPECT_TRUE(Within(kPatience, [&] { return !shown.Text().empty(); }));
  EXPECT_EQ(Narrow(combo.Value()), Narrow(shown.Text()));
  Leave(form, L"keyCancel");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(Readers, FindTheFormAboveAControlAndTheControlUnderAPoint) {
  RunDialog("KRUserLogOn()");
  const Window form = Form(L"FLogOn", L"txtName");
  const Window field = form.Child(L"txtPassword");
  EXPECT_EQ(Element(field).Parent().TheWindow(), form);
  VARIANT found{};
  const POINT middle = field.Centre();
  ASSERT_EQ(Element(form).Object().accHitTest(middle.x, middle.y, &found), S_OK);
  ASSERT_EQ(found.vt, VT_DISPATCH);
  const Element hit(com::ComPtr<IDispatch>::Attach(found.pdispVal).As<IAccessible>(), CHILDID_SELF);
  EXPECT_EQ(hit.TheWindow(), field);
  const RECT place = hit.Place();
  const RECT bounds = field.Bounds();
  EXPECT_TRUE(EqualRect(&place, &bounds));
  Leave(form, L"keyCancel");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(Readers, AreToldWhenAWindowBehindAnObjectHasGone) {
  RunScript("Dialogs.KRMsgBox \"one\"\r\nDialogs.KRMsgBox \"two\"\r\n");
  const Window box = NextBox();
  const Element dialog(box);
  const Element key = Control(box, L"keyButton(0)");
  Leave(box, L"keyButton(0)");
  const Window next = NextBox();  // its process lives and answers
  BSTR name = nullptr;
  EXPECT_EQ(dialog.Object().get_accName(dialog.Part(), &name), CO_E_OBJNOTCONNECTED);
  EXPECT_EQ(key.Object().accDoDefaultAction(key.Part()), CO_E_OBJNOTCONNECTED);
  LONG count = 0;
  EXPECT_EQ(dialog.Object().get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
  next.WaitUntilAtRest();
  PressKey(L"Enter");  // the client ends at once, which must not cut off the answer to a call
  EXPECT_EQ(Printed(), Lines{});
}

}  // namespace
}  // namespace krx::drive
