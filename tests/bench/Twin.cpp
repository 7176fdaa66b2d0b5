#include "Twin.h"

#include <algorithm>
#include <cstring>
#include <cwchar>

namespace krx::bench {

namespace {

constexpr const wchar_t* kForm = L"KRXTwinForm";
constexpr const wchar_t* kPane = L"KRXTwinPane";
constexpr int kListHeight = 150;  // of an open combo box
constexpr int kIcon = 32;

void PaintPane(HWND window, HDC dc) {
  RECT area;
  GetClientRect(window, &area);
  FillRect(dc, &area, GetSysColorBrush(COLOR_BTNFACE));
  wchar_t text[1024];
  const int length = GetWindowTextW(window, text, 1024);
  if (length == 0 && area.right == kIcon && area.bottom == kIcon)
    DrawIcon(dc, 0, 0, LoadIconW(nullptr, IDI_QUESTION));
  if (length == 0) return;
  const auto font = reinterpret_cast<HFONT>(GetWindowLongPtrW(window, GWLP_USERDATA));
  const HGDIOBJ before = SelectObject(dc, font);
  SetBkMode(dc, TRANSPARENT);
  DrawTextW(dc, text, length, &area, DT_WORDBREAK);
  SelectObject(dc, before);
}

LRESULT CALLBACK OnPane(HWND window, UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_SETFONT:
      SetWindowLongPtrW(window, GWLP_USERDATA, static_cast<LONG_PTR>(w));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      PAINTSTRUCT paint;
      PaintPane(window, BeginPaint(window, &paint));
      EndPaint(window, &paint);
      return 0;
    }
    default:
      return DefWindowProcW(window, message, w, l);
  }
}

void DrawOwn(const DRAWITEMSTRUCT& item) {
  RECT area = item.rcItem;
  if (item.CtlType == ODT_BUTTON) {
    DrawFrameControl(item.hDC, &area, DFC_BUTTON, DFCS_BUTTONPUSH);
    return;
  }
  wchar_t text[256] = L"";
  if (item.itemID != static_cast<UINT>(-1))
    SendMessageW(item.hwndItem, CB_GETLBTEXT, item.itemID, reinterpret_cast<LPARAM>(text));
  ExtTextOutW(item.hDC, area.left + 2, area.top, ETO_OPAQUE, &area, text,
              static_cast<UINT>(std::wcslen(text)), nullptr);
}

void Register(const wchar_t* name, UINT style, WNDPROC procedure) {
  WNDCLASSEXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.style = style;
  wanted.lpfnWndProc = procedure;
  wanted.hInstance = GetModuleHandleW(nullptr);
  wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  wanted.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  wanted.lpszClassName = name;
  RegisterClassExW(&wanted);
}

// The form paints what lies under a frame.
DWORD ExStyleOf(const WindowCopy& copy) {
  const bool frame = copy.Is(WC_BUTTONW) && (copy.Style & BS_TYPEMASK) == BS_GROUPBOX;
  return frame ? copy.ExStyle | WS_EX_TRANSPARENT : copy.ExStyle;
}

HWND MakeWindow(const WindowCopy& copy, const wchar_t* name, DWORD style, int more_height,
                HWND parent, void* data) {
  const RECT& at = copy.Place;
  return CreateWindowExW(ExStyleOf(copy), name, copy.Text.c_str(), style, at.left, at.top,
                         at.right - at.left, at.bottom - at.top + more_height, parent, nullptr,
                         GetModuleHandleW(nullptr), data);
}

}  // namespace

Twin::Twin(HWND dialog) : copies_(CopyWindows(dialog)) {
  const auto class_style = static_cast<UINT>(GetClassLongPtrW(dialog, GCL_STYLE));
  Register(kForm, class_style, OnForm);
  Register(kPane, 0, OnPane);
}

Twin::~Twin() {
  for (const WindowCopy& copy : copies_)
    ImageList_Destroy(copy.Images);
}

