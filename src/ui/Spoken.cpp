#include "ui/Spoken.h"

#include <algorithm>

#include "ui/Form.h"
#include "ui/KRXIndex.h"

namespace krx::ui {

namespace {

bool Names(const Control& control) {
  const bool heading = control.Kind() == Kind::Label || control.Kind() == Kind::Frame;
  return heading && control.Visible() && !control.DisplayedText().empty();
}

bool IsInput(Kind kind) {
  return kind == Kind::TextBox || kind == Kind::PasswordBox || kind == Kind::ComboBox ||
         kind == Kind::RowList;
}

// The heading of an input is the last one before it in the tab order. One that stands right before
// it leads to it by its access key, too.
struct Heading {
  const Control* Words = nullptr;
  bool Leads = true;
};

Heading HeadingOf(const Control& input) {
  const auto& order = input.Parent().TabOrder();
  Heading heading;
  for (auto at = std::find(order.begin(), order.end(), &input); at != order.begin();) {
    const Control& before = **--at;
    if (Names(before)) {
      heading.Words = &before;
      return heading;
    }
    if (before.Visible() && IsInput(before.Kind())) heading.Leads = false;
  }
  return heading;
}

// The title of the only column that has one.
String OnlyTitle(const RowList& list) {
  String title;
  for (const RowList::Column& column : list.Columns()) {
    if (column.Title.empty()) continue;
    if (!title.empty()) return {};
    title = column.Title;
  }
  return title;
}

}  // namespace

String SpokenName(const Control& control) {
  switch (control.Kind()) {
    case Kind::Index:
      return static_cast<const KRXIndex&>(control).WholeText();
    case Kind::Key:
      return ReplaceAll(control.DisplayedText(), u"\n", u" ");
    case Kind::RowList:
      if (String title = OnlyTitle(static_cast<const RowList&>(control)); !title.empty())
        return title;
      break;
    default:
      if (!IsInput(control.Kind())) return control.DisplayedText();
      break;
  }
  const Heading heading = HeadingOf(control);
  return heading.Words ? heading.Words->DisplayedText() : control.Parent().Caption();
}

char16_t SpokenKey(const Control& control) {
  if (!IsInput(control.Kind())) return control.AccessKey();
  const Heading heading = HeadingOf(control);
  return heading.Words && heading.Leads ? heading.Words->AccessKey() : u'\0';
}

String SpokenRow(const RowList& list, int row) {
  return String(list.Cell(row, list.MainColumn()));
}

String SpokenDetails(const RowList& list, int row) {
  String details;
  const auto& columns = list.Columns();
  for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
    const StringView cell = list.Cell(row, i);
    if (i == list.MainColumn() || cell.find_first_not_of(u' ') == StringView::npos) continue;
    if (!details.empty()) details += u"; ";
    const String& title = columns[static_cast<std::size_t>(i)].Title;
    if (!title.empty()) details += title + u": ";
    details += cell.substr(cell.find_first_not_of(u' '));
  }
  return details;
}

}  // namespace krx::ui
