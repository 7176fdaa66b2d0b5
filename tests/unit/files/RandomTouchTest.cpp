#include <random>

#include "files/TouchTest.h"
#include "support/Seed.h"

// Random touches in random trees against a model of path, depth and grid written from the rules. A
// divergence prints its seed; KRX_SEED starts at another one.
namespace krx::test {

namespace {

const unsigned kSequences = Sequences(200000);
constexpr int kSteps = 8;

using Names = std::vector<String>;
using Tree = std::map<String, Names>;  // subfolders by path without an end

// What the dialog is to show. A listed folder is a list of names, and the path is that list with or
// without a touched folder behind it.
struct Model {
  const Tree& Folders;
  Names Listed;                 // parts of the listed folder, the drive first
  std::optional<String> Named;  // the touched folder behind it
  Names Rows;

  static String Join(const Names& parts) {
    String path;
    for (const String& part : parts)
      path += (path.empty() ? u"" : u"\\") + part;
    return path;
  }
  String Path() const { return Join(Listed) + (Named ? u"\\" + *Named : String()); }
  const Names& Below(const String& path) const {
    static const Names none;
    const auto found = Folders.find(path);
    return found == Folders.end() ? none : found->second;
  }
  void List(const String& path) {
    Rows = Below(path);
    if (path.find(u'\\') != String::npos) Rows.insert(Rows.begin(), u"..");
  }
  void Drive(const String& drive) {
    Listed = {drive};
    Named.reset();
    List(drive);
  }
  void Touch(int row) {
    const String& name = Rows[static_cast<std::size_t>(row)];
    Named = name == u".." ? std::nullopt : std::optional(name);
  }
  void Open(int row) {
    Touch(row);
    if (!Named) {
      Listed.pop_back();
      // A parent always has a subfolder to be listed.
      return List(Join(Listed));
    }
    const String path = Path();
    if (Below(path).empty()) return;
    Listed.push_back(*Named);
    Named.reset();
    List(path);
  }
};

}  // namespace

class RandomTouch : public TouchTest {
 protected:
  int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

  void Grow(const String& path, int depth) {
    const int count = Pick(4);
    for (int i = 0; i < count; ++i) {
      const String name(1, static_cast<char16_t>(u'a' + i));
      tree_[path].push_back(name);
      machine.AddFolder(path + u"\\" + name);
      if (depth > 0) Grow(path + u"\\" + name, depth - 1);
    }
  }
  void NewMachine(unsigned seed) {
    random_.seed(seed);
    tree_.clear();
    machine = headless::SimulatedFiles();
    machine.AddDrive(u"D:");
    machine.Slice = static_cast<std::size_t>(Pick(3));
    Grow(u"C:", 2);
    Grow(u"D:", 1);
  }
  String AnyPath() {
    if (tree_.empty() || Pick(6) == 0) return Pick(2) ? u"D:" : u"C:\\nowhere";
    auto at = tree_.begin();
    std::advance(at, Pick(static_cast<int>(tree_.size())));
    return at->first;
  }

  static void Compare(Operator& op, const Model& model) {
    auto& form = dynamic_cast<files::FDirectorySelectTouch&>(op.Form());
    ASSERT_EQ(form.txtDirectory.Text(), model.Path());
    ASSERT_EQ(form.Depth, static_cast<std::int32_t>(model.Listed.size()) - 1);
    ASSERT_EQ(form.grdFolders.RowCount(), static_cast<int>(model.Rows.size()));
    for (int row = 0; row < form.grdFolders.RowCount(); ++row)
      ASSERT_EQ(form.grdFolders.Cell(row, 1), model.Rows[static_cast<std::size_t>(row)]);
  }
  // The markers that have come are right, and all come in time.
  void CompareMarkers(Operator& op, const Model& model) {
    op.Wait(std::chrono::milliseconds(2000));
    const auto& grid = op.Get<ui::KRXGrid>(u"grdFolders");
    for (int row = 0; row < grid.RowCount(); ++row) {
      const String& name = model.Rows[static_cast<std::size_t>(row)];
      const String path = Model::Join(model.Listed) + u"\\" + name;
      const bool marked = name != u".." && !model.Below(path).empty();
      ASSERT_EQ(grid.Cell(row, 0), marked ? u" +" : u"");
    }
  }

  Model Start(const String& start) const {
    Model model{tree_, {}, {}, {}};
    const std::size_t last = start.rfind(u'\\');
    const bool exists = start == u"D:" || start == u"C:" || start != u"C:\\nowhere";
    if (!exists || last == String::npos) {
      model.Drive(start.substr(0, 2));
      return model;
    }
    for (String rest = start.substr(0, last); !rest.empty();) {
      const std::size_t end = std::min(rest.find(u'\\'), rest.size());
      model.Listed.push_back(rest.substr(0, end));
      rest.erase(0, end + 1);
    }
    model.List(start.substr(0, last));
    return model;
  }

  // Rows that are still to come are waited for.
  void Compared(Operator& op, const Model& model) {
    if (machine.Slice > 0) op.Wait(std::chrono::milliseconds(300));
    Compare(op, model);
  }

  void Work(Operator& op, Model& model) {
    Compared(op, model);
    for (int i = 0; i < kSteps && !HasFailure(); ++i) {
      const int rows = static_cast<int>(model.Rows.size());
      const int what = Pick(10);
      if (what == 0) {
        const int drive = Pick(2);
        op.Get<ui::KRXComboBox>(u"cboDrives").Select(drive);
        model.Drive(drive == 0 ? u"C:" : u"D:");
      } else if (rows > 0 && what < 5) {
        const int row = Pick(rows);
        op.ClickRow(u"grdFolders", row);
        model.Touch(row);
      } else if (rows > 0) {
        const int row = Pick(rows);
        op.DoubleClickRow(u"grdFolders", row);
        model.Open(row);
      }
      Compared(op, model);
    }
    if (!HasFailure() && Pick(8) == 0) CompareMarkers(op, model);
    op.Click(u"keyOK");
  }

  const Tree& TheTree() const { return tree_; }

 private:
  std::mt19937 random_;
  Tree tree_;
};

TEST_F(RandomTouch, PathDepthAndGridAreWhatTheRulesGive) {
  const unsigned first = FirstSeed();
  for (unsigned seed = first; seed < first + kSequences; ++seed) {
    if (seed % 40 == first % 40) NewMachine(seed);  // a tree serves several sequences
    const String start = AnyPath();
    Model model = Start(start);
    const String result = SelectDirectory(start, [&](Operator& op) { Work(op, model); });
    ASSERT_EQ(result, model.Path()) << "seed " << seed;
    ASSERT_FALSE(HasFailure()) << "seed " << seed << ", start " << ToUtf8(start);
    platform.Pointers.clear();
    log.FailNothing();
  }
}

}  // namespace krx::test
