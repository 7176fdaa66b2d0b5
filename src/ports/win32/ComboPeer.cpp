#include "ports/win32/ComboPeer.h"

#include <commctrl.h>

#include <algorithm>

#include "ui/Platform.h"

namespace krx::win32 {

namespace {

constexpr Twips kFingerRowPadding = 90;
constexpr Twips kNarrowRowPadding = 30;
constexpr Twips kIndent = 60;
constexpr int kVisibleRows = 8;

}  // namespace

ComboPeer::ComboPeer(Toolkit& toolkit, FormPeer& form, ui::ComboBox& box)
    : ControlPeer(toolkit, form, box), box_(box) {
  constexpr DWORD kStyle = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL;
  CreateChild(L"COMBOBOX", kStyle, 0, String());
  // Newer controls would open three times as many rows and pay no heed to the height.
  SendMessageW(Window(), CB_SETMINVISIBLE, kVisibleRows, 0);
  box_.DroppedDown = false;  // a list that was open went with its window
  SizeRows();
  Fill();
}

void ComboPeer::Update(ui::Aspect aspect) {
  ControlPeer::Update(aspect);
  if (aspect == ui::Aspect::Bounds && Window()) SizeRows();
  if (aspect == ui::Aspect::Enabled && Window()) Invalidate();  // its field is drawn by us
}

int ComboPeer::RowHeight() const {
  const Size text = form_.Form().ThePlatform().MeasureText(box_.Font(), StringView());
  const Twips row = text.Height + (box_.ForFingers() ? kFingerRowPadding : kNarrowRowPadding);
  return form_.Scale().Pixels(box_.ForFingers() ? std::max(ui::kFingerRow, row) : row);
}

// The system rounds down to whole rows, so half a row makes up for what its borders take.
int ComboPeer::HeightBelow() const {
  const int rows = std::clamp(static_cast<int>(box_.Items().size()), 1, kVisibleRows);
  return rows * RowHeight() + RowHeight() / 2;
}

void ComboPeer::SizeRows() const {
  SendMessageW(Window(), CB_SETITEMHEIGHT, 0, RowHeight());
  // The field's part of the height is the system's affair, so it is tried and then corrected.
  const int wanted = form_.Scale().Pixels(box_.Height());
  SizeField(wanted);
  RECT outer;
  GetWindowRect(Window(), &outer);
  SizeField(wanted - (outer.bottom - outer.top - wanted));
}

void ComboPeer::SizeField(int height) const {
  SendMessageW(Window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(height, 1));
}

// The system takes a height beyond the field for that of the list.
void ComboPeer::SizeList() const {
  const RECT& place = Place();
  SetWindowPos(Window(), nullptr, 0, 0, place.right - place.left,
               place.bottom - place.top + HeightBelow(),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ComboPeer::Fill() const {
  SendMessageW(Window(), CB_RESETCONTENT, 0, 0);
  for (const String& item : box_.Items()) {
    SendMessageW(Window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item)));
  }
  ShowSelection();
}

void ComboPeer::ShowSelection() const {
  SendMessageW(Window(), CB_SETCURSEL, static_cast<WPARAM>(box_.ListIndex()), 0);
}

void ComboPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Items:
      Fill();
      return SizeList();
    case ui::Aspect::Selection:
      return ShowSelection();
    case ui::Aspect::Text:
      ShowSelection();  // a text of its own is no entry
      return Invalidate();
    case ui::Aspect::Font:
      return SizeRows();
    default:
      return;
  }
}

// Walking through the open list chooses nothing yet. The system closes the list before or after it
// tells of the choice.
void ComboPeer::Notified(WORD code) {
  switch (code) {
    case CBN_DROPDOWN:
      box_.DroppedDown = true;
      cancelled_ = false;
      return Tell(EVENT_OBJECT_STATECHANGE, Window());
    case CBN_SELENDCANCEL:
      cancelled_ = true;
      return;
    case CBN_CLOSEUP:
      box_.DroppedDown = false;
      Tell(EVENT_OBJECT_STATECHANGE, Window());
      return cancelled_ ? ShowSelection() : Choose();
    case CBN_SELCHANGE:
      if (!box_.DroppedDown) Choose();
      return;
    default:
      return;
  }
}

void ComboPeer::Choose() {
  const auto index = static_cast<int>(SendMessageW(Window(), CB_GETCURSEL, 0, 0));
  if (index >= 0 && index != box_.ListIndex()) box_.Select(index);
}

void ComboPeer::Draw(const DRAWITEMSTRUCT& item) {
  const bool field = (item.itemState & ODS_COMBOBOXEDIT) != 0;
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  const auto index = static_cast<std::size_t>(item.itemID);
  const bool entry = !field && index < box_.Items().size();
  const ui::Color back = selected   ? ui::SystemColor(COLOR_HIGHLIGHT)
                         : disabled ? ui::kButtonFace
                                    : box_.BackColor();
  const ui::Color fore = selected ? ui::SystemColor(COLOR_HIGHLIGHTTEXT) : box_.ForeColor();
  SetBkColor(item.hDC, ResolveColor(back));
  SetTextColor(item.hDC, disabled ? GetSysColor(COLOR_GRAYTEXT) : ResolveColor(fore));
  FillRect(item.hDC, &item.rcItem, BrushFor(item.hDC, back));
  const String text = entry ? box_.Items()[index] : box_.Text();
  toolkit_.Texts.Draw(item.hDC, font_, text, item.rcItem, form_.Scale().Pixels(kIndent));
  if ((item.itemState & ODS_FOCUS) != 0) DrawFocusRect(item.hDC, &item.rcItem);
}

LRESULT ComboPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_CANCELMODE) SendMessageW(Window(), CB_SHOWDROPDOWN, FALSE, 0);
  // The shown text, for screen readers, whether it is an entry or not.
  if (message == WM_GETTEXT) return AnswerText(box_.Text(), w, l);
  if (message == WM_GETTEXTLENGTH) return static_cast<LRESULT>(box_.Text().size());
  return ControlPeer::Handle(message, w, l);
}

}  // namespace krx::win32
