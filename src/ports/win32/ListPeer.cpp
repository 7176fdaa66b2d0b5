#include "ports/win32/ListPeer.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace krx::win32 {

namespace {

constexpr Twips kListRowPadding = 60;

void LoadListClass() {
  const INITCOMMONCONTROLSEX wanted{sizeof(wanted), ICC_LISTVIEW_CLASSES};
  InitCommonControlsEx(&wanted);
}

// The system draws scroll bars and rows anew at every step, milliseconds each; in this stretch it
// draws once, at the end. A hidden window would be shown by that; one whose form is not shown yet
// stays unseen.
class DrawnOnce {
 public:
  explicit DrawnOnce(HWND window)
      : window_(GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE ? window : nullptr) {
    if (window_) SendMessageW(window_, WM_SETREDRAW, FALSE, 0);
  }
  ~DrawnOnce() {
    if (window_) SendMessageW(window_, WM_SETREDRAW, TRUE, 0);
  }
  DrawnOnce(const DrawnOnce&) = delete;
  DrawnOnce& operator=(const DrawnOnce&) = delete;

 private:
  HWND window_;
};

}  // namespace

ListPeer::ListPeer(Toolkit& toolkit, FormPeer& form, ui::RowList& list)
    : ControlPeer(toolkit, form, list),
      list_(list),
      bar_(toolkit, form, ScrollBar::Wide::AsUsual,
           {[this] { return Extent(); },
            [this](int top) {
              finger_.StopGliding();
              ShowTop(top);
            }}),
      level_(toolkit, form, ScrollBar::Wide::AsUsual,
             {[this] { return Breadth(); },
              [this](int left) { Send(LVM_SCROLL, static_cast<WPARAM>(left - Breadth().Top)); }},
             ScrollBar::Lie::Level) {
  LoadListClass();
  constexpr DWORD kStyle = LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                           LVS_SHAREIMAGELISTS | LVS_NOSORTHEADER;
  CreateChild(WC_LISTVIEWW, kStyle | HeaderStyle(), WS_EX_CLIENTEDGE, String());
  // What the system draws aside it does not mirror everywhere.
  const DWORD aside = form_.Mirrored() ? 0u : LVS_EX_DOUBLEBUFFER;
  const DWORD extended = LVS_EX_FULLROWSELECT | aside | LVS_EX_LABELTIP;
  Send(LVM_SETEXTENDEDLISTVIEWSTYLE, extended, static_cast<LPARAM>(extended));
  ShowColors();
  SizeRows();
  ShowColumns();
  CountRows();
  Send(WM_SETREDRAW, TRUE);
  ShowSelection();
  ShowTop(list_.TopRow());
  if (list_.RowInView() != ui::RowList::kNoRow) UpdateContent(ui::Aspect::RowInView);
}

// A constructor that is left by an error never shows the list.
void ListPeer::Created() {
  Send(WM_SETREDRAW, FALSE);
  if (list_.DragScrolls)
    SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

// The system lays rows and header out when it first draws them, and every step of that costs much
// more once it can be seen. A single pixel is enough to have it done.
void ListPeer::Settle() {
  if (IsWindowVisible(Window())) return;
  const Following following(*this);
  const HDC dc = CreateCompatibleDC(nullptr);
  if (!dc) return;
  Send(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  DeleteDC(dc);
}

void ListPeer::Update(ui::Aspect aspect) {
  ControlPeer::Update(aspect);
  if (!Window()) return;
  if (aspect == ui::Aspect::Bounds) {
    FollowRows();
    SizeColumns();
  }
  if (aspect == ui::Aspect::Colors) ShowColors();
  if (aspect == ui::Aspect::Enabled) {  // rows and titles have other colours
    ShowColors();
    Invalidate();
  }
}

void ListPeer::UpdateContent(ui::Aspect aspect) {
  switch (aspect) {
    case ui::Aspect::Items:
      return ShowRows();
    case ui::Aspect::MoreItems:
      CountRows();
      if (GetFocus() == Window()) MarkFocus();
      return;
    case ui::Aspect::Selection:
      return ShowSelection();
    case ui::Aspect::Scroll:
      finger_.StopGliding();
      return ShowTop(list_.TopRow());
    case ui::Aspect::RowInView:
      finger_.StopGliding();
      Send(LVM_ENSUREVISIBLE, static_cast<WPARAM>(list_.RowInView()), FALSE);
      return AdoptTop();
    case ui::Aspect::Columns:
    case ui::Aspect::Font: {
      const DrawnOnce drawn(Window());
      SizeRows();
      return ShowColumns();
    }
    default:
      return;
  }
}

void ListPeer::ShowColors() const {
  const auto back = static_cast<LPARAM>(Ground());
  Send(LVM_SETBKCOLOR, 0, back);
  Send(LVM_SETTEXTBKCOLOR, 0, back);
  Send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(form_.Theme()(list_.ForeColor())));
}

// Rows

int ListPeer::RowWith(UINT state) const {
  return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), state));
}

