#include "ports/win32/SpokenList.h"

#include <commctrl.h>
#include <oleacc.h>

#include "ports/win32/Screen.h"
#include "ui/Spoken.h"

namespace krx::win32 {

long SpokenList::Role(int part) const {
  return part == kSelf ? ROLE_SYSTEM_LIST : ROLE_SYSTEM_LISTITEM;
}

long SpokenList::State(int part) const {
  const long whole = SpokenControl::State(part);
  if (part == kSelf) return whole;
  const int row = part - 1;
  long state = whole & ~STATE_SYSTEM_FOCUSED;
  if ((state & STATE_SYSTEM_UNAVAILABLE) == 0) state |= STATE_SYSTEM_SELECTABLE;
  if (row == list_.SelectedRow()) state |= STATE_SYSTEM_SELECTED;
  if (FocusedPart() == part) state |= STATE_SYSTEM_FOCUSED;
  if (!InSight(row)) state |= STATE_SYSTEM_OFFSCREEN | STATE_SYSTEM_INVISIBLE;
  return state;
}

String SpokenList::Name(int part) const {
  return part == kSelf ? SpokenControl::Name(part) : ui::SpokenRow(list_, part - 1);
}

String SpokenList::Description(int part) const {
  return part == kSelf ? String() : ui::SpokenDetails(list_, part - 1);
}

String SpokenList::Shortcut(int part) const {
  return part == kSelf ? SpokenControl::Shortcut(part) : String();
}

RECT SpokenList::Place(int part) const {
  if (part == kSelf) return SpokenControl::Place(part);
  const DpiScope scope;
  RECT place{LVIR_BOUNDS, 0, 0, 0};
  Ask(LVM_GETITEMRECT, static_cast<WPARAM>(part - 1), reinterpret_cast<LPARAM>(&place));
  MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

int SpokenList::PartAt(POINT point) const {
  const DpiScope scope;
  LVHITTESTINFO hit{};
  hit.pt = point;
  ScreenToClient(Window(), &hit.pt);
  return static_cast<int>(Ask(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit))) + 1;
}

int SpokenList::FramedRow() const {
  return static_cast<int>(Ask(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
}

bool SpokenList::InSight(int row) const {
  const auto top = static_cast<int>(Ask(LVM_GETTOPINDEX));
  return row >= top && row <= top + static_cast<int>(Ask(LVM_GETCOUNTPERPAGE));
}

std::optional<int> SpokenList::FocusedPart() const {
  if (!HasFocus()) return {};
  return FramedRow() + 1;
}

std::optional<int> SpokenList::SelectedPart() const {
  if (list_.SelectedRow() == ui::RowList::kNoRow) return {};
  return list_.SelectedRow() + 1;
}

bool SpokenList::Focus(int part) {
  return SpokenControl::Focus(part) && (part == kSelf || Select(part));
}

// As if the operator had come to the row.
bool SpokenList::Select(int part) {
  if (part == kSelf || !list_.Visible() || !list_.Enabled()) return false;
  LVITEMW item{};
  item.state = LVIS_SELECTED | LVIS_FOCUSED;
  item.stateMask = item.state;
  const auto row = static_cast<WPARAM>(part - 1);
  Ask(LVM_SETITEMSTATE, row, reinterpret_cast<LPARAM>(&item));
  Ask(LVM_ENSUREVISIBLE, row, FALSE);
  return true;
}

}  // namespace krx::win32
