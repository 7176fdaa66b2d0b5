#include <random>

#include "files/FilesTest.h"
#include "files/NavigationModel.h"
#include "support/Seed.h"

// Random keys, clicks and drive changes in random trees, against a model of the rules, in lists
// that are complete at once and in lists that grow. A divergence names its seed; KRX_SEED starts at
// another one.
namespace krx::test {
namespace {

const unsigned kSequences = Sequences(200000);
const unsigned kHalves = Sequences(100000);
constexpr unsigned kSequencesOfATree = 100;

// Names that meet in paths: one is the beginning of another, some are unlike what people type.
const StringView kNames[] = {u"Data",  u"Data2",  u"Dat",    u"a", u"a.b",      u" lead",
                             u"end. ", u"\u00c4", u"\xd83d", u"C", u"Data.Data"};

class RandomNavigationTest : public FilesTest {
 protected:
  void MakeTree(unsigned seed) {
    random_.seed(seed);
    machine.RemoveDrive(u"C:");
    machine.RemoveDrive(u"D:");
    tree_ = {};
    files_.clear();
    for (const StringView drive : {u"C:", u"D:"}) {
      machine.AddDrive(String(drive));
      AddFolder(String(drive) + u"\\", 0);
    }
    machine.CurrentFolder = AnyFolder();
    while (tree_.Closed.contains(machine.CurrentFolder))
      machine.CurrentFolder = AnyFolder();
  }

  void AddFolder(const String& path, int depth) {
    tree_.Below[path];
    const String file = u"f" + ToString(static_cast<int>(files_.size()));
    machine.AddFile(Tree::In(path, file));
    files_[file] = path;
    if (depth > 0 && Below(8) == 0) {
      tree_.Closed.insert(path);
      machine.Deny(path);
    }
    for (unsigned count = depth < 4 ? Below(4) : 0; count > 0; --count) {
      const String name(kNames[Below(std::size(kNames))]);
      auto& below = tree_.Below[path];
      if (std::find(below.begin(), below.end(), name) != below.end()) continue;
      below.push_back(name);
      machine.AddFolder(Tree::In(path, name));
      AddFolder(Tree::In(path, name), depth + 1);
    }
  }

  unsigned Below(std::size_t limit) { return static_cast<unsigned>(random_() % limit); }
  String AnyFolder() {
    auto at = tree_.Below.begin();
    std::advance(at, Below(tree_.Below.size()));
    return at->first;
  }
  // Exists and can be opened while confined; with a separator at the end at times. Then no entry is
  // in the start directory but those below it, and in a list that still grows the key's release
  // comes before them; so growing lists go without.
  String StartDirectory(bool confined, bool growing) {
    for (;;) {
      String path = AnyFolder();
      if (!confined && Below(4) == 0) return path + u"\\missing\\more";
      if (tree_.Closed.contains(path)) continue;
      if (path.size() == 3) path.resize(Below(2) == 0 ? 2 : 3);
      if (!growing && Below(8) == 0 && !path.ends_with(u'\\')) path += u'\\';
      return path;
    }
  }

  // Whether a path lies in the start directory, however that is written.
  static bool Inside(const String& path, String start) {
    if (!start.ends_with(u'\\')) start += u'\\';
    return (path + u'\\').starts_with(start);
  }

  struct Sequence {
    bool OfFiles;
    bool Confined;
    std::size_t Slice;
    String Start;
  };

  // The model knows no lists that are not complete.
  bool Compared(const Sequence& sequence) const { return sequence.Slice == 0 || patient_; }

  static String Shown(Operator& op, const Sequence& sequence) {
    return sequence.OfFiles ? op.Get<ui::FileListBox>(u"filSelect").Path()
                            : TextOf(op, u"txtDirectory");
  }

