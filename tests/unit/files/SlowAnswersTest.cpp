#include "files/SlowAnswersTest.h"

#include <iostream>

#include "support/Walk.h"

// Each question that a selection dialog asks of the machine is left unanswered in turn, for ever
// and for a while, and in the end all are, while an operator walks through all that he can do.
namespace krx::test {
namespace {

using ui::kKeyDown;
using ui::kKeyEnd;
using ui::kKeyEnter;
using ui::kKeyHome;
using ui::kKeyLeft;
using ui::kKeyRight;
using ui::kKeyUp;

enum class Kind { SelectDirectory, OpenFile, SaveFileAs, SelectDirectoryTouch, OpenFileTouch };

struct Dialog {
  std::string Name;
  Kind Which;
  bool Confined;
  // Answers of a run in which nothing is kept, whatever the start directory. By mouse: the start
  // directory, the labels of three drives, and these drives, unless he may choose none. By touch:
  // the start directory or a drive, its folders, and three drives.
  int AtLeast;

  bool Touch() const { return Which >= Kind::SelectDirectoryTouch; }
};

// A directory, one that is missing below one that exists, a root, another drive, one that is not
// ready, one that is missing, a share, and none.
const StringView kStarts[] = {
    u"C:\\Data\\Logs", u"C:\\Data\\Gone\\Deeper",   u"C:\\", u"D:\\Backup", u"E:\\Data",
    u"Z:\\Data",       u"\\\\server\\share\\Plant", u""};

class EveryAnswerKept : public SlowAnswersTest, public ::testing::WithParamInterface<Dialog> {
 protected:
  // What is kept in a run: the answer that is looked for as the n-th, from then on.
  struct Kept {
    int Number = 0;  // 0: none
    Milliseconds For = Milliseconds::max();
    bool All = false;
  };

  bool IsKept(const std::string& question) override {
    ++looks_;
    names_.insert(question);
    if (looks_ == kept_now_.Number) {
      name_ = question;
      since_ = platform.Now();
    }
    const bool due = question == name_ && platform.Now() - since_ < kept_now_.For;
    if (due || kept_now_.All) return true;
    ++answered_;
    return false;
  }

  String Call(const String& start) {
    const bool allow = !GetParam().Confined;
    switch (GetParam().Which) {
      case Kind::SelectDirectory:
        return dialog->KRSelectDirectory({start, allow, {}});
      case Kind::OpenFile:
        return dialog->KROpenFile({u"name", start, u"Text|*.txt|All|*", allow, {}});
      case Kind::SaveFileAs:
        return dialog->KRSaveFileAs({u"name", start, u"Text|*.txt|All|*", allow, {}});
      case Kind::SelectDirectoryTouch:
        return dialog->KRSelectDirectoryTouch({start, true, {}});
      default:
        return dialog->KROpenFileTouch({u"plan.bmp", start, u"All|*.*|Text|*.txt", true, {}});
    }
  }
  String Form() const {
    if (GetParam().Touch())
      return GetParam().Which == Kind::OpenFileTouch ? u"FFileSelectTouch"
                                                     : u"FDirectorySelectTouch";
    return GetParam().Which == Kind::SelectDirectory ? u"FSelectDirectory" : u"FFileSelect";
  }

  // One of the operator's acts, and the moment until the next one.
  template <class Act>
  void Try(Operator& op, const std::string& name, Act act) {
    Do(name, act);
    EXPECT_TRUE(op.Form().Visible()) << name << " closes the dialog";
    Pass(op, 2 * kMoment);
  }
  void ClickInList(Operator& op, StringView list, int row, bool twice) {
    auto& rows = op.Get<ui::RowList>(list);
    if (!rows.Visible() || !rows.Enabled() || row >= rows.RowCount()) return;
    Try(op, "row " + std::to_string(row) + " of " + ToUtf8(list),
        [&] { twice ? op.DoubleClickRow(list, row) : op.ClickRow(list, row); });
  }
  void Choose(Operator& op, StringView box, int item) {
    auto& combo = op.Get<ui::ComboBox>(box);
    if (!combo.Enabled() || item >= static_cast<int>(combo.Items().size())) return;
    Try(op, "item " + std::to_string(item) + " of " + ToUtf8(box), [&] { combo.Select(item); });
  }
  void PressInList(Operator& op, StringView list, std::initializer_list<int> keys) {
    auto& rows = op.Get<ui::RowList>(list);
    if (!rows.Visible() || !rows.Enabled()) return;
    Try(op, "into " + ToUtf8(list), [&] { rows.SetFocus(); });
    for (const int key : keys)
      Try(op, "key " + std::to_string(key), [&] { op.Press(key); });
  }

