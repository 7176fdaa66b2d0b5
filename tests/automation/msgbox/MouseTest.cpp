// Moving the message box by its caption line.

#include "support/DialogTest.h"

namespace krx::drive {
namespace {

class Dragging : public DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    RunScript("WScript.Echo Dialogs.KRMsgBox(\"Text\", 1, \"A title to take hold of\")\r\n");
  }

  static bool Same(const RECT& a, const RECT& b) { return EqualRect(&a, &b) != FALSE; }

  static RECT Shifted(RECT rectangle, int x, int y) {
    OffsetRect(&rectangle, x, y);
    return rectangle;
  }
};

TEST_F(Dragging, TheLeftButtonOnTheCaptionMovesTheBoxAsFarAsTheMouse) {
  const Window box = NextBox();
  const RECT start = box.Bounds();
  const POINT grip = box.Child(L"idxCaption").Centre();
  DragMouse(MouseButton::Left, grip, {grip.x + 60, grip.y - 40});
  EXPECT_TRUE(Within(kPatience, [&] { return Same(box.Bounds(), Shifted(start, 60, -40)); }))
      << "moved by " << box.Bounds().left - start.left << ", " << box.Bounds().top - start.top;
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Dragging, TheRightButtonDoesNotMoveIt) {
  const Window box = NextBox();
  const RECT start = box.Bounds();
  const POINT grip = box.Child(L"idxCaption").Centre();
  DragMouse(MouseButton::Right, grip, {grip.x + 60, grip.y - 40});
  // A drag with the left button afterwards starts from the same place, so all moves are through.
  DragMouse(MouseButton::Left, grip, {grip.x + 20, grip.y + 10});
  EXPECT_TRUE(Within(kPatience, [&] { return Same(box.Bounds(), Shifted(start, 20, 10)); }))
      << "moved by " << box.Bounds().left - start.left << ", " << box.Bounds().top - start.top;
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Dragging, TheLeftButtonBesideTheCaptionDoesNotMoveIt) {
  const Window box = NextBox();
  const RECT start = box.Bounds();
  const POINT text = box.Child(L"idxMessage").Centre();
  DragMouse(MouseButton::Left, text, {text.x + 60, text.y + 40});
  const POINT grip = box.Child(L"idxCaption").Centre();
  DragMouse(MouseButton::Left, grip, {grip.x + 20, grip.y + 10});
  EXPECT_TRUE(Within(kPatience, [&] { return Same(box.Bounds(), Shifted(start, 20, 10)); }));
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"1"});
}

TEST_F(Dragging, AMovedBoxIsStillAnswered) {
  const Window box = NextBox();
  const RECT start = box.Bounds();
  const POINT grip = box.Child(L"idxCaption").Centre();
  DragMouse(MouseButton::Left, grip, {grip.x - 100, grip.y + 50});
  ASSERT_TRUE(Within(kPatience, [&] { return Same(box.Bounds(), Shifted(start, -100, 50)); }));
  box.Child(L"keyButton(1)").Click();
  EXPECT_EQ(Printed(), Lines{"2"});
}

}  // namespace
}  // namespace krx::drive
