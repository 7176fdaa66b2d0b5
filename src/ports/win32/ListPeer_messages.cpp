#include "ports/win32/ListPeer.h"

#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "ui/Direction.h"

namespace krx::win32 {

namespace {

bool Walks(WPARAM key) {
  return key == VK_UP || key == VK_DOWN || key == VK_HOME || key == VK_END;
}

}  // namespace

// What the window reports

LRESULT ListPeer::FromParent(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_NOTIFY) return Reported(*reinterpret_cast<NMHDR*>(l));
  return ControlPeer::FromParent(message, w, l);
}

LRESULT ListPeer::Reported(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      Describe(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW: {
      const auto& wanted = reinterpret_cast<const NMLVFINDITEMW&>(header);
      if ((wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0) return -1;
      // The system starts behind the framed row, to which the operator may not have come.
      const int start = list_.SelectedRow() == ui::RowList::kNoRow ? 0 : wanted.iStart;
      return list_.FindRow(Narrow(wanted.lvfi.psz, std::wcslen(wanted.lvfi.psz)), start);
    }
    case LVN_ITEMCHANGED:
      ItemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
      TellRow(reinterpret_cast<const NMLISTVIEW&>(header));
      return 0;
    case NM_CUSTOMDRAW:
      return Draw(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
    default:
      return 0;
  }
}

void ListPeer::Describe(LVITEMW& item) const {
  const bool exists = item.iItem >= 0 && item.iItem < list_.RowCount();
  if ((item.mask & LVIF_TEXT) != 0 && item.pszText && item.cchTextMax > 0) {
    const StringView text = exists ? list_.Cell(item.iItem, item.iSubItem) : StringView();
    const String mirrored = form_.Mirrored() ? ui::InsideRightToLeft(text) : String();
    AnswerText(form_.Mirrored() ? StringView(mirrored) : text, static_cast<WPARAM>(item.cchTextMax),
               reinterpret_cast<LPARAM>(item.pszText));
  }
  const bool first = exists && item.iSubItem == 0;
  if ((item.mask & LVIF_IMAGE) != 0) item.iImage = I_IMAGENONE;  // drawn with the rows
  if ((item.mask & LVIF_INDENT) != 0) item.iIndent = first ? list_.Indent(item.iItem) : 0;
}

void ListPeer::ItemChanged(const NMLISTVIEW& change) {
  const bool selected = (change.uNewState & LVIS_SELECTED) != 0;
  if (!IsFollowing() && selected && change.iItem >= 0) list_.OperatorSelected(change.iItem);
}

// The selected row, and the one that the keyboard is on while the list has it.
void ListPeer::TellRow(const NMLISTVIEW& change) const {
  const UINT gained = change.uNewState & ~change.uOldState;
  if (change.iItem < 0 || !Window()) return;
  if ((gained & LVIS_SELECTED) != 0) Tell(EVENT_OBJECT_SELECTION, Window(), change.iItem + 1);
  if ((gained & LVIS_FOCUSED) != 0 && GetFocus() == Window())
    Tell(EVENT_OBJECT_FOCUS, Window(), change.iItem + 1);
}

// Mouse and keyboard

LRESULT ListPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (!list_.DragScrolls) {
    for (ScrollBar* const bar : {&bar_, &level_})
      if (const auto heard = bar->Hear(Window(), message, w, l)) return *heard;
  }
  Hover(message, l);
  if (const auto touched = HandleTouch(message, w, l)) return *touched;
  switch (message) {
    case WM_NCCALCSIZE:
      return SizeFrame(w, l);
    // The system's list waits for the button's release in a loop of its own and takes the release
    // away; so the button is ours.
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      Press(message, w, l);
      return 0;
    case WM_LBUTTONUP:
      Release(w, l);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
      HandleMouse(message, w, l);
      return 0;
    case WM_MOUSEMOVE:
      if (finger_.Touched() && (w & MK_LBUTTON) != 0) Drag(GET_Y_LPARAM(l));
      return ControlPeer::Handle(message, w, l);
    case WM_CAPTURECHANGED:
    case WM_CANCELMODE:
      GiveUp();
      return ControlPeer::Handle(message, w, l);
    case WM_TIMER:
      if (w != FingerScroll::kTimer) return ControlPeer::Handle(message, w, l);
      if (const auto top_row = finger_.Glide(Now())) ShowTop(*top_row);
      return 0;
    case WM_KEYDOWN:
      return KeyDown(w, l);
    case WM_NOTIFY:
      return HeaderReported(w, l);
    case WM_NCPAINT:
      PaintBorder();
      return 0;
    default:
      break;
  }
  if (message == WM_MOUSEWHEEL) {
    finger_.StopGliding();
    return TurnWheel(static_cast<short>(HIWORD(w)));
  }
  const LRESULT result = ControlPeer::Handle(message, w, l);
  const bool may_scroll = message == WM_VSCROLL || message == WM_CHAR ||
                          message == LVM_ENSUREVISIBLE || message == LVM_SCROLL;
  if (may_scroll && !IsFollowing() && Window()) AdoptTop();
  if ((may_scroll || message == WM_HSCROLL) && Window()) FollowBreadth();
  return result;
}

// The system's list turns by the system's scroll bar, which ours has none of.
LRESULT ListPeer::TurnWheel(int delta) {
  const int page = static_cast<int>(Send(LVM_GETCOUNTPERPAGE));
  const int top = TopRow() + RowsTurned(delta, page, wheel_rest_);
  ShowTop(std::clamp(top, 0, std::max(list_.RowCount() - page, 0)));
  return 0;
}

LRESULT ListPeer::KeyDown(WPARAM key, LPARAM l) {
  finger_.StopGliding();
  if (list_.SelectedRow() == ui::RowList::kNoRow && BeginWalk(key)) return 0;
  const LRESULT result = ControlPeer::Handle(WM_KEYDOWN, key, l);
  if (!Window()) return result;
  if (RowWith(LVNI_SELECTED) < 0) list_.OperatorSelected(ui::RowList::kNoRow);
  // A row that was dragged out of sight comes back, also when the walk ends where it began.
  const int row = RowWith(LVNI_FOCUSED);
  if (Walks(key) && row >= 0) Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  AdoptTop();
  FollowBreadth();
  return result;
}

// The system would walk from the framed row, to which the operator has not come.
bool ListPeer::BeginWalk(WPARAM key) {
  const int last = list_.RowCount() - 1;
  if (!Walks(key) || last < 0) return false;
  const int row = key == VK_END ? last : key == VK_HOME ? 0 : std::clamp(TopRow(), 0, last);
  Select(row);
  Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(row), FALSE);
  return true;
}

