#pragma once

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include <optional>
#include <vector>

#include "ports/win32/ControlPeer.h"
#include "ports/win32/FingerScroll.h"
#include "ports/win32/Hovering.h"
#include "ports/win32/RowImages.h"
#include "ports/win32/ScrollBar.h"
#include "ui/DoubleTouch.h"
#include "ui/Platform.h"
#include "ui/RowList.h"

namespace krx::win32 {

// Every list of rows is the system's report list with owner data: it asks for the rows that it
// shows, and unlike a list box without strings it tells them to screen readers.
class ListPeer final : public ControlPeer {
 public:
  ListPeer(Toolkit& toolkit, FormPeer& form, ui::RowList& list);

  void Update(ui::Aspect aspect) override;
  LRESULT FromParent(UINT message, WPARAM w, LPARAM l) override;
  void Settle() override;

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;
  void FocusChanged(bool focused) override;
  void Created() override;

 private:
  LRESULT Send(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return SendMessageW(Window(), message, w, l);
  }
  int RowWith(UINT state) const;
  void SetState(int row, UINT state, UINT mask) const;

  // The window follows the model.
  void ShowColors() const;
  DWORD HeaderStyle() const;
  void ShowColumns();
  std::vector<int> ColumnWidths() const;
  void SizeColumns();
  void SizeRows();
  void CountRows();
  void ShowRows();
  void ShowSelection();
  void ShowTop(int row);
  void MarkFocus();
  int RowHeight() const;

  // The model follows the window.
  LRESULT Reported(NMHDR& header);
  void Describe(LVITEMW& item) const;
  void ItemChanged(const NMLISTVIEW& change);
  void TellRow(const NMLISTVIEW& change) const;

  // How it looks.
  struct RowLook {
    COLORREF Ground;
    COLORREF Text;
  };
  COLORREF Ground() const;
  LRESULT Draw(const NMLVCUSTOMDRAW& drawing) const;
  RowLook LookOf(int row) const;
  void DrawRow(HDC dc, int row) const;
  void DrawCells(HDC dc, int row, const RECT& place, const RowLook& look) const;
  int DrawPicture(HDC dc, int row, const RECT& text, const RowLook& look) const;
  int DrawMark(HDC dc, int row, const RECT& text, const RowLook& look) const;
  int PictureSize() const;
  int CellPadding() const;
  int StripWidth() const;
  ui::BarTrack::Rows Extent() const;
  void FollowRows();
  LRESULT SizeFrame(WPARAM w, LPARAM l);
  void PaintBorder() const;
  void PaintCorner(HDC dc, const RECT& whole) const;
  void PaintStrip(HDC dc, const RECT& strip) const;
  void Hover(UINT message, LPARAM point);

  LRESULT HeaderReported(WPARAM w, LPARAM l);
  HWND HeaderWindow() const;
  LRESULT DrawHeader(const NMCUSTOMDRAW& drawing) const;
  void DrawTitle(HDC dc, RECT place, std::size_t column) const;
  // Returns the thickness of the lines.
  int DrawTitleGround(HDC dc, const RECT& place) const;
  void DrawRest(HDC dc) const;
  void ColumnResized(const NMHDR& header);
  void AdoptTop();

  LRESULT TurnWheel(int delta);
  LRESULT KeyDown(WPARAM key, LPARAM l);
  bool BeginWalk(WPARAM key);
  void Select(int row) const;
  void Press(UINT message, WPARAM w, LPARAM point);
  void BeginDrag(LPARAM point, double now);
  void Drag(int y);
  void Release(WPARAM w, LPARAM point);
  void LetGo();
  void ShowTouched(int row);
  void GiveUp();
  void ScrollTo(int row);
  int RowAt(LPARAM point) const;
  double Now() const { return form_.Form().ThePlatform().Ticks(); }
  void FollowBreadth();
  // What the columns need of the width, in pixels.
  ui::BarTrack::Rows Breadth() const;
  int TopRow() const { return static_cast<int>(Send(LVM_GETTOPINDEX)); }

  ui::RowList& list_;
  SharedImages images_;
  int columns_ = 0;  // that the window has

  FingerScroll finger_;
  ScrollBar bar_;
  ScrollBar level_;
  Hovering hovering_;
  int wheel_rest_ = 0;             // turns of the wheel that make no whole row yet
  int hot_ = ui::RowList::kNoRow;  // row under the pointer
  // A row by which the left button went down.
  struct Pressed {
    int Row;     // that the press belongs to
    int Under;   // that lies under it
    bool Twice;  // the second press of a double click belongs to the row of the first
    bool Drags;  // what moves while it lasts drags the rows
    double Began;
  };
  std::optional<Pressed> pressed_;
  int touched_ = ui::RowList::kNoRow;  // row under a finger that may still click it
  int clicked_ = ui::RowList::kNoRow;  // row of the click before
  int clicked_rows_ = 0;               // RowList::Replacements at that time
  ui::DoubleTouch touches_;
};

}  // namespace krx::win32