void Twin::Show() {
  Make();
  ShowWindow(form_, SW_SHOW);
  if (focused_) SetFocus(focused_);
  RedrawWindow(form_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  MSG message;
  while (form_ && GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
      ShowWindow(form_, SW_HIDE);
      DestroyWindow(form_);
      form_ = nullptr;
    } else {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
  }
  DropDrawings();
}

void Twin::Make() {
  const WindowCopy& form = copies_.front();
  form_ = MakeWindow(form, kForm, form.Style & ~static_cast<DWORD>(WS_VISIBLE), 0, nullptr, this);
  // Each new window lies below the ones before.
  for (auto copy = copies_.begin() + 1; copy != copies_.end(); ++copy)
    MakeChild(*copy);
}

void Twin::MakeChild(const WindowCopy& copy) {
  const bool own = copy.Class.starts_with(L"KRX");
  const bool combo = copy.Is(WC_COMBOBOXW);
  const HWND window = MakeWindow(copy, own ? kPane : copy.Class.c_str(), copy.Style,
                                 combo ? kListHeight : 0, form_, nullptr);
  children_[window] = &copy;
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(copy)), FALSE);
  for (const std::wstring& entry : copy.Entries)
    SendMessageW(window, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.c_str()));
  if (combo) SendMessageW(window, CB_SETCURSEL, static_cast<WPARAM>(copy.Entry), 0);
  if (copy.Is(WC_LISTVIEWW)) FillList(copy, window);
  if (copy.Focused) focused_ = window;
}

void Twin::FillList(const WindowCopy& copy, HWND list) {
  ListView_SetExtendedListViewStyle(list, copy.ListStyle);
  if (copy.Images) {
    images_.push_back(ImageList_Duplicate(copy.Images));
    ListView_SetImageList(list, images_.back(), LVSIL_SMALL);
  }
  for (std::size_t i = 0; i < copy.Columns.size(); ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(copy.Columns[i].Title.c_str());
    column.cx = copy.Columns[i].Width;
    column.iSubItem = static_cast<int>(i);
    SendMessageW(list, LVM_INSERTCOLUMNW, i, reinterpret_cast<LPARAM>(&column));
  }
  ListView_SetItemCountEx(list, copy.RowCount, LVSICF_NOINVALIDATEALL);
  if (copy.Selected >= 0)
    ListView_SetItemState(list, copy.Selected, LVIS_SELECTED | LVIS_FOCUSED,
                          LVIS_SELECTED | LVIS_FOCUSED);
}

HFONT Twin::FontOf(const WindowCopy& copy) {
  const auto found = std::find_if(fonts_.begin(), fonts_.end(), [&](const auto& font) {
    return std::memcmp(&font.first->Font, &copy.Font, sizeof copy.Font) == 0;
  });
  if (found != fonts_.end()) return found->second;
  fonts_.emplace_back(&copy, CreateFontIndirectW(&copy.Font));
  return fonts_.back().second;
}

void Twin::DropDrawings() {
  for (const auto& font : fonts_)
    DeleteObject(font.second);
  for (const HIMAGELIST images : images_)
    ImageList_Destroy(images);
  fonts_.clear();
  images_.clear();
  children_.clear();
  focused_ = nullptr;
}

// The rows begin with the first one that was in sight; those behind look like the last one.
void Twin::Describe(LVITEMW& item, HWND list) const {
  const auto found = children_.find(list);
  if (found == children_.end() || found->second->Rows.empty()) return;
  const auto& rows = found->second->Rows;
  const auto& row = rows[std::min(static_cast<std::size_t>(item.iItem), rows.size() - 1)];
  const auto column = static_cast<std::size_t>(item.iSubItem);
  if ((item.mask & LVIF_IMAGE) != 0) item.iImage = column == 0 ? row.Image : I_IMAGENONE;
  if ((item.mask & LVIF_INDENT) != 0) item.iIndent = row.Indent;
  if ((item.mask & LVIF_TEXT) != 0 && column < row.Cells.size())
    item.pszText = const_cast<wchar_t*>(row.Cells[column].c_str());
}

LRESULT CALLBACK Twin::OnForm(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_NCCREATE)
    SetWindowLongPtrW(
        window, GWLP_USERDATA,
        reinterpret_cast<LONG_PTR>(reinterpret_cast<const CREATESTRUCTW*>(l)->lpCreateParams));
  auto* const twin = reinterpret_cast<Twin*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_NOTIFY && reinterpret_cast<const NMHDR*>(l)->code == LVN_GETDISPINFOW)
    twin->Describe(reinterpret_cast<NMLVDISPINFOW*>(l)->item,
                   reinterpret_cast<const NMHDR*>(l)->hwndFrom);
  if (message == WM_DRAWITEM) DrawOwn(*reinterpret_cast<const DRAWITEMSTRUCT*>(l));
  return DefWindowProcW(window, message, w, l);
}

}  // namespace krx::bench
