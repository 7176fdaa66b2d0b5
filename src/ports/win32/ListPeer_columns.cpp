#include <algorithm>

#include "ports/win32/ListPeer.h"

namespace krx::win32 {

// Titles are what the header is for.
DWORD ListPeer::HeaderStyle() const {
  const auto& columns = list_.Columns();
  const bool titled =
      std::any_of(columns.begin(), columns.end(), [](const auto& c) { return !c.Title.empty(); });
  return titled ? 0 : LVS_NOCOLUMNHEADER;
}

void ListPeer::ShowColumns() {
  const Following following(*this);
  const auto& columns = list_.Columns();
  const std::vector<int> widths = ColumnWidths();
  for (; columns_ > static_cast<int>(columns.size()); --columns_)
    Send(LVM_DELETECOLUMN, static_cast<WPARAM>(columns_ - 1));
  for (std::size_t i = 0; i < columns.size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM | LVCF_WIDTH;
    column.pszText = const_cast<wchar_t*>(Wide(columns[i].Title));
    column.iSubItem = static_cast<int>(i);
    column.cx = widths[i];
    const bool known = static_cast<int>(i) < columns_;
    Send(known ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    if (!known) ++columns_;
  }
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE));
  const DWORD wanted = (style & ~static_cast<DWORD>(LVS_NOCOLUMNHEADER)) | HeaderStyle();
  if (wanted != style) SetWindowLongPtrW(Window(), GWL_STYLE, static_cast<LONG_PTR>(wanted));
  SizeColumns();
}

// Columns without a width of their own share what the others leave.
std::vector<int> ListPeer::ColumnWidths() const {
  const auto& columns = list_.Columns();
  RECT window;
  GetWindowRect(Window(), &window);
  int rest = window.right - window.left - 2 * form_.Scale().Metric(SM_CXEDGE);
  // The scroll bar comes after the columns have been sized, so it is expected here.
  if (list_.DragScrolls) {
    rest -= StripWidth();
  } else if (list_.RowCount() > Send(LVM_GETCOUNTPERPAGE)) {
    rest -= bar_.Width();
  }
  int sharing = 0;
  for (const ui::RowList::Column& column : columns) {
    rest -= form_.Scale().Pixels(column.Width);
    sharing += column.Width > 0 ? 0 : 1;
  }
  const int share = sharing > 0 ? std::max(rest / sharing, 1) : 0;
  std::vector<int> widths;
  widths.reserve(columns.size());
  for (const ui::RowList::Column& column : columns)
    widths.push_back(column.Width > 0 ? form_.Scale().Pixels(column.Width) : share);
  return widths;
}

void ListPeer::SizeColumns() {
  const Following following(*this);
  const std::vector<int> widths = ColumnWidths();
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (Send(LVM_GETCOLUMNWIDTH, i) != widths[i]) Send(LVM_SETCOLUMNWIDTH, i, widths[i]);
  }
  FollowBreadth();
}

// The header

LRESULT ListPeer::HeaderReported(WPARAM w, LPARAM l) {
  const auto& header = *reinterpret_cast<const NMHDR*>(l);
  if (header.code == NM_CUSTOMDRAW && header.hwndFrom == HeaderWindow())
    return DrawHeader(reinterpret_cast<const NMCUSTOMDRAW&>(header));
  const LRESULT result = ControlPeer::Handle(WM_NOTIFY, w, l);
  ColumnResized(header);
  if (Window()) FollowBreadth();
  return result;
}

HWND ListPeer::HeaderWindow() const {
  return reinterpret_cast<HWND>(Send(LVM_GETHEADER));
}

// The system's own titles are pictures of a theme, a millisecond each, and look as if they could be
// pressed.
LRESULT ListPeer::DrawHeader(const NMCUSTOMDRAW& drawing) const {
  switch (drawing.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
    case CDDS_ITEMPREPAINT:
      DrawTitle(drawing.hdc, drawing.rc, static_cast<std::size_t>(drawing.dwItemSpec));
      return CDRF_SKIPDEFAULT;
    case CDDS_POSTPAINT:
      DrawRest(drawing.hdc);
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

void ListPeer::DrawTitle(HDC dc, RECT place, std::size_t column) const {
  const Theme& theme = form_.Theme();
  const int line = DrawTitleGround(dc, place);
  if (column + 1 < list_.Columns().size() || list_.Columns().size() == 1)
    Flood(dc, {place.right - line, place.top, place.right, place.bottom}, theme->Line);
  if (column >= list_.Columns().size()) return;
  place.left += CellPadding();
  place.right -= CellPadding() / 2;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, list_.Enabled() ? theme->Text : theme->DisabledText);
  DrawTextW(dc, Wide(list_.Columns()[column].Title), -1, &place,
            DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

int ListPeer::DrawTitleGround(HDC dc, const RECT& place) const {
  const Theme& theme = form_.Theme();
  const int line = form_.Scale().Thickness(1);
  Flood(dc, place, theme->Header);
  Flood(dc, {place.left, place.bottom - line, place.right, place.bottom}, theme->Border);
  return line;
}

// What the columns leave of the header.
void ListPeer::DrawRest(HDC dc) const {
  RECT rest{};
  RECT last{};
  GetClientRect(HeaderWindow(), &rest);
  if (columns_ > 0)
    SendMessageW(HeaderWindow(), HDM_GETITEMRECT, static_cast<WPARAM>(columns_ - 1),
                 reinterpret_cast<LPARAM>(&last));
  rest.left = last.right;
  if (rest.left < rest.right) DrawTitleGround(dc, rest);
}

// The operator moves the edge of a column.
void ListPeer::ColumnResized(const NMHDR& header) {
  if (IsFollowing() || (header.code != HDN_ITEMCHANGEDW && header.code != HDN_ITEMCHANGEDA)) return;
  const auto column = static_cast<std::size_t>(reinterpret_cast<const NMHEADERW&>(header).iItem);
  std::vector<ui::RowList::Column> columns = list_.Columns();
  if (column >= columns.size()) return;
  const auto pixels = static_cast<int>(Send(LVM_GETCOLUMNWIDTH, column));
  if (pixels == form_.Scale().Pixels(columns[column].Width)) return;
  columns[column].Width = form_.Scale().ToTwips(pixels);
  list_.Columns.Adopt(std::move(columns));
}

}  // namespace krx::win32
