#include "files/TouchTest.h"

// Every call that a touch dialog makes to the file system or to the host is failed in turn, once
// and for good. The dialog stays open: what it reports is a box with the name of its procedure.
namespace krx::test {

class TouchFailures : public TouchTest {
 protected:
  using Box = headless::HeadlessPlatform::Box;

  TouchFailures() { platform.MeasuringIsCounted = true; }

  // Works through everything that a failure may have left of the dialog, and ends it.
  static void Work(Operator& op) {
    const bool files = op.Form().Find(u"grdFiles") != nullptr;
    auto& drives = op.Get<ui::KRXComboBox>(files ? u"cboDrivers" : u"cboDrives");
    auto& folders = op.Get<ui::KRXGrid>(u"grdFolders");
    const auto open_last = [&] {
      if (folders.RowCount() > 0 && folders.Enabled())
        op.DoubleClickRow(u"grdFolders", folders.RowCount() - 1);
    };
    const auto open_first = [&] {
      if (folders.RowCount() > 0 && folders.Enabled()) op.DoubleClickRow(u"grdFolders", 0);
    };
    open_last();
    open_first();
    for (int drive = 0; drive < static_cast<int>(drives.Items().size()); ++drive) {
      drives.Select(drive);
      open_first();
    }
    if (files) {
      auto& types = op.Get<ui::KRXComboBox>(u"cboExtention");
      for (int i = 0; i < static_cast<int>(types.Items().size()); ++i)
        types.Select(i);
      if (op.Get<ui::KRXGrid>(u"grdFiles").RowCount() > 0) op.ClickRow(u"grdFiles", 0);
    }
    EXPECT_TRUE(op.Form().Visible()) << "no failure closes the dialog";
    op.Click(u"keyCancel");
  }

  bool Named(const String& title) const {
    const std::vector<String> procedures{
        u"GetDrives", u"RefreshPath",   u"RefreshFullPath", u"ReadExtention", u"FilterFile",
        u"GetFiles",  u"GetSubFolders", u"SelectFolder",    u"SelectFile",    u"Information"};
    return std::find(procedures.begin(), procedures.end(), title) != procedures.end();
  }