void ListPeer::SetState(int row, UINT state, UINT mask) const {
  LVITEMW item{};
  item.state = state;
  item.stateMask = mask;
  Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

// Rounded up: a finger's row must not lose its last pixel.
int ListPeer::RowHeight() const {
  const Scale scale = form_.Scale();
  const int text = toolkit_.Texts.Measure(font_, StringView()).cy + scale.Pixels(kListRowPadding);
  const auto least =
      static_cast<int>(std::ceil(static_cast<double>(list_.RowMinHeight()) / scale.ToTwips(1)));
  return std::max(text, least);
}

void ListPeer::SizeRows() {
  SharedImages images = toolkit_.ImagesFor(form_.Scale(), RowHeight(), list_.HasImages());
  if (images == images_) return;
  Send(LVM_SETIMAGELIST, LVSIL_SMALL, reinterpret_cast<LPARAM>(images->List()));
  images_ = std::move(images);  // the window has let go of the old ones
}

// The system draws new rows that are in sight.
void ListPeer::CountRows() {
  const Following following(*this);
  Send(LVM_SETITEMCOUNT, static_cast<WPARAM>(list_.RowCount()),
       LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
  FollowRows();
  SizeColumns();
}

void ListPeer::ShowRows() {
  {
    const DrawnOnce drawn(Window());
    CountRows();
  }
  ShowSelection();
  ShowTop(list_.TopRow());
  InvalidateRect(Window(), nullptr, FALSE);
}

void ListPeer::ShowSelection() {
  const Following following(*this);
  constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
  const int wanted = list_.SelectedRow();
  const int shown = RowWith(LVNI_SELECTED);
  if (wanted != shown) {
    const int top = TopRow();
    if (shown >= 0) SetState(shown, 0, kBoth);
    if (wanted >= 0) SetState(wanted, kBoth, kBoth);
    ScrollTo(top);  // some systems scroll to the row that gets the frame
  }
  if (GetFocus() == Window()) MarkFocus();
}

// The row with the frame shows where the keyboard is, also while no row is selected.
void ListPeer::MarkFocus() {
  const Following following(*this);
  if (list_.RowCount() > 0 && RowWith(LVNI_FOCUSED) < 0)
    SetState(std::max(TopRow(), 0), LVIS_FOCUSED, LVIS_FOCUSED);
}

void ListPeer::FocusChanged(bool focused) {
  PaintBorder();
  // Some systems leave rows alone that look the same to them.
  if (list_.SelectedRow() >= 0)
    Send(LVM_REDRAWITEMS, static_cast<WPARAM>(list_.SelectedRow()), list_.SelectedRow());
  if (!focused) return;
  MarkFocus();
  const int row = RowWith(LVNI_FOCUSED);
  if (row >= 0) Tell(EVENT_OBJECT_FOCUS, Window(), row + 1);
}

void ListPeer::ShowTop(int row) {
  ScrollTo(row);
  AdoptTop();
}

void ListPeer::ScrollTo(int row) {
  const int shown = TopRow();
  RECT bounds{LVIR_BOUNDS, 0, 0, 0};
  if (row == shown || !Send(LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&bounds))) return;
  const LPARAM height = bounds.bottom - bounds.top;
  Send(LVM_SCROLL, 0, (row - shown) * height);
}

}  // namespace krx::win32