  void ExpectInside(Operator& op, const Sequence& sequence) {
    if (!sequence.Confined) return;
    EXPECT_TRUE(Inside(Shown(op, sequence), sequence.Start)) << ToUtf8(Shown(op, sequence));
    if (!sequence.OfFiles) return;
    for (const std::string& file : FilesShown(op.Get<ui::FileListBox>(u"filSelect"))) {
      const String folder = files_.at(String(file.begin(), file.end()));
      EXPECT_TRUE(Inside(folder, sequence.Start)) << file << " of " << ToUtf8(folder);
    }
  }

  // One act of the operator; the model does the same.
  void Act(Operator& op, NavigationModel& model, const Sequence& sequence) {
    static constexpr int kKeys[] = {ui::kKeyLeft, ui::kKeyUp,  ui::kKeyRight, ui::kKeyDown,
                                    ui::kKeyHome, ui::kKeyEnd, ui::kKeyF1};
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    const unsigned act = Below(10);
    if (act == 0 && !sequence.Confined) {
      const int drive = static_cast<int>(Below(2));
      auto& drives = op.Get<ui::DriveListBox>(u"drvSelect");
      // The drives stand in the order of their making: the first one is E:, which is not ready.
      const int index = drive + 1;
      if (index == drives.ListIndex()) return;
      drives.Select(index);
      model.Drive(drive == 0 ? u"c:" : u"d:", drive == 0 ? u"C:\\" : u"D:\\");
    } else if (act <= 3) {
      const unsigned row = Below(static_cast<unsigned>(list.RowCount()));
      const bool twice = Below(4) == 0;
      twice ? op.DoubleClickRow(u"dirSelect", static_cast<int>(row))
            : op.ClickRow(u"dirSelect", static_cast<int>(row));
      // A second click chooses nothing more.
      if (Compared(sequence)) model.Click(row);
    } else {
      const int key = kKeys[Below(std::size(kKeys))];
      list.SetFocus();
      op.Press(key);
      model.Press(key);
    }
    // A growing list is complete after this, unless it is left to grow during the next act.
    if (sequence.Slice > 0 && patient_) op.Wait(std::chrono::milliseconds(300));
  }

  void Compare(Operator& op, const NavigationModel& model, const Sequence& sequence) {
    const auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    ASSERT_EQ(list.Path(), model.Open);
    ASSERT_EQ(list.List(list.ListIndex()), model.Entry);
    if (sequence.OfFiles) {
      // A separator at the end of the start directory is no part of a folder's path.
      String shown = model.Shown;
      if (shown.size() > 3 && shown.ends_with(u'\\')) shown.pop_back();
      ASSERT_EQ(Shown(op, sequence), shown.size() == 2 ? shown + u'\\' : shown);
    } else {
      ASSERT_EQ(Shown(op, sequence), model.Shown);
    }
  }

  void Operate(Operator& op, const Sequence& sequence) {
    NavigationModel model(tree_, sequence.Confined, !sequence.OfFiles);
    model.Start(machine.CurrentFolder, sequence.Start);
    if (sequence.Slice > 0 && patient_) op.Wait(std::chrono::milliseconds(300));
    for (unsigned acts = 1 + Below(10); acts > 0 && !HasFailure(); --acts) {
      Act(op, model, sequence);
      ExpectInside(op, sequence);
      if (Compared(sequence)) Compare(op, model, sequence);
    }
    shown_last_ = Shown(op, sequence);
    if (sequence.OfFiles) op.Get<ui::TextBox>(u"txtFileName").Text = u"name";
    op.Click(u"keyOK");
  }

  String Answer(const Sequence& sequence, const Script& script) {
    machine.Slice = sequence.Slice;
    log.FailNothing();
    return sequence.OfFiles
               ? OpenFile({{}, sequence.Start, u"All|*", !sequence.Confined, {}}, script)
               : SelectDirectory({sequence.Start, !sequence.Confined, {}}, script);
  }

