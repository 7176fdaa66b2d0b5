#include "ports/win32/ComboPeer.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

#include "ui/Direction.h"
#include "ui/Platform.h"

namespace krx::win32 {

namespace {

constexpr Twips kFingerRowPadding = 90;
constexpr Twips kNarrowRowPadding = 30;
constexpr int kVisibleRows = 8;
constexpr int kAroundField = 10;  // pixels that the system adds where it asks how high it is to be

// Half as large as the square that it stands in, and clear at any size.
int ArrowSize(int square) {
  return std::max(8, square / 2);
}

}  // namespace

ComboPeer::ComboPeer(Toolkit& toolkit, FormPeer& form, ui::ComboBox& box)
    : ControlPeer(toolkit, form, box),
      box_(box),
      list_(toolkit, form,
            box.ForFingers() ? ScrollBar::Wide::ForFingers : ScrollBar::Wide::AsUsual) {
  constexpr DWORD kStyle = CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL;
  CreateChild(L"COMBOBOX", kStyle, 0, String());
  // Their number and height are the list's height; newer controls would open thirty.
  SendMessageW(Window(), CB_SETMINVISIBLE, kVisibleRows, 0);
  box_.DroppedDown = false;  // a list that was open went with its window
  SizeRows();
  Fill();
}

// Asked while the window is created: each size that comes later costs the system several steps.
void ComboPeer::Measure(MEASUREITEMSTRUCT& item) const {
  const bool field = item.itemID == static_cast<UINT>(-1);
  const int height = field ? FieldHeight() - kAroundField : RowHeight();
  item.itemHeight = static_cast<UINT>(std::max(height, 1));
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

int ComboPeer::FieldHeight() const {
  return Place().bottom - Place().top;
}

int ComboPeer::OuterHeight() const {
  RECT outer;
  GetWindowRect(Window(), &outer);
  return outer.bottom - outer.top;
}

// A size that the system has already is not given again.
void ComboPeer::SizeRows() const {
  if (SendMessageW(Window(), CB_GETITEMHEIGHT, 0, 0) != RowHeight())
    SendMessageW(Window(), CB_SETITEMHEIGHT, 0, RowHeight());
  const int wanted = FieldHeight();
  if (OuterHeight() == wanted) return;
  // The field's part of the height is the system's affair, so it is tried and then corrected.
  SizeField(wanted);
  SizeField(wanted - (OuterHeight() - wanted));
}

void ComboPeer::SizeField(int height) const {
  SendMessageW(Window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), std::max(height, 1));
}

// Rows give a list its height; without any it takes what the window is given beyond the field.
void ComboPeer::SizeEmptyList() const {
  const RECT& place = Place();
  SetWindowPos(Window(), nullptr, 0, 0, place.right - place.left,
               FieldHeight() + RowHeight() + RowHeight() / 2,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND ComboPeer::List() const {
  COMBOBOXINFO info{};
  info.cbSize = sizeof info;
  return GetComboBoxInfo(Window(), &info) ? info.hwndList : nullptr;
}

// Each row of a list that is to be drawn sizes its scroll bar.
void ComboPeer::Fill() const {
  const HWND list = List();
  SendMessageW(list, WM_SETREDRAW, FALSE, 0);
  SendMessageW(Window(), CB_RESETCONTENT, 0, 0);
  for (const String& item : box_.Items()) {
    SendMessageW(Window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(item)));
  }
  SendMessageW(list, WM_SETREDRAW, TRUE, 0);
  if (box_.Items().empty()) SizeEmptyList();
  ShowSelection();
}

// An operator who walks through the open list keeps his place in it; its rows are drawn by the
// model's texts anyway.
void ComboPeer::FillUnlessOpen() {
  const auto rows = static_cast<std::size_t>(SendMessageW(Window(), CB_GETCOUNT, 0, 0));
  stale_ = box_.DroppedDown && rows == box_.Items().size();
  if (!stale_) return Fill();
  if (const HWND list = List()) InvalidateRect(list, nullptr, FALSE);
}

void ComboPeer::ShowSelection() const {
  SendMessageW(Window(), CB_SETCURSEL, static_cast<WPARAM>(box_.ListIndex()), 0);
}

void ComboPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Items:
      return FillUnlessOpen();
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
      return Dropped();
    case CBN_SELENDCANCEL:
      cancelled_ = true;
      return;
    case CBN_CLOSEUP:
      box_.DroppedDown = false;
      Tell(EVENT_OBJECT_STATECHANGE, Window());
      cancelled_ ? ShowSelection() : Choose();
      if (std::exchange(stale_, false)) Fill();
      return;
    case CBN_SELCHANGE:
      if (!box_.DroppedDown) Choose();
      return;
    default:
      return;
  }
}

