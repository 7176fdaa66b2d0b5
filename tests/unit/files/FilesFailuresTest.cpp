#include <algorithm>
#include <iostream>

#include "files/FilesTest.h"

// Every call that the selection dialogs make to services, text measuring and the file system is
// failed in turn, once and from then on.
namespace krx::test {
namespace {

class FilesFailuresTest : public FilesTest {
 protected:
  FilesFailuresTest() { platform.MeasuringIsCounted = true; }

  // Whatever an operator can do, as far as the lists that came about allow it.
  static void Wander(Operator& op, StringView close) {
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    auto& drives = op.Get<ui::DriveListBox>(u"drvSelect");
    for (const int drive : {1, 2, 0}) {
      if (drive < static_cast<int>(drives.Items().size())) drives.Select(drive);
    }
    if (list.Visible()) {
      list.SetFocus();
      for (const int key : {ui::kKeyDown, ui::kKeyRight, ui::kKeyDown, ui::kKeyRight, ui::kKeyLeft,
                            ui::kKeyLeft, ui::kKeyHome, ui::kKeyLeft, ui::kKeyEnd, ui::kKeyUp})
        op.Press(key);
      for (int row = 0; row < std::min(list.RowCount(), 3); ++row)
        op.ClickRow(u"dirSelect", row);
    }
    op.Click(close);
  }

  // What is passed over: fonts, everything about files, and a filter that cannot be resolved.
  static bool Forgiven(const std::vector<std::string>& entries, std::size_t at) {
    const auto text = std::find_if(entries.begin(), entries.end(), [](const std::string& entry) {
      return entry == "CreateTextService";
    });
    const bool fonts = at < static_cast<std::size_t>(text - entries.begin());
    const std::string& call = entries[at];
    const bool of_files = call.ends_with(")");
    return fonts || of_files || call.starts_with("ResolveText");
  }

  template <class Run>
  void FailEveryCall(Run run) {
    log.FailNothing();
    run();
    std::vector<std::string> calls = log.Entries();
    std::erase_if(calls, [](const std::string& entry) { return entry.starts_with('~'); });
    ASSERT_EQ(static_cast<int>(calls.size()), log.Calls());
    for (int n = 1; n <= static_cast<int>(calls.size()); ++n) {
      SCOPED_TRACE(calls[static_cast<std::size_t>(n - 1)]);
      const bool forgiven = Forgiven(calls, static_cast<std::size_t>(n - 1));
      FailOne(run, n, false, forgiven);
      FailOne(run, n, true, false);
      if (HasFailure()) return;
    }
    std::cout << "calls failed in turn: " << calls.size() << '\n';
  }

  template <class Run>
  void FailOne(Run run, int n, bool persistent, bool forgiven) {
    platform.Forget();
    log.FailCall(n, persistent);
    const std::optional<Error> error = ErrorOf(run);
    platform.Forget();
    EXPECT_TRUE(log.Injected());
    EXPECT_EQ(runtime.LiveTextServices + runtime.LiveFontServices, 0);
    if (persistent) return;  // what is forgiven then depends on the first call that is not
    EXPECT_EQ(error.has_value(), !forgiven);
    if (error) {
      EXPECT_EQ(error->Status(), CallLog::FailureOf(n).Status());
      EXPECT_EQ(log.Calls(), n) << "nothing is called after the failure";
    }
  }
};

TEST_F(FilesFailuresTest, OfTheDirectoryDialogReachTheCallerOrNobody) {
  for (const bool allow : {true, false}) {
    FailEveryCall([&] {
      SelectDirectory({u"C:\\Data\\Logs", allow, {}}, [](Operator& op) { Wander(op, u"keyOK"); });
    });
  }
}

TEST_F(FilesFailuresTest, OfTheFileDialogReachTheCallerOrNobody) {
  for (const bool allow : {true, false}) {
    FailEveryCall([&] {
      SaveFile({u"name", u"C:\\Data\\Logs", u"@Text|*.txt|All|*", allow, {}},
               [](Operator& op) { Wander(op, u"keyOK"); });
    });
  }
}

TEST_F(FilesFailuresTest, WithoutAFileSystemTheDialogStillOpensAndCloses) {
  machine.OnCall = [](const std::string&) { throw RuntimeError(57, u"Device I/O error"); };
  EXPECT_EQ(SelectDirectory({},
                            [](Operator& op) {
                              EXPECT_EQ(op.Get<ui::DirListBox>(u"dirSelect").RowCount(), 0);
                              op.Get(u"dirSelect").SetFocus();
                              for (const int key : {37, 38, 39, 40})
                                op.Press(key);
                              op.Click(u"keyOK");
                            }),
            u"");
}

}  // namespace
}  // namespace krx::test
