#include "files/SlowAnswersTest.h"

// Whatever the operator does, it ends the same whether the machine answers at once or late.
namespace krx::test {
namespace {

using headless::Operator;
using ::testing::ElementsAreArray;

const StringView kPlaces[] = {
    u"C:\\Data\\Logs", u"C:\\Data", u"C:\\Data\\Gone\\Deeper",   u"C:\\", u"D:\\Backup",
    u"E:\\Data",       u"Z:\\Data", u"\\\\server\\share\\Plant", u""};

class LateAnswersTest : public SlowAnswersTest {
 public:
  using Act = std::function<void(Operator&)>;

 protected:
  using Dialog = std::function<void(const String&, const Script&)>;
  using Seen = std::vector<std::string>;
  static constexpr Milliseconds kLong{1000};

  bool IsKept(const std::string& question) override {
    ++looks_;
    if (looks_ == number_) name_ = question;
    const bool late = question == name_ && platform.Now() - since_ < Milliseconds(50);
    if (!late) ++answered_;
    return late;
  }

  // All that the operator sees.
  Seen Look(Operator& op) const {
    Seen seen;
    for (const StringView name :
         {u"dirSelect", u"filSelect", u"grdFolders", u"grdFiles", u"drvSelect", u"cboDrives",
          u"cboDrivers", u"txtDirectory", u"txtPath", u"txtFullPath", u"txtFileName",
          u"idxFileListBox", u"keyOK"}) {
      if (op.Form().Find(name)) Describe(op, name, seen);
    }
    for (const auto& box : platform.Boxes)
      seen.push_back("box " + ToUtf8(box.Text));
    return seen;
  }
  static void Describe(Operator& op, StringView name, Seen& seen) {
    ui::Control& control = op.Get(name);
    std::string line = ToUtf8(name) + (control.Visible() ? "" : " hidden") +
                       (control.Enabled() ? "" : " disabled");
    if (const auto* const box = dynamic_cast<ui::TextBox*>(&control))
      line += " " + ToUtf8(box->Text());
    if (const auto* const combo = dynamic_cast<ui::ComboBox*>(&control)) {
      line += " " + std::to_string(combo->ListIndex());
      for (const String& item : combo->Items())
        line += " " + ToUtf8(item);
    }
    seen.push_back(line);
    const auto* const rows = dynamic_cast<ui::RowList*>(&control);
    for (int row = 0; rows && row < rows->RowCount(); ++row) {
      line = rows->SelectedRow() == row ? "> " : "  ";
      for (int column = 0; column < (name.starts_with(u"grdFolders") ? 2 : 1); ++column)
        line += ToUtf8(rows->Cell(row, column)) + "|";
      seen.push_back(line);
    }
  }

  // What is seen when an act has ended, of which the answer that is looked for as the n-th is late.
  // Beforehand the dialog has been opened, unless the opening is the act.
  Seen Ending(const String& start, const Act& act, int n) {
    Seen seen;
    log.FailNothing();
    platform.Boxes.clear();
    Begin(act ? 0 : n);
    const Script script = [&](Operator& op) {
      Pass(op, kLong);
      if (act) {
        Begin(n);
        Do("the act", [&] { act(op); });
        Pass(op, kLong);
      }
      seen = Look(op);
      op.Click(u"keyCancel");
    };
    open_(start, script);
    return seen;
  }
  void Begin(int number) {
    looks_ = 0;
    number_ = number;
    name_.clear();
    since_ = platform.Now();
  }
  // Tries every answer late. Returns how many there are.
  int Compare(const String& start, const Act& act) {
    SCOPED_TRACE(ToUtf8(start));
    const Seen prompt = Ending(start, act, 0);
    const int answers = looks_;
    for (int n = 1; n <= answers; ++n) {
      SCOPED_TRACE("answer " + std::to_string(n) + " is late");
      EXPECT_THAT(Ending(start, act, n), ElementsAreArray(prompt)) << name_;
      EXPECT_FALSE(name_.empty());
    }
    return answers;
  }