void ComboPeer::Dropped() {
  if (const HWND list = List()) list_.Take(list);
  box_.DroppedDown = true;
  cancelled_ = false;
  Tell(EVENT_OBJECT_STATECHANGE, Window());
}

void ComboPeer::Choose() {
  const auto index = static_cast<int>(SendMessageW(Window(), CB_GETCURSEL, 0, 0));
  if (index >= 0 && index != box_.ListIndex()) box_.Select(index);
}

void ComboPeer::Draw(const DRAWITEMSTRUCT& item) {
  if ((item.itemState & ODS_COMBOBOXEDIT) != 0) {
    // Some systems do not mirror the part of the field that they let be drawn.
    if (form_.Mirrored()) SelectClipRgn(item.hDC, nullptr);
    return PaintCombo(item.hDC);
  }
  DrawRow(item);
}

String ComboPeer::Shown(const String& text) const {
  return form_.Mirrored() ? ui::InsideRightToLeft(text) : text;
}

// The field with its arrow, which is as large as the field is high.
void ComboPeer::PaintCombo(HDC dc) const {
  const Theme& theme = form_.Theme();
  const Scale scale = form_.Scale();
  RECT area;
  GetClientRect(Window(), &area);
  const bool enabled = box_.Enabled();
  PaintField(dc, area, {enabled, GetFocus() == Window(), hovering_.Inside() || box_.DroppedDown});
  const COLORREF ground = FieldGround(enabled);
  const COLORREF ink = enabled ? theme(box_.ForeColor()) : theme->DisabledText;
  const int height = area.bottom - area.top;
  const RECT arrow{area.right - height, area.top, area.right, area.bottom};
  toolkit_.Drawing.Picture(dc, arrow, ui::Picture::Down, ArrowSize(height),
                           ui::InksOf(theme.Colors(), ink), ground);
  RECT text{area.left, area.top, arrow.left, area.bottom};
  const int ring = scale.Thickness(kFocusRing);
  InflateRect(&text, -ring, -ring);
  SetBkColor(dc, ground);
  SetTextColor(dc, ink);
  const int before = SaveDC(dc);
  IntersectClipRect(dc, text.left, text.top, text.right, text.bottom);
  toolkit_.Texts.Draw(dc, font_, Shown(box_.Text()), text, scale.Thickness(kFieldPadding) - ring);
  RestoreDC(dc, before);
}

void ComboPeer::DrawRow(const DRAWITEMSTRUCT& item) const {
  const Theme& theme = form_.Theme();
  const bool selected = (item.itemState & ODS_SELECTED) != 0;
  const auto index = static_cast<std::size_t>(item.itemID);
  if (index >= box_.Items().size()) return;
  SetBkColor(item.hDC, selected ? theme->Selection : theme->Field);
  SetTextColor(item.hDC, selected ? theme->SelectionText : theme->FieldText);
  toolkit_.Texts.Draw(item.hDC, font_, Shown(box_.Items()[index]), item.rcItem,
                      form_.Scale().Thickness(kFieldPadding));
  if (!box_.ForFingers() || index + 1 == box_.Items().size()) return;
  RECT line = item.rcItem;
  line.top = line.bottom - form_.Scale().Thickness(1);
  Flood(item.hDC, line, theme->Line);
}

LRESULT ComboPeer::ListColors(HDC dc) const {
  const Theme& theme = form_.Theme();
  SetTextColor(dc, theme->FieldText);
  SetBkColor(dc, theme->Field);
  return reinterpret_cast<LRESULT>(BrushFor(dc, theme->Field));
}

LRESULT ComboPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  if (hovering_.Changes(Window(), message)) Invalidate();
  switch (message) {
    case WM_CANCELMODE:
      SendMessageW(Window(), CB_SHOWDROPDOWN, FALSE, 0);
      break;
    case WM_GETTEXT:
      // The shown text, for screen readers, whether it is an entry or not.
      return AnswerText(box_.Text(), w, l);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(box_.Text().size());
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      const PaintScope paint(Window());
      PaintCombo(paint.Dc());
      return 0;
    }
    case WM_PRINTCLIENT:
      PaintCombo(reinterpret_cast<HDC>(w));
      return 0;
    case WM_CTLCOLORLISTBOX:
      return ListColors(reinterpret_cast<HDC>(w));
    default:
      break;
  }
  return ControlPeer::Handle(message, w, l);
}

}  // namespace krx::win32
