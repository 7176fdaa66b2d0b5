#include "ports/win32/ListPeer.h"

#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "ui/Platform.h"

namespace krx::win32 {

namespace {

constexpr Twips kRowPadding = 60;

void LoadListClass() {
  const INITCOMMONCONTROLSEX wanted{sizeof(wanted), ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&wanted);
}

// Marks a stretch in which the window only follows the model.
class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~Flag() { flag_ = before_; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

 private:
  bool& flag_;
  bool before_;
};

}  // namespace

ListPeer::ListPeer(Toolkit& toolkit, FormPeer& form, ui::RowList& list)
    : ControlPeer(toolkit, form, list), list_(list) {
  LoadListClass();
  constexpr DWORD kStyle = LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                           LVS_SHAREIMAGELISTS | LVS_NOSORTHEADER;
  CreateChild(WC_LISTVIEWW, kStyle, WS_EX_CLIENTEDGE, String());
  constexpr DWORD kExtended = LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, kExtended, kExtended);
  ShowColors();
  SizeRows();
  ShowColumns();
  ShowRows();
  if (list_.RowInView() != ui::RowList::kNoRow) UpdateContent(ui::Aspect::RowInView);
}

void ListPeer::Update(ui::Aspect aspect) {
  ControlPeer::Update(aspect);
  if (!Window()) return;
  if (aspect == ui::Aspect::Bounds) SizeColumns();
  if (aspect == ui::Aspect::Colors) ShowColors();
}

void ListPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Items:
      return ShowRows();
    case ui::Aspect::Selection:
      return ShowSelection();
    case ui::Aspect::Scroll:
      return ShowTop();
    case ui::Aspect::RowInView:
      Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list_.RowInView()), FALSE);
      return AdoptTop();
    case ui::Aspect::Columns:
    case ui::Aspect::Font:
      SizeRows();
      return ShowColumns();
    default:
      return;
  }
}

void ListPeer::ShowColors() const {
  const auto back = static_cast<LPARAM>(ResolveColor(list_.BackColor()));
  Send(LVM_SETBKCOLOR, 0, back);
  Send(LVM_SETTEXTBKCOLOR, 0, back);
  Send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(ResolveColor(list_.ForeColor())));
}

// Rows

int ListPeer::RowHeight() const {
  const Size text = form_.Form().ThePlatform().MeasureText(list_.Font(), StringView());
  return form_.Scale().Pixels(std::max(list_.RowMinHeight(), text.Height + kRowPadding));
}

void ListPeer::SizeRows() {
  const HIMAGELIST images = images_.Make(form_.Scale(), RowHeight(), list_.HasImages());
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images));
}

void ListPeer::ShowRows() {
  {
    const Flag showing(showing_);
    Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(list_.RowCount()),
         LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
  }
  ShowSelection();
  ShowTop();
  InvalidateRect(Window(), nullptr, FALSE);
}

void ListPeer::ShowSelection() {
  const Flag showing(showing_);
  const int wanted = list_.SelectedRow();
  const auto shown =
      static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
  if (wanted == shown) return;
  LVITEMW item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  if (shown >= 0)
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(shown), reinterpret_cast<LPARAM>(&item));
  if (wanted < 0) return;
  item.state = item.stateMask;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(wanted), reinterpret_cast<LPARAM>(&item));
}

void ListPeer::ShowTop() {
  const auto shown = static_cast<int>(Send(LVM_GETTOPINDEX));
  RECT row{LVIR_BOUNDS, 0, 0, 0};
  if (list_.TopRow() != shown && Send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&row)))
    Send(LVM_SCROLL, 0, static_cast<LPARAM>(list_.TopRow() - shown) * (row.bottom - row.top));
  AdoptTop();
}

// Columns

void ListPeer::ShowColumns() {
  const auto& columns = list_.Columns();
  for (; columns_ > static_cast<int>(columns.size()); --columns_)
    Send(LVM_DELETECOLUMN, static_cast<WPARAM>(columns_ - 1));
  bool titled = false;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    titled = titled || !columns[i].Title.empty();
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(Wide(columns[i].Title));
    column.iSubItem = static_cast<int>(i);
    const bool known = static_cast<int>(i) < columns_;
    Send(known ? LVM_SETCOLUMNW : LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
    if (!known) ++columns_;
  }
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(Window(), GWL_STYLE));
  const DWORD wanted =
      titled ? style & ~static_cast<DWORD>(LVS_NOCOLUMNHEADER) : style | LVS_NOCOLUMNHEADER;
  if (wanted != style) SetWindowLongPtrW(Window(), GWL_STYLE, static_cast<LONG_PTR>(wanted));
  SizeColumns();
}

