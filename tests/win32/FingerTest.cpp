#include "ListsTest.h"
#include "ports/win32/PointerInput.h"

// Fingers on what belongs to the mouse elsewhere, and buttons that are held while a form comes up.
namespace krx::test {

namespace {

constexpr ULONG_PTR kMarkOfATouch = 0xFF515780;  // as the system marks the mouse of a finger

void SendMouse(DWORD flags, ULONG_PTR mark) {
  INPUT input{};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  input.mi.dwExtraInfo = mark;
  SendInput(1, &input, sizeof input);
}

}  // namespace

class Fingers : public ListsTest {
 protected:
  Fingers() {
    form.lvw.SetRows(ListsForm::Rows(100));
    NoteRows(form.lvw);
  }
};

TEST_F(Fingers, AreToldFromTheMouseByTheirMark) {
  std::string seen;
  form.lvw.MouseDown = [&](int, int, Twips, Twips) { seen += win32::FromFinger() ? 'f' : 'm'; };
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const RECT row = list.RowBounds(1);
    person.MoveTo({row.left + 20, (row.top + row.bottom) / 2});
    SendMouse(MOUSEEVENTF_LEFTDOWN, kMarkOfATouch);
    SendMouse(MOUSEEVENTF_LEFTUP, kMarkOfATouch);
    person.Await([&] { return seen.size() == 1; }, "finger");
    SendMouse(MOUSEEVENTF_LEFTDOWN, 0);
    SendMouse(MOUSEEVENTF_LEFTUP, 0);
    person.Await([&] { return seen.size() == 2; }, "mouse");
  });
  EXPECT_EQ(seen, "fm");
}

// The mouse selects as it presses; a finger may be about to drag.
TEST_F(Fingers, DragAListThatTheMouseOnlyClicks) {
  WorkWith(form.lvw, [&](Person& person, const List& list) {
    const RECT from = list.RowBounds(7);
    const RECT to = list.RowBounds(2);
    const POINT begin{from.left + 20, (from.top + from.bottom) / 2};
    const POINT end{to.left + 20, (to.top + to.bottom) / 2};
    person.MoveTo(begin);
    SendMouse(MOUSEEVENTF_LEFTDOWN, kMarkOfATouch);
    person.MoveTo({begin.x, (begin.y + end.y) / 2});
    person.MoveTo(end);
    person.Await([&] { return form.lvw.TopRow() == 5; }, "rows dragged");
    SendMouse(MOUSEEVENTF_LEFTUP, kMarkOfATouch);
    person.PointAway();
  });
  EXPECT_EQ(events, "");
}

TEST_F(Fingers, OfASecondHandAreNoTouchOfTheirOwn) {
  WorkWith(form.lvw, [&](Person&, const List& list) {
    const RECT row = list.RowBounds(3);
    const LPARAM at = MAKELPARAM(row.left + 20, (row.top + row.bottom) / 2);
    constexpr WORD kSecond = POINTER_MESSAGE_FLAG_INRANGE | POINTER_MESSAGE_FLAG_INCONTACT;
    const HWND window = list.TheWindow().Handle();
    SendMessageW(window, WM_POINTERDOWN, MAKEWPARAM(2, kSecond), at);
    SendMessageW(window, WM_POINTERUP, MAKEWPARAM(2, 0), at);
  });
  EXPECT_EQ(events, "");
}

// A button that the operator holds since before is released over a button of the form.
TEST(HeldMouse, AnswersNothingUntilItHasBeenUp) {
  win32::Win32Platform platform;
  TestForm form(platform);
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    RECT place{};
    GetWindowRect(person.Control(window, u"keyOne"), &place);
    person.Press(VK_ESCAPE);
    person.Await([&] { return !IsWindowVisible(window); }, "closed");
    person.MoveTo({(place.left + place.right) / 2, (place.top + place.bottom) / 2});
    SendMouse(MOUSEEVENTF_LEFTDOWN, 0);
  });
  form.Clicks = 0;
  ShowWith(form, [&](Person& person) {
    const HWND window = person.AwaitForm(u"FTest");
    const HWND key = person.Control(window, u"keyOne");
    SendMouse(MOUSEEVENTF_LEFTUP, 0);
    person.Await([] { return GetAsyncKeyState(VK_LBUTTON) >= 0; }, "button up");
    person.Press(VK_TAB);  // has its turn behind the release
    person.AwaitFocus(person.Control(window, u"keyTwo"));
    EXPECT_EQ(form.Clicks, 0);
    person.Click(key);
  });
  EXPECT_EQ(form.Clicks, 1);
  EXPECT_EQ(form.Answer, u"keyOne");
}

}  // namespace krx::test