  // Runs the dialog with each call failing. Behind the `asked` calls that ask for the start
  // directory, `setting_up` calls belong to steps whose failure reaches the caller, before anything
  // is shown.
  void FailEveryCall(const String& form, const std::function<String()>& run, int asked,
                     int setting_up, int at_least) {
    const auto once = [&](int n, bool persistent) {
      platform.Forget();
      platform.Boxes.clear();
      log.FailCall(n, persistent);
      platform.Expect(form, Work);
      const std::optional<Error> error = ErrorOf([&] { EXPECT_EQ(run(), u""); });
      const bool reaches =
          persistent ? n <= asked + setting_up : n > asked && n <= asked + setting_up;
      EXPECT_EQ(error.has_value(), reaches) << n;
      for (const Box& box : platform.Boxes) {
        EXPECT_TRUE(Named(box.Title)) << ToUtf8(box.Title);
        EXPECT_EQ(box.Style, 0);
        EXPECT_FALSE(box.Text.empty());
      }
      EXPECT_TRUE(platform.Pointers.empty() || platform.Pointers.back() == ui::Pointer::Default);
      return log.Injected();
    };
    int failed = 0;
    for (int n = 1; once(n, false); ++n) {
      ++failed;
      once(n, true);
      ASSERT_FALSE(HasFailure()) << "call " << n;
    }
    RecordProperty("FailedCalls", failed);
    std::cout << "calls failed in turn: " << failed << '\n';
    EXPECT_GE(failed, at_least);
    platform.Forget();
    log.FailNothing();
  }
};

// Two questions about the start directory come first, and the caption with its service; then fonts
// (4 classes, 2 calls each, and their service), texts (5), measuring, drives, folders and what is
// opened.
TEST_F(TouchFailures, DirectoryDialog) {
  FailEveryCall(
      u"FDirectorySelectTouch",
      [this] {
        return dialog->KRSelectDirectoryTouch({u"C:\\Data\\Logs", true, {}});
      },
      2, 2, 2 + 2 + 9 + 5 + 20);
}

// Two questions, nine texts with their service before the form is shown (a filter without a
// reference asks nobody), fonts (4 classes, 2 calls each, and their service), measuring, drives,
// folders, files and what is opened.
TEST_F(TouchFailures, FileDialog) {
  FailEveryCall(
      u"FFileSelectTouch",
      [this] {
        return dialog->KROpenFileTouch(
            {u"plan.bmp", u"C:\\Data\\Logs", u"All|*.*|Text|*.txt", true, {}});
      },
      2, 10, 2 + 10 + 9 + 40);
}

struct Failure {
  std::string Call;  // the first call that begins so fails
  String Title;
};

TEST_F(TouchFailures, ReportsBearTheProceduresName) {
  const Failure failures[] = {
      {"Drives(", u"GetDrives"}, {"AskFolder(", u"GetDrives"}, {"ReadFolder(", u"GetDrives"}};
  for (const Failure& failure : failures) {
    platform.Boxes.clear();
    bool due = true;
    machine.OnCall = [&](const std::string& call) {
      if (due && call.starts_with(failure.Call)) {
        due = false;
        throw RuntimeError(57, u"Device I/O error");
      }
    };
    OpenFile({u"plan.bmp", u"C:\\Data\\Logs", u"All|*.*", true, {}},
             [](Operator& op) { op.Click(u"keyCancel"); });
    EXPECT_FALSE(due) << failure.Call;
    EXPECT_THAT(platform.Boxes,
                ::testing::ElementsAre(Box{u"57: Device I/O error", 0, failure.Title}))
        << failure.Call;
  }
}

// Whatever a procedure fails with, the operator gets its box and the dialog stays.
TEST_F(TouchFailures, FailuresOfEveryKindAreReported) {
  struct Kind {
    std::function<void()> Fail;
    String Text;
  };
  const Kind kinds[] = {{[] { throw std::bad_alloc(); }, u"7: Out of memory"},
                        {[] { throw std::out_of_range("far"); }, u"51: Internal error: far"},
                        {[] { throw 1; }, u"51: Internal error"}};
  for (const Kind& kind : kinds) {
    platform.Boxes.clear();
    machine.OnCall = [&](const std::string& call) {
      if (call.starts_with("Drives(") || call.starts_with("ReadFolder(")) kind.Fail();
    };
    SelectDirectory(u"C:\\Data", [](Operator& op) { op.Click(u"keyCancel"); });
    EXPECT_THAT(platform.Boxes, ::testing::ElementsAre(Box{kind.Text, 0, u"GetDrives"}));
    platform.Boxes.clear();
    OpenFile({{}, u"C:\\Data", {}, true, {}}, [](Operator& op) { op.Click(u"keyCancel"); });
    EXPECT_THAT(platform.Boxes, ::testing::ElementsAre(Box{kind.Text, 0, u"GetDrives"}));
  }
}

TEST_F(TouchFailures, ListingFoldersFailsSilentlyInTheDirectoryDialog) {
  SelectDirectory(u"C:\\Data\\Logs", [this](Operator& op) {
    machine.Remove(u"C:\\Data\\Zeta");
    machine.Deny(u"C:\\Data\\Logs");
    for (const StringView folder : {u"Zeta", u"Logs"}) {
      Open(op, folder);
      EXPECT_EQ(TextOf(op, u"txtDirectory"), u"C:\\Data\\" + String(folder));
      EXPECT_EQ(Rows(op).size(), 4u) << "the rows stay";
    }
    EXPECT_THAT(platform.Boxes, ::testing::IsEmpty());
    op.Click(u"keyCancel");
  });
}

TEST_F(TouchFailures, AFolderThatVanishedIsToldByTheFileDialog) {
  OpenFile({{}, u"C:\\Data\\Logs", {}, true, {}}, [this](Operator& op) {
    machine.Remove(u"C:\\Data\\Zeta");
    Touch(op, u"Zeta");
    EXPECT_THAT(platform.Boxes, ::testing::ElementsAre(Box{u"76: Path not found", 0, u"GetFiles"}));
    EXPECT_THAT(Rows(op, u"grdFiles"), ::testing::IsEmpty());
    op.Click(u"keyCancel");
  });
}

}  // namespace krx::test
