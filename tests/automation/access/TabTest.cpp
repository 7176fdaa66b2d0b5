// The tab key walks the dialogs in their order, whatever the order of their windows.

#include "access/AccessTest.h"

namespace krx::drive {
namespace {

class TabKey : public AccessTest {
 protected:
  // Walks from the control that has the keyboard once around.
  static std::vector<std::wstring> WalkAround(const Window& form, const std::wstring& first) {
    std::vector<std::wstring> walk{first};
    while (walk.size() < 30) {
      const HWND before = form.FocusedChild().value().Handle();
      PressKey(L"Tab");
      const bool moved = Within(kPatience, [&] {
        const auto now = form.FocusedChild();
        return now && now->Handle() != before;
      });
      if (!moved) throw std::runtime_error("the focus stays on " + Narrow(walk.back()));
      const std::wstring name = form.FocusedChild().value().Name();
      if (name == first) break;
      walk.push_back(name);
    }
    return walk;
  }
  void ExpectWalk(const std::string& call, const wchar_t* form_name,
                  const std::vector<std::wstring>& wanted, const wchar_t* answer) {
    RunUserScript(call + "\r\n");
    const Window form = Form(form_name, wanted.front());
    EXPECT_EQ(WalkAround(form, wanted.front()), wanted);
    Leave(form, answer);
    EXPECT_EQ(Printed(), Lines{"end"});
  }
};

TEST_F(TabKey, WalksTheSelectionDialogs) {
  ExpectWalk("Dialogs.KRSelectDirectory " + Folder(), L"FSelectDirectory",
             {L"dirSelect", L"keyOK", L"keyCancel", L"txtDirectory", L"drvSelect"}, L"keyCancel");
  ExpectWalk("Dialogs.KROpenFile \"x\", " + Folder() + ", \"All|*.*\"", L"FFileSelect",
             {L"txtFileName", L"filSelect", L"dirSelect", L"cboFileType(0)", L"drvSelect", L"keyOK",
              L"keyCancel"},
             L"keyCancel");
  ExpectWalk("Dialogs.KRSelectDirectoryTouch " + Folder(), L"FDirectorySelectTouch",
             {L"grdFolders", L"keyOK", L"keyCancel", L"txtDirectory", L"cboDrives"}, L"keyCancel");
  ExpectWalk("Dialogs.KROpenFileTouch \"\", " + Folder() + ", \"All|*.*\"", L"FFileSelectTouch",
             {L"grdFolders", L"cboExtention", L"grdFiles", L"keyOK", L"keyCancel", L"txtPath",
              L"cboDrivers"},
             L"keyCancel");
}

TEST_F(TabKey, WalksTheLogOnDialogs) {
  ExpectWalk("Dialogs.KRUserLogOn", L"FLogOn",
             {L"txtName", L"txtPassword", L"keyCancel", L"keyLogOut"}, L"keyCancel");
  ExpectWalk("Dialogs.KRUserLogOnCombo", L"FLogOnCombo",
             {L"cboName", L"txtPassword", L"keyCancel", L"keyLogOff"}, L"keyCancel");
}

TEST_F(TabKey, WalksTheUserAdministration) {
  ExpectWalk("LogOn \"admin\": Dialogs.KRUser", L"FUser",
             {L"lvwUser", L"keyAddUser", L"keyChangeUser", L"keyRemoveUser", L"keyActivateUser",
              L"keyDeactivateUser", L"keyOK"},
             L"keyOK");
  ExpectWalk("LogOn \"admin\": Dialogs.KRAddUser", L"FAddUser",
             {L"txtName", L"txtFullName", L"txtPassword", L"txtPassword2", L"cboUserClass",
              L"txtComment", L"keyCancel"},
             L"keyCancel");
}

}  // namespace
}  // namespace krx::drive
