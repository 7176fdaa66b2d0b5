#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <string>

#include "ListsForm.h"
#include "Person.h"
#include "driver/List.h"

namespace krx::test {

// Works with one list of a form with real input and notes the events that it raises.
class ListsTest : public testing::Test {
 protected:
  using List = drive::List;

  void Note(const char* what, int number) {
    events += what;
    events += std::to_string(number);
    events += ' ';
  }
  void NoteRows(ui::RowList& list) {
    list.SelectionChanged = [this, &list] { Note("S", list.SelectedRow()); };
    list.RowClick = [this](int row) { Note("C", row); };
    list.RowDoubleClick = [this](int row) { Note("D", row); };
  }
  void Await(Person& person, const std::string& wanted) {
    person.Await([&] { return events == wanted; }, wanted);
  }
  List ListOf(Person& person, const ui::RowList& list) {
    return List(drive::Window(person.Control(person.AwaitForm(form.Name()), list.Name())));
  }
  static RECT HeaderOf(const List& list) {
    RECT place{};
    GetWindowRect(
        reinterpret_cast<HWND>(SendMessageW(list.TheWindow().Handle(), LVM_GETHEADER, 0, 0)),
        &place);
    return place;
  }
  // The person acts with the focus in the list; Esc leaves.
  void WorkWith(const ui::RowList& list, const std::function<void(Person&, const List&)>& person) {
    ShowWith(form, [&](Person& somebody) {
      somebody.PointAway();
      const List window = ListOf(somebody, list);
      somebody.AwaitFocus(window.TheWindow().Handle());
      person(somebody, window);
      somebody.Press(VK_ESCAPE);
    });
    EXPECT_EQ(form.Cancels, 1);
  }

  win32::Win32Platform platform;
  ListsForm form{platform};
  std::string events;
};

}  // namespace krx::test