// A column without a width of its own takes what the others leave, the scroll bar's room excepted.
void ListPeer::SizeColumns() const {
  const auto& columns = list_.Columns();
  RECT window;
  GetWindowRect(Window(), &window);
  int rest =
      window.right - window.left - 2 * GetSystemMetrics(SM_CXEDGE) - GetSystemMetrics(SM_CXVSCROLL);
  for (const ui::RowList::Column& column : columns)
    rest -= form_.Scale().Pixels(column.Width);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const Twips width = columns[i].Width;
    const int pixels = width > 0 ? form_.Scale().Pixels(width) : std::max(rest, 1);
    if (Send(LVM_GETCOLUMNWIDTH, i) != pixels) Send(LVM_SETCOLUMNWIDTH, i, pixels);
  }
}

// What the window reports

LRESULT ListPeer::FromParent(UINT message, WPARAM w, LPARAM l) {
  if (message == WM_NOTIFY) return Notified(*reinterpret_cast<NMHDR*>(l));
  return ControlPeer::FromParent(message, w, l);
}

LRESULT ListPeer::Notified(NMHDR& header) {
  switch (header.code) {
    case LVN_GETDISPINFOW:
      Describe(reinterpret_cast<NMLVDISPINFOW&>(header).item);
      return 0;
    case LVN_ODFINDITEMW: {
      const auto& wanted = reinterpret_cast<const NMLVFINDITEMW&>(header);
      if ((wanted.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0) return -1;
      return list_.FindRow(Narrow(wanted.lvfi.psz, std::wcslen(wanted.lvfi.psz)), wanted.iStart);
    }
    case LVN_ITEMCHANGED:
      ItemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
      return 0;
    default:
      return 0;
  }
}

void ListPeer::Describe(LVITEMW& item) const {
  const bool exists = item.iItem >= 0 && item.iItem < list_.RowCount();
  if ((item.mask & LVIF_TEXT) != 0 && item.pszText && item.cchTextMax > 0) {
    const StringView text = exists ? list_.Cell(item.iItem, item.iSubItem) : StringView();
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::memcpy(item.pszText, text.data(), length * sizeof(wchar_t));
    item.pszText[length] = 0;
  }
  const bool first = exists && item.iSubItem == 0;
  if ((item.mask & LVIF_IMAGE) != 0)
    item.iImage = first ? RowImages::Index(list_.RowImage(item.iItem)) : I_IMAGENONE;
  if ((item.mask & LVIF_INDENT) != 0) item.iIndent = first ? list_.Indent(item.iItem) : 0;
}

void ListPeer::ItemChanged(const NMLISTVIEW& change) {
  const bool selected = (change.uNewState & LVIS_SELECTED) != 0;
  if (!showing_ && selected && change.iItem >= 0) list_.OperatorSelected(change.iItem);
}

// The operator has moved the edge of a column.
void ListPeer::HeaderNotified(const NMHDR& header) {
  if (header.code != HDN_ENDTRACKW && header.code != HDN_ENDTRACKA &&
      header.code != HDN_DIVIDERDBLCLICKW)
    return;
  std::vector<ui::RowList::Column> columns = list_.Columns();
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i].Width = form_.Scale().ToTwips(static_cast<int>(Send(LVM_GETCOLUMNWIDTH, i)));
  list_.Columns.Adopt(std::move(columns));
}

// Mouse and keyboard

LRESULT ListPeer::Handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_NOTIFY: {
      const LRESULT result = ControlPeer::Handle(message, w, l);
      HeaderNotified(*reinterpret_cast<const NMHDR*>(l));
      return result;
    }
    // The system's list waits for the button's release in a loop of its own and takes the release
    // away; so the button is ours.
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      HandleMouse(message, w, l);
      Press(l, message == WM_LBUTTONDBLCLK);
      return 0;
    case WM_LBUTTONUP:
      HandleMouse(message, w, l);
      Release(l);
      return 0;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
      HandleMouse(message, w, l);
      return 0;
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_KEYDOWN: {
      const LRESULT result = ControlPeer::Handle(message, w, l);
      AdoptTop();
      return result;
    }
    default:
      return ControlPeer::Handle(message, w, l);
  }
}

int ListPeer::RowAt(LPARAM point) const {
  LVHITTESTINFO hit{};
  hit.pt = {GET_X_LPARAM(point), GET_Y_LPARAM(point)};
  return static_cast<int>(Send(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
}

void ListPeer::Press(LPARAM point, bool again) {
  pressed_ = RowAt(point);
  twice_ = again;
  SetCapture(Window());
  if (GetFocus() != Window()) ::SetFocus(Window());
  if (pressed_ < 0) return;
  LVITEMW item{};
  item.state = item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(pressed_), reinterpret_cast<LPARAM>(&item));
}

void ListPeer::Release(LPARAM point) {
  const int pressed = std::exchange(pressed_, ui::RowList::kNoRow);
  if (GetCapture() == Window()) ReleaseCapture();
  if (pressed < 0 || RowAt(point) != pressed) return;
  if (twice_) {
    list_.OperatorDoubleClicked(pressed);
  } else {
    list_.OperatorClicked(pressed);
  }
}

}  // namespace krx::win32
