#include <gtest/gtest.h>

#include "contract/Port.h"
#include "panel/Placement.h"
#include "ports/headless/Operator.h"

namespace krx::test {

namespace {

class ScriptedHand final : public Hand {
 public:
  ScriptedHand(headless::HeadlessPlatform& platform, headless::Operator& op)
      : platform_(platform), op_(op) {}

  void Press(int key, int shift) override { op_.Press(key, shift); }
  void Type(StringView letters) override { op_.Type(letters); }
  void AccessKey(char16_t letter) override { op_.AccessKey(letter); }
  void Click(StringView key) override { op_.Click(key); }
  void HoldWhile(StringView key, StringView form, const HandScript& script) override {
    bool shown = false;
    Expect(platform_, form, [&](Hand& inside) {
      shown = true;
      script(inside);
    });
    op_.Hold(key);
    Await([&] { return shown; });
  }
  void LetGo(StringView key) override { op_.LetGo(key); }
  void ClickRow(StringView list, int row) override { op_.ClickRow(list, row); }
  void DoubleClickRow(StringView list, int row) override { op_.DoubleClickRow(list, row); }
  void PressRowAndLeave(StringView list, int row) override {
    op_.PressRow(list, row);
    op_.ReleaseElsewhere(list);
  }
  void Touch(StringView list, ToldAs, const Touching& acts) override {
    for (const TouchAct& act : acts) {
      PassTime(act.After);
      switch (act.Act) {
        case TouchAct::What::Down:
          op_.TouchDown(list, act.Rows);
          break;
        case TouchAct::What::Move:
          op_.TouchMove(list, act.Rows);
          break;
        case TouchAct::What::Up:
          op_.TouchUp(list, act.Rows);
          break;
        case TouchAct::What::Cancel:
          op_.TouchCancelled(list);
          break;
      }
    }
  }
  void Tap(StringView caption) override { op_.Tap(caption); }
  void HoldFor(StringView caption, StringView choice) override {
    const ui::BoardKey& key = *op_.BoardKey(caption);
    key.MouseDown(ui::kLeftButton, 0, 0, 0);
    Await([&] { return op_.BoardKey(choice) != nullptr; });
    const ui::BoardKey& end = *op_.BoardKey(choice);
    key.MouseUp(ui::kLeftButton, 0, end.Left() - key.Left(), end.Top() - key.Top());
  }
  void TouchField(StringView control) override { op_.Touch(control); }
  void AwaitBoard(bool in_sight) override {
    EXPECT_EQ(platform_.Attached && platform_.Attached->Visible() &&
                  platform_.Attached->Attached == &op_.Form(),
              in_sight);
  }
  Rect Board() override {
    const ui::Form& board = *platform_.Attached;
    return {board.Left(), board.Top(), board.Width() + panel::kEdges,
            board.Height() + panel::kEdges};
  }
  void PassTime(double milliseconds) override {
    op_.Wait(std::chrono::milliseconds(static_cast<int>(milliseconds)));
  }
  void Open(StringView key, StringView form, const HandScript& script) override {
    Expect(platform_, form, script);
    op_.Click(key);
  }
  void AwaitFocus(StringView control) override { EXPECT_EQ(ToUtf8(op_.Focus()), ToUtf8(control)); }
  void Await(const std::function<bool()>& condition) override {
    constexpr int kPatience = 1000;
    for (int i = 0; i < kPatience && !condition(); ++i)
      op_.Wait(std::chrono::milliseconds(10));
    EXPECT_TRUE(condition());
  }

  static void Expect(headless::HeadlessPlatform& platform, StringView form,
                     const HandScript& script) {
    platform.Expect(String(form), [&platform, script](headless::Operator& op) {
      ScriptedHand hand(platform, op);
      script(hand);
    });
  }

 private:
  headless::HeadlessPlatform& platform_;
  headless::Operator& op_;
};

// A folder of the simulated machine.
class SimulatedDisk final : public Disk {
 public:
  explicit SimulatedDisk(headless::SimulatedFiles& machine) : machine_(machine) {
    machine_.AddFolder(Path());
  }

  String Path() const override { return u"C:\\Tests\\Folder"; }
  void AddFolder(StringView name) override { machine_.AddFolder(PathOf(name)); }
  void AddFile(StringView name) override { machine_.AddFile(PathOf(name)); }
  void Remove(StringView name) override { machine_.Remove(PathOf(name)); }
  void SetCurrent(const String& path) override { machine_.CurrentFolder = path; }
  String Share() override {
    const StringView share = u"\\\\server\\share";
    machine_.AddShare(share, Path());
    return String(share);
  }
  String DriveWithoutMedium() override {
    machine_.AddDrive(u"Q:", folders::DriveType::Removable, false);
    return u"Q:";
  }
  String MissingDrive() override { return u"X:"; }

 private:
  headless::SimulatedFiles& machine_;
};

class HeadlessPort final : public Port {
 public:
  ~HeadlessPort() override { EXPECT_TRUE(platform_.Complaints().empty()); }
  ui::Platform& Platform() override { return platform_; }
  std::unique_ptr<Disk> MakeDisk() override {
    return std::make_unique<SimulatedDisk>(platform_.Machine);
  }
  void StopClock() override {}  // it never goes by itself
  void Show(ui::Form& form, const HandScript& script) override {
    for (const StringView name : {u"contract", u"symbols"})
      platform_.Layouts[String(name)] = ContractLayout(name);
    ScriptedHand::Expect(platform_, form.Name(), script);
    form.ShowModal();
  }

 private:
  headless::HeadlessPlatform platform_;
};

}  // namespace

std::unique_ptr<Port> MakePort() {
  return std::make_unique<HeadlessPort>();
}

}  // namespace krx::test