int ListPeer::RowAt(LPARAM point) const {
  LVHITTESTINFO hit{};
  hit.pt = {GET_X_LPARAM(point), GET_Y_LPARAM(point)};
  return static_cast<int>(Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

void ListPeer::Press(UINT message, WPARAM w, LPARAM point) {
  const int under = RowAt(point);
  const int rows = list_.Replacements();
  const bool drags = list_.DragScrolls || ByFinger();
  const double now = Now();
  // A double click of the mouse is one by time and place; the first click may have moved the rows
  // under it. A finger's is one by time and row.
  const bool twice = clicked_ != ui::RowList::kNoRow &&
                     (message == WM_LBUTTONDBLCLK || (drags && touches_.IsSecond(under, now)));
  HandleMouse(message, w, point);
  if (!form_.Form().Visible()) return;
  SetCapture(Window());
  if (GetFocus() != Window()) ::SetFocus(Window());
  // The release belongs to whatever is on the screen by then, and a row that has come under the
  // pointer by these handlers is not the one that the operator meant.
  if (!form_.Form().Visible() || list_.Replacements() != rows) return LetGo();
  pressed_ = {twice ? clicked_ : under, under, twice, drags, now};
  if (drags) {
    // What is touched is not selected before it is certain that it is not dragged.
    BeginDrag(point, now);
    ShowTouched(under);
  } else if (under >= 0 && !twice) {
    Select(under);
  }
  if (!form_.Form().Visible()) LetGo();
}

void ListPeer::BeginDrag(LPARAM point, double now) {
  const Scale scale = form_.Scale();
  RECT row{LVIR_BOUNDS, 0, 0, 0};
  const bool any = Send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row)) != 0;
  const Twips height = any ? scale.ToTwips(row.bottom - row.top) : 0;
  finger_.Begin(Window(), {height, list_.RowCount(), static_cast<int>(Send(LVM_GETCOUNTPERPAGE))},
                TopRow(), scale.ToTwips(GET_Y_LPARAM(point)), now);
}

// By the time that anybody hears of the release the row is selected.
void ListPeer::Release(WPARAM w, LPARAM point) {
  if (!pressed_) return;  // the button went down elsewhere
  const Pressed press = *pressed_;
  bool click = press.Row >= 0 && RowAt(point) == press.Under;
  if (press.Drags) click = finger_.End(Now()) && click;
  LetGo();
  const int rows_of_click = press.Twice ? clicked_rows_ : list_.Replacements();
  clicked_ = click && !press.Twice ? press.Row : ui::RowList::kNoRow;
  clicked_rows_ = list_.Replacements();
  touches_.Clicked(clicked_, press.Began);
  if (click && press.Drags && !press.Twice) Select(press.Row);
  HandleMouse(WM_LBUTTONUP, w, point);
  if (!form_.Form().Visible()) return;
  if (!click && !press.Twice && press.Row >= 0 && !press.Drags) list_.OperatorLeftRow();
  // A handler may have put other rows in the place of those that were clicked.
  if (!click || list_.Replacements() != rows_of_click || list_.SelectedRow() != press.Row) return;
  if (press.Twice) {
    list_.OperatorDoubleClicked(press.Row);
  } else {
    list_.OperatorClicked(press.Row);
  }
}

// The system takes the mouse away, so no release will come.
void ListPeer::GiveUp() {
  const bool selected = pressed_ && pressed_->Row >= 0 && !pressed_->Twice && !pressed_->Drags;
  LetGo();
  if (selected && form_.Form().Visible()) list_.OperatorLeftRow();
}

void ListPeer::Drag(int y) {
  const int before = TopRow();
  ShowTop(finger_.Move(form_.Scale().ToTwips(y), Now()));
  if (TopRow() != before) ShowTouched(ui::RowList::kNoRow);
}

void ListPeer::ShowTouched(int row) {
  const int before = std::exchange(touched_, row);
  if (before == row) return;
  for (const int other : {before, row})
    if (other >= 0) Send(LVM_REDRAWITEMS, static_cast<WPARAM>(other), other);
}

void ListPeer::LetGo() {
  pressed_.reset();
  ShowTouched(ui::RowList::kNoRow);
  finger_.LetGo();
  if (GetCapture() == Window()) ReleaseCapture();
}

void ListPeer::Select(int row) const {
  SetState(row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

}  // namespace krx::win32
