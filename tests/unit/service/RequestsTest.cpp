// How the methods of the dialog service hand their arguments to the dialogs and the outcome back.

#include "files/FDirectorySelectTouch.h"
#include "files/FFileSelect.h"
#include "files/FFileSelectTouch.h"
#include "files/FSelectDirectory.h"
#include "support/DialogTest.h"

namespace krx::test {

using service::KRXDialog;

class Requests : public DialogTest {
 protected:
  using Operator = headless::Operator;

  Requests() {
    runtime.Users.Current = {.Name = u"anna", .ClassName = u"Shift", .LoggedOn = true};
    platform.Machine.AddFolder(u"C:\\Data\\Logs");
    platform.Machine.AddFile(u"C:\\Data\\a.txt");
    platform.Machine.AddFile(u"C:\\Data\\b.bmp");
  }
};

TEST_F(Requests, AddUserTellsTheOutcome) {
  platform.Expect(u"FAddUser", [](Operator& op) { op.Click(u"keyCancel"); });
  EXPECT_FALSE(dialog->KRAddUser());
}

TEST_F(Requests, UserOpensTheOverview) {
  platform.Expect(u"FUser", [](Operator& op) { op.Click(u"keyOK"); });
  dialog->KRUser();
}

TEST_F(Requests, DirectoryMethodsHandAllArgumentsOver) {
  platform.Expect(u"FSelectDirectory", [](Operator& op) {
    const auto& form = dynamic_cast<files::FSelectDirectory&>(op.Form());
    EXPECT_EQ(form.StartDirectory, u"C:\\Data\\Logs");
    EXPECT_TRUE(form.Confined);
    EXPECT_EQ(form.idxCaption.Text(), u"title");
    op.Click(u"keyOK");
  });
  EXPECT_EQ(dialog->KRSelectDirectory({u"C:\\Data\\Logs", false, u"title"}), u"C:\\Data\\Logs");

  platform.Expect(u"FDirectorySelectTouch", [](Operator& op) {
    const auto& form = dynamic_cast<files::FDirectorySelectTouch&>(op.Form());
    EXPECT_EQ(form.StartDirectory, u"C:\\Data\\Logs");
    EXPECT_FALSE(form.AllowChangeUp);
    EXPECT_EQ(form.idxCaption.Text(), u"title");
    op.Click(u"keyOK");
  });
  EXPECT_EQ(dialog->KRSelectDirectoryTouch({u"C:\\Data\\Logs", false, u"title"}), u"C:\\Data");
}

TEST_F(Requests, FileMethodsHandAllArgumentsOverAndSavingIsTold) {
  using Method = String (KRXDialog::*)(const service::FileRequest&);
  for (const auto& [method, ok] : {std::pair<Method, StringView>{&KRXDialog::KROpenFile, u"Open"},
                                   {&KRXDialog::KRSaveFileAs, u"Save"}}) {
    platform.Expect(u"FFileSelect", [ok = ok](Operator& op) {
      const auto& form = dynamic_cast<files::FFileSelect&>(op.Form());
      EXPECT_EQ(form.keyOK.Caption(), ok);
      EXPECT_EQ(form.idxCaption.Text(), u"title");
      EXPECT_EQ(form.txtFileName.Text(), u"a.txt");
      EXPECT_EQ(form.StartDirectory, u"C:\\Data");
      EXPECT_EQ(form.cboFileType[0].Items(), std::vector<String>{u"Text"});
      EXPECT_TRUE(form.Confined);
      op.Click(u"keyOK");
    });
    EXPECT_EQ((*dialog.*method)({u"a.txt", u"C:\\Data", u"Text|*.txt", false, u"title"}),
              u"C:\\Data\\a.txt");
  }
}

TEST_F(Requests, TouchFileMethodHandsItsArgumentsOver) {
  platform.Expect(u"FFileSelectTouch", [](Operator& op) {
    const auto& form = dynamic_cast<files::FFileSelectTouch&>(op.Form());
    EXPECT_EQ(form.idxCaption.Text(), u"title");
    EXPECT_EQ(form.StartDirectory, u"C:\\Data\\Logs");
    EXPECT_EQ(form.cboExtention.Items(), std::vector<String>{u"Text     *.txt"});
    ASSERT_EQ(form.grdFiles.RowCount(), 1);
    EXPECT_EQ(form.grdFiles.SelectedRow(), 0) << "the file's name";
    op.ClickRow(u"grdFiles", 0);
    op.Click(u"keyOK");
  });
  EXPECT_EQ(dialog->KROpenFileTouch({u"a.txt", u"C:\\Data\\Logs", u"Text|*.txt", false, u"title"}),
            u"C:\\Data\\a.txt");
}

}  // namespace krx::test