  // All that an operator can do but end the dialog.
  void WorkWithMouse(Operator& op) {
    const bool files = op.Form().Find(u"filSelect") != nullptr;
    PressInList(op, u"dirSelect", {kKeyRight, kKeyDown, kKeyRight, kKeyLeft, kKeyLeft});
    for (const int drive : {1, 2, 0})
      Choose(op, u"drvSelect", drive);
    PressInList(op, u"dirSelect", {kKeyHome, kKeyRight, kKeyEnd, kKeyRight, kKeyUp});
    for (const int row : {3, 1, 0, 2})
      ClickInList(op, u"dirSelect", row, false);
    ClickInList(op, u"dirSelect", 1, true);
    if (files) {
      for (const int type : {1, 0})
        Choose(op, u"cboFileType(0)", type);
      ClickInList(op, u"filSelect", 0, false);
    }
    LeaveHalfDone(op);
  }
  // A key that is still down and a press that is released elsewhere.
  void LeaveHalfDone(Operator& op) {
    auto& rows = op.Get<ui::DirListBox>(u"dirSelect");
    if (!rows.Visible() || rows.RowCount() == 0) return;
    Try(op, "press a row", [&] { op.PressRow(u"dirSelect", 0); });
    Try(op, "release elsewhere", [&] { op.ReleaseElsewhere(u"dirSelect"); });
    for (const int key : {kKeyHome, kKeyRight})
      Try(op, "key down", [&] { op.KeyDown(key); });
  }
  void WorkByTouch(Operator& op) {
    const bool files = op.Form().Find(u"grdFiles") != nullptr;
    const StringView drives = files ? u"cboDrivers" : u"cboDrives";
    const auto last = [&] { return op.Get<ui::KRXGrid>(u"grdFolders").RowCount() - 1; };
    ClickInList(op, u"grdFolders", std::max(last(), 0), true);
    ClickInList(op, u"grdFolders", 0, true);
    for (const int drive : {1, 2, 0}) {
      Choose(op, drives, drive);
      ClickInList(op, u"grdFolders", 0, true);
    }
    PressInList(op, u"grdFolders", {kKeyHome, kKeyDown, kKeyDown, kKeyEnter, kKeyHome, kKeyEnter});
    ClickInList(op, u"grdFolders", 1, false);
    if (!files) return;
    for (const int type : {1, 0})
      Choose(op, u"cboExtention", type);
    ClickInList(op, u"grdFiles", 0, false);
    PressInList(op, u"grdFiles", {kKeyDown, kKeyHome});
  }

  // Opens the dialog, works through it and ends it by this key.
  String Run(const String& start, StringView end, Kept kept) {
    log.FailNothing();
    platform.Boxes.clear();
    platform.Pointers.clear();
    looks_ = 0;
    name_.clear();
    kept_now_ = kept;
    String result;
    platform.Expect(Form(), [&](Operator& op) {
      EXPECT_LE(waited_.count(), kLongestWait.count()) << "the opening";
      longest_ = std::max(longest_, waited_);
      opened_ = GetParam().Touch() ? String() : op.Get<ui::DirListBox>(u"dirSelect").Path();
      Pass(op, 3 * kMoment);
      GetParam().Touch() ? WorkByTouch(op) : WorkWithMouse(op);
      Do("the end", [&] { op.Click(end); });
      EXPECT_FALSE(op.Form().Visible()) << "the end is at once";
    });
    waited_ = Milliseconds(0);
    const auto error = ErrorOf([&] { result = Call(start); });
    EXPECT_FALSE(error.has_value());
    EXPECT_TRUE(platform.Pointers.empty() || platform.Pointers.back() == ui::Pointer::Default)
        << "no hourglass stays behind";
    return result;
  }

