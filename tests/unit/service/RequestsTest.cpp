// How the methods of the dialog service hand their arguments to the dialogs and the outcome back.

#include <functional>

#include "support/DialogTest.h"

namespace krx::test {

using service::DirectoryRequest;
using service::FileDialogKind;
using service::FileRequest;
using service::KRXDialog;

class Requests : public DialogTest {
 protected:
  Requests() {
    auto& dialogs = apartment.Dialogs;
    dialogs.AddUser = [this](service::Apartment&) { return Note("AddUser"), true; };
    dialogs.User = [this](service::Apartment&) { Note("User"); };
    dialogs.SelectDirectory = [this](service::Apartment&, const DirectoryRequest& request) {
      return Take("SelectDirectory", request);
    };
    dialogs.SelectDirectoryTouch = [this](service::Apartment&, const DirectoryRequest& request) {
      return Take("SelectDirectoryTouch", request);
    };
    dialogs.SelectFile = [this](service::Apartment&, const FileRequest& request,
                                FileDialogKind kind) {
      return Take("SelectFile " + std::to_string(kind), request);
    };
    dialogs.SelectFileTouch = [this](service::Apartment&, const FileRequest& request) {
      return Take("SelectFileTouch", request);
    };
  }

  void Note(const std::string& opened) { opened_ = opened; }
  String Take(const std::string& entry, const DirectoryRequest& request) {
    opened_ = entry;
    directory = request;
    return u"D:\\answer";
  }
  String Take(const std::string& entry, const FileRequest& request) {
    opened_ = entry;
    file = request;
    return u"D:\\answer.txt";
  }

  std::string opened_;
  DirectoryRequest directory;
  FileRequest file;
};

TEST_F(Requests, AddUserTellsTheOutcome) {
  EXPECT_TRUE(dialog->KRAddUser());
  EXPECT_EQ(opened_, "AddUser");
}

TEST_F(Requests, UserOpensTheOverview) {
  dialog->KRUser();
  EXPECT_EQ(opened_, "User");
}

TEST_F(Requests, DirectoryMethodsHandAllArgumentsOver) {
  for (const auto& [method, entry] :
       {std::pair{&KRXDialog::KRSelectDirectory, "SelectDirectory"},
        std::pair{&KRXDialog::KRSelectDirectoryTouch, "SelectDirectoryTouch"}}) {
    EXPECT_EQ((*dialog.*method)({u"D:\\Data", false, u"title"}), u"D:\\answer");
    EXPECT_EQ(opened_, entry);
    EXPECT_EQ(directory.StartDirectory, u"D:\\Data");
    EXPECT_FALSE(directory.AllowChangeUp);
    EXPECT_EQ(directory.Title, u"title");
  }
}

TEST_F(Requests, FileMethodsHandAllArgumentsOverAndSavingIsTold) {
  for (const auto& [method, entry] : {std::pair{&KRXDialog::KROpenFile, "SelectFile 0"},
                                      std::pair{&KRXDialog::KRSaveFileAs, "SelectFile 1"},
                                      std::pair{&KRXDialog::KROpenFileTouch, "SelectFileTouch"}}) {
    EXPECT_EQ((*dialog.*method)({u"a.txt", u"D:\\Data", u"All|*.*", false, u"title"}),
              u"D:\\answer.txt");
    EXPECT_EQ(opened_, entry);
    EXPECT_EQ(file.FileName, u"a.txt");
    EXPECT_EQ(file.StartDirectory, u"D:\\Data");
    EXPECT_EQ(file.Filter, u"All|*.*");
    EXPECT_FALSE(file.AllowChangeUp);
    EXPECT_EQ(file.Title, u"title");
  }
}

TEST_F(Requests, MethodsWithoutTheirDialogsAreNotImplemented) {
  apartment.Dialogs = {};
  const std::function<void()> calls[] = {
      [this] { dialog->KRAddUser(); },           [this] { dialog->KRUser(); },
      [this] { dialog->KRSelectDirectory({}); }, [this] { dialog->KRSelectDirectoryTouch({}); },
      [this] { dialog->KROpenFile({}); },        [this] { dialog->KRSaveFileAs({}); },
      [this] { dialog->KROpenFileTouch({}); },
  };
  for (const auto& call : calls)
    EXPECT_EQ(StatusOf(call), 0x80004001u);
}

}  // namespace krx::test
