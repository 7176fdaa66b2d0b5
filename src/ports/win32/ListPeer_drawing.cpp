// How rows look; the titles of the columns are with the columns.

#include <algorithm>

#include "ports/win32/ListPeer.h"
#include "ui/Direction.h"

namespace krx::win32 {

namespace {

ui::Picture PictureOf(ui::RowList::Image image) {
  switch (image) {
    case ui::RowList::Image::Drive:
      return ui::Picture::Drive;
    case ui::RowList::Image::OpenFolder:
      return ui::Picture::OpenFolder;
    case ui::RowList::Image::File:
      return ui::Picture::File;
    case ui::RowList::Image::Parent:
      return ui::Picture::Up;
    default:
      return ui::Picture::Folder;
  }
}

}  // namespace

COLORREF ListPeer::Ground() const {
  return FieldGround(list_.Enabled());
}

// The system's rows are those of whatever theme it has, and while the keyboard is elsewhere a
// selected one hardly differs from the others: too little for a button that acts on it.
LRESULT ListPeer::Draw(const NMLVCUSTOMDRAW& drawing) const {
  if (drawing.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawing.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  DrawRow(drawing.nmcd.hdc, static_cast<int>(drawing.nmcd.dwItemSpec));
  return CDRF_SKIPDEFAULT;
}

ListPeer::RowLook ListPeer::LookOf(int row) const {
  const Theme& theme = form_.Theme();
  const bool selected = row == list_.SelectedRow();
  if (!list_.Enabled()) return {selected ? theme->DisabledKey : Ground(), theme->DisabledText};
  if (row == touched_) return {theme->Quiet, theme->QuietText};
  if (!selected && row == hot_) return {theme->Hot, theme->FieldText};
  if (!selected) return {Ground(), theme(list_.ForeColor())};
  // A touch panel has no keyboard that would tell one list from another.
  if (list_.DragScrolls || GetFocus() == Window()) return {theme->Selection, theme->SelectionText};
  return {theme->Quiet, theme->QuietText};
}

void ListPeer::DrawRow(HDC dc, int row) const {
  RECT place{LVIR_BOUNDS, 0, 0, 0};
  RECT client{};
  if (row >= list_.RowCount() ||
      !Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place)))
    return;
  GetClientRect(Window(), &client);
  place.right = std::max(place.right, client.right);
  const Theme& theme = form_.Theme();
  const RowLook look = LookOf(row);
  const int line = form_.Scale().Thickness(1);
  Flood(dc, place, look.Ground);
  if (list_.DragScrolls)
    Flood(dc, {place.left, place.bottom - line, place.right, place.bottom}, theme->Line);
  DrawCells(dc, row, place, look);
  if (GetFocus() != Window() || RowWith(LVNI_FOCUSED) != row || !form_.ShowsFocus()) return;
  const HBRUSH frame =
      BrushFor(dc, look.Ground == theme->Selection ? theme->SelectionText : theme->Focus);
  FrameRect(dc, &place, frame);
}

void ListPeer::DrawCells(HDC dc, int row, const RECT& place, const RowLook& look) const {
  const HGDIOBJ before = SelectObject(dc, font_->Get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, look.Text);
  RECT cell = place;
  cell.bottom -= list_.DragScrolls ? form_.Scale().Thickness(1) : 0;
  const auto& columns = list_.Columns();
  for (int column = 0; column < columns_ && column < std::ssize(columns); ++column) {
    cell.right =
        cell.left + static_cast<int>(Send(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column)));
    RECT text = cell;
    text.left += CellPadding();
    text.right -= CellPadding() / 2;
    if (column == 0) text.left += DrawPicture(dc, row, text, look);
    if (column + 1 == std::ssize(columns)) text.right -= DrawMark(dc, row, text, look);
    String shown(list_.ShownCell(row, column));
    if (form_.Mirrored()) shown = ui::InsideRightToLeft(shown);
    Texts::DrawCut(dc, shown, text);
    cell.left = cell.right;
  }
  SelectObject(dc, before);
}

int ListPeer::CellPadding() const {
  return form_.Scale().Thickness(kFieldPadding);
}

// Pictures grow with rows for fingers.
int ListPeer::PictureSize() const {
  const int usual = form_.Scale().Thickness(RowImages::kPicture);
  return list_.DragScrolls ? std::max(usual, RowHeight() * 3 / 5) : usual;
}

// Returns by how much the text gives way.
int ListPeer::DrawPicture(HDC dc, int row, const RECT& text, const RowLook& look) const {
  const ui::RowList::Image image = list_.RowImage(row);
  if (image == ui::RowList::Image::None) return 0;
  const int size = PictureSize();
  const int indent = list_.Indent(row) * size;
  const int left = static_cast<int>(text.left) + indent;
  const Theme& theme = form_.Theme();
  const bool plain = look.Ground == Ground() || look.Ground == theme->Hot;
  const COLORREF ink = plain && list_.Enabled() ? theme->Ink : look.Text;
  toolkit_.Drawing.Picture(dc, {left, text.top, left + size, text.bottom}, PictureOf(image), size,
                           ui::InksOf(theme.Colors(), ink), look.Ground);
  return indent + size + CellPadding() / 2;
}

// Shows at the end of a row that it leads on; returns the room that it takes.
int ListPeer::DrawMark(HDC dc, int row, const RECT& text, const RowLook& look) const {
  if (!list_.LeadsOn(row)) return 0;
  const int size = PictureSize() * 3 / 4;
  const RECT place{text.right - size, text.top, text.right, text.bottom};
  toolkit_.Drawing.Picture(dc, place, ui::Picture::Inside, size,
                           ui::InksOf(form_.Theme().Colors(), look.Text), look.Ground);
  return size + CellPadding();
}

}  // namespace krx::win32