  // The opening, and each of these acts behind it, at every place. The opening needs no fewer
  // answers than `at_least`.
  void CompareAll(const std::vector<Act>& acts, int at_least, Dialog open) {
    open_ = std::move(open);
    for (const std::size_t slice : {0u, 2u}) {
      machine.Slice = slice;
      for (const StringView start : kPlaces) {
        EXPECT_GE(Compare(String(start), nullptr), at_least) << ToUtf8(start);
        for (std::size_t act = 0; act < acts.size(); ++act) {
          SCOPED_TRACE("act " + std::to_string(act) + ", slice " + std::to_string(slice));
          Compare(String(start), acts[act]);
        }
      }
    }
  }

  Dialog open_;
  int looks_ = 0;
  int number_ = 0;
  std::string name_;
  Milliseconds since_{0};
};

// Choosing a drive, a click, a key.
std::vector<LateAnswersTest::Act> ActsByMouse() {
  std::vector<LateAnswersTest::Act> acts;
  for (int drive = 0; drive < 3; ++drive) {
    acts.emplace_back([drive](Operator& op) {
      auto& drives = op.Get<ui::DriveListBox>(u"drvSelect");
      if (drives.Enabled()) drives.Select(drive);
    });
  }
  for (int row = 0; row < 4; ++row) {
    acts.emplace_back([row](Operator& op) {
      const auto& list = op.Get<ui::DirListBox>(u"dirSelect");
      if (list.Visible() && row < list.RowCount()) op.ClickRow(u"dirSelect", row);
    });
  }
  for (const int key : {ui::kKeyLeft, ui::kKeyRight, ui::kKeyHome, ui::kKeyDown}) {
    acts.emplace_back([key](Operator& op) {
      auto& list = op.Get<ui::DirListBox>(u"dirSelect");
      if (!list.Visible()) return;
      list.SetFocus();
      op.Press(key);
    });
  }
  return acts;
}

// Choosing a drive, a touch, two of them.
std::vector<LateAnswersTest::Act> ActsByTouch() {
  std::vector<LateAnswersTest::Act> acts;
  for (int drive = 0; drive < 3; ++drive) {
    acts.emplace_back([drive](Operator& op) {
      const bool files = op.Form().Find(u"grdFiles") != nullptr;
      op.Get<ui::ComboBox>(files ? u"cboDrivers" : u"cboDrives").Select(drive);
    });
  }
  for (int row = 0; row < 4; ++row) {
    for (const bool open : {true, false}) {
      acts.emplace_back([row, open](Operator& op) {
        const auto& grid = op.Get<ui::KRXGrid>(u"grdFolders");
        if (!grid.Enabled() || row >= grid.RowCount()) return;
        open ? op.DoubleClickRow(u"grdFolders", row) : op.ClickRow(u"grdFolders", row);
      });
    }
  }
  return acts;
}

TEST_F(LateAnswersTest, OfTheDirectoryDialogEndAsPromptOnesDo) {
  for (const bool allow : {true, false}) {
    SCOPED_TRACE(allow ? "not confined" : "confined");
    CompareAll(ActsByMouse(), 4, [&](const String& start, const Script& script) {
      FilesTest::SelectDirectory({start, allow, {}}, script);
    });
  }
}

TEST_F(LateAnswersTest, OfTheFileDialogEndAsPromptOnesDo) {
  for (const bool allow : {true, false}) {
    SCOPED_TRACE(allow ? "not confined" : "confined");
    CompareAll(ActsByMouse(), 4, [&](const String& start, const Script& script) {
      FilesTest::OpenFile({u"name", start, {}, allow, {}}, script);
    });
  }
}

TEST_F(LateAnswersTest, OfTheTouchDirectoryDialogEndAsPromptOnesDo) {
  CompareAll(ActsByTouch(), 2,
             [&](const String& start, const Script& script) { SelectDirectory(start, script); });
}

TEST_F(LateAnswersTest, OfTheTouchFileDialogEndAsPromptOnesDo) {
  CompareAll(ActsByTouch(), 2, [&](const String& start, const Script& script) {
    OpenFile({u"plan.bmp", start, {}, true, {}}, script);
  });
}

}  // namespace
}  // namespace krx::test
