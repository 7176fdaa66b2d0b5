#include <functional>

#include "ListsTest.h"
#include "base/Error.h"

// What handlers may do while a list raises their events.
namespace krx::test {

namespace {

enum class Raised { MouseDown, Selection, MouseUp, Click, DoubleClick };

class ListHandlers : public ListsTest, public testing::WithParamInterface<Raised> {
 protected:
  ListHandlers() { form.lvw.SetRows(ListsForm::Rows(10)); }
  // The act runs when the event of this test is raised for the first time, and is counted.
  void OnEvent(const std::function<void()>& act) {
    const auto run = [this, act](Raised raised) {
      if (raised != GetParam()) return;
      ++raised_;
      if (raised_ == 1) act();
    };
    form.lvw.MouseDown = [run](int, int, Twips, Twips) { run(Raised::MouseDown); };
    form.lvw.SelectionChanged = [run] { run(Raised::Selection); };
    form.lvw.MouseUp = [run](int, int, Twips, Twips) { run(Raised::MouseUp); };
    form.lvw.RowClick = [run](int) { run(Raised::Click); };
    form.lvw.RowDoubleClick = [run](int) { run(Raised::DoubleClick); };
  }
  // One click where it is enough: a second one would hit whatever the handler has brought up.
  void Click(Person& person, int row) {
    const List list = ListOf(person, form.lvw);
    if (GetParam() == Raised::DoubleClick) {
      list.DoubleClick(row);
    } else {
      list.Click(row);
    }
  }

  int raised_ = 0;
};

TEST_P(ListHandlers, MayHideTheFormWhichIsUsableAgain) {
  OnEvent([this] { form.Hide(); });
  ShowWith(form, [this](Person& person) { Click(person, 3); });
  EXPECT_EQ(raised_, 1);
  EXPECT_FALSE(form.Visible());
  NoteRows(form.lvw);
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    list.Click(5);
    Await(person, "S5 C5 ");
  });
}

TEST_P(ListHandlers, MayUnloadTheForm) {
  OnEvent([this] { form.Unload(); });
  ShowWith(form, [this](Person& person) { Click(person, 3); });
  EXPECT_EQ(raised_, 1);
  EXPECT_FALSE(form.Loaded());
}

TEST_P(ListHandlers, ThatFailEndTheShowingWithTheirError) {
  OnEvent([] { throw Error(0x80004005u, u"failed"); });
  EXPECT_THROW(ShowWith(form, [this](Person& person) { Click(person, 3); }), Error);
  EXPECT_FALSE(form.Visible());
  EXPECT_EQ(GetCapture(), nullptr);
}

TEST_P(ListHandlers, MayPutOtherRowsInPlace) {
  OnEvent([this] { form.lvw.SetRows({{u"only"}}); });
  WorkWith(form.lvw, [this](Person& person, const List& list) {
    Click(person, 3);
    list.WaitForCount(1);
    person.Press(VK_HOME);
    person.Await([&] { return form.lvw.SelectedRow() == 0; }, "the row");
  });
}

TEST_P(ListHandlers, MayDisableTheList) {
  OnEvent([this] { form.lvw.Enabled = false; });
  ShowWith(form, [this](Person& person) {
    const HWND grid = ListOf(person, form.grd).TheWindow().Handle();
    Click(person, 3);
    person.AwaitFocus(grid);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(form.Cancels, 1);
}

TEST_P(ListHandlers, MayShowAnotherForm) {
  form.lvw.SelectRow(1);
  TestForm other(platform);
  OnEvent([&other] { other.ShowModal(); });
  ShowWith(form, [this](Person& person) {
    Click(person, 3);
    person.AwaitForm(u"FTest");
    person.Press(VK_ESCAPE);
    const List list = ListOf(person, form.lvw);
    list.Click(5);
    list.WaitForSelected(5);
    person.Press(VK_ESCAPE);
  });
  EXPECT_EQ(ToUtf8(other.Answer), "keyClose");
  EXPECT_EQ(form.lvw.SelectedRow(), 5);
}

INSTANTIATE_TEST_SUITE_P(Events, ListHandlers,
                         testing::Values(Raised::MouseDown, Raised::Selection, Raised::MouseUp,
                                         Raised::Click, Raised::DoubleClick));

}  // namespace

}  // namespace krx::test