  void Run(unsigned seed) {
    random_.seed(seed);
    patient_ = Below(4) != 0;
    Sequence sequence{Below(2) == 0, Below(3) != 0, Below(4) == 0 ? 1 + Below(2) : 0, {}};
    sequence.Start = StartDirectory(sequence.Confined, sequence.Slice > 0);
    const String result = Answer(sequence, [&](Operator& op) { Operate(op, sequence); });
    EXPECT_EQ(result, sequence.OfFiles ? shown_last_ + u"\\name" : shown_last_);
    EXPECT_TRUE(!sequence.Confined || Inside(result, sequence.Start)) << ToUtf8(result);
  }

  // Half of a gesture, whose other half may come or not, or reach another control.
  void Half(Operator& op, const Sequence& sequence) {
    static constexpr int kKeyAlt = 18;
    static constexpr int kKeys[] = {ui::kKeyLeft, ui::kKeyUp,  ui::kKeyRight, ui::kKeyDown,
                                    ui::kKeyHome, ui::kKeyEnd, ui::kKeyTab,   kKeyAlt};
    static constexpr StringView kElsewhere[] = {u"keyCancel", u"keyOK"};
    auto& list = op.Get<ui::DirListBox>(u"dirSelect");
    const int row = static_cast<int>(Below(static_cast<unsigned>(list.RowCount())));
    switch (Below(8)) {
      case 0:
        return op.PressRow(u"dirSelect", row);
      case 1:
        return op.ReleaseElsewhere(u"dirSelect");
      case 2:
        return op.ClickRow(u"dirSelect", row);
      case 3:
        return list.OperatorClicked(row);  // a release alone, on a row that was pressed before
      case 4:
        return op.KeyUp(kKeys[Below(std::size(kKeys))]);
      case 5:
        return Below(2) == 0 ? list.SetFocus() : op.Get(kElsewhere[Below(2)]).SetFocus();
      default:
        op.KeyDown(kKeys[Below(std::size(kKeys))]);
    }
    if (sequence.Slice > 0 && Below(2) == 0) op.Wait(std::chrono::milliseconds(300));
  }

  void RunHalves(unsigned seed) {
    random_.seed(seed);
    Sequence sequence{Below(2) == 0, true, Below(4) == 0 ? 1 + Below(2) : 0, {}};
    sequence.Start = StartDirectory(true, sequence.Slice > 0);
    const String result = Answer(sequence, [&](Operator& op) {
      if (sequence.OfFiles) op.Get<ui::TextBox>(u"txtFileName").Text = u"name";
      op.Get(u"dirSelect").SetFocus();
      for (unsigned acts = 1 + Below(12); acts > 0; --acts)
        Half(op, sequence);
      if (Below(2) == 0) return op.Click(u"keyOK");
      op.Get<ui::KRXKey>(u"keyOK").Click();  // by its access key, while the list keeps the focus
    });
    // The rules go by the text: an entry that contains it is inside.
    String start = sequence.Start;
    if (start.size() > 3 && start.ends_with(u'\\')) start.pop_back();
    EXPECT_NE(result.find(start), String::npos) << ToUtf8(result) << " from " << ToUtf8(start);
  }

  void RunAll(unsigned count, const std::function<void(unsigned)>& run) {
    const unsigned first = FirstSeed();
    for (unsigned i = 0; i < count && !HasFailure(); ++i) {
      SCOPED_TRACE("KRX_SEED=" + std::to_string(first + i - i % kSequencesOfATree) + ", sequence " +
                   std::to_string(first + i));
      if (i % kSequencesOfATree == 0) MakeTree(first + i);
      run(first + i);
    }
  }

  std::mt19937 random_;
  Tree tree_;
  std::map<String, String> files_;  // the folder of every file's name
  bool patient_ = true;
  String shown_last_;
};

TEST_F(RandomNavigationTest, FollowsTheModelAndStaysInsideWhileConfined) {
  RunAll(kSequences, [this](unsigned seed) { Run(seed); });
}

TEST_F(RandomNavigationTest, HoweverHalfAGestureIsLeftOKReturnsWhatIsInside) {
  RunAll(kHalves, [this](unsigned seed) { RunHalves(seed); });
}

}  // namespace
}  // namespace krx::test