  void Cancel(const String& start, Kept kept) { EXPECT_EQ(Run(start, u"keyCancel", kept), u""); }
  // Whoever is confined takes nothing that lies outside.
  void Confirm(const String& start, Kept kept) {
    const String chosen = Run(start, u"keyOK", kept);
    if (!GetParam().Confined) return;
    const bool in_start = !start.empty() && chosen.find(start) != String::npos;
    EXPECT_TRUE(in_start || chosen.find(begins_) != String::npos) << ToUtf8(chosen);
  }

  // Silence makes no box that an answer would not have made.
  void JudgeBoxes() {
    EXPECT_FALSE(name_.empty()) << "nothing was kept";
    for (const auto& box : platform.Boxes)
      EXPECT_THAT(boxes_, ::testing::Contains(box)) << name_;
  }
  // Keeps each answer in turn; returns how many there were.
  int KeepEach(const String& start) {
    Run(start, u"keyCancel", {});
    begins_ = opened_;
    const int looks = looks_;
    boxes_ = platform.Boxes;
    for (int n = 1; n <= looks && !HasFailure(); ++n) {
      SCOPED_TRACE("answer " + std::to_string(n));
      Cancel(start, {n});
      JudgeBoxes();
      Confirm(start, {n});
      Confirm(start, {n, 3 * kMoment});
      JudgeBoxes();
    }
    return looks;
  }

  int looks_ = 0;  // at answers, in this run
  std::set<std::string> names_;
  Kept kept_now_;
  std::string name_;
  Milliseconds since_{0};
  String opened_;
  String begins_;  // where the list begins when nothing is kept
  std::vector<headless::HeadlessPlatform::Box> boxes_;
};

TEST_P(EveryAnswerKept, HangsNobody) {
  for (const std::size_t slice : {0u, 2u}) {
    machine.Slice = slice;
    int all = 0;
    for (const StringView start : kStarts) {
      SCOPED_TRACE("start " + ToUtf8(start) + ", slice " + std::to_string(slice));
      const int kept = KeepEach(String(start));
      EXPECT_GE(kept, GetParam().AtLeast);
      all += kept;
      for (const bool cancel : {true, false}) {
        cancel ? Cancel(String(start), {0, {}, true}) : Confirm(String(start), {0, {}, true});
        EXPECT_THAT(platform.Boxes, ::testing::IsEmpty()) << "silence is no refusal";
      }
      if (HasFailure()) return;
    }
    std::cout << "answers kept in turn: " << all << " of " << names_.size()
              << " questions; longest wait " << longest_.count() << " ms\n";
  }
}

INSTANTIATE_TEST_SUITE_P(
    Dialogs, EveryAnswerKept,
    ::testing::Values(Dialog{"SelectDirectory", Kind::SelectDirectory, false, 7},
                      Dialog{"SelectDirectoryConfined", Kind::SelectDirectory, true, 4},
                      Dialog{"OpenFile", Kind::OpenFile, false, 7},
                      Dialog{"OpenFileConfined", Kind::OpenFile, true, 4},
                      Dialog{"SaveFileAs", Kind::SaveFileAs, false, 7},
                      Dialog{"SaveFileAsConfined", Kind::SaveFileAs, true, 4},
                      Dialog{"SelectDirectoryTouch", Kind::SelectDirectoryTouch, false, 5},
                      Dialog{"OpenFileTouch", Kind::OpenFileTouch, false, 5}),
    NameOfRow<Dialog>);

}  // namespace
}  // namespace krx::test
