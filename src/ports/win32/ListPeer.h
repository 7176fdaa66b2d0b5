#pragma once

#include <windows.h>

#include <commctrl.h>  // builds on the one above

#include "ports/win32/ControlPeer.h"
#include "ports/win32/RowImages.h"
#include "ui/RowList.h"

namespace krx::win32 {

// Every list of rows is the system's report list with owner data: it asks for the rows that it
// shows, and unlike a list box without strings it tells them to screen readers.
class ListPeer : public ControlPeer {
 public:
  ListPeer(Toolkit& toolkit, FormPeer& form, ui::RowList& list);

  void Update(ui::Aspect aspect) override;
  LRESULT FromParent(UINT message, WPARAM w, LPARAM l) override;

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;

 private:
  LRESULT Send(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return SendMessageW(Window(), message, w, l);
  }

  void ShowColors() const;
  void ShowColumns();
  void SizeColumns() const;
  void SizeRows();
  void ShowRows();
  void ShowSelection();
  void ShowTop();
  int RowHeight() const;
  int RowAt(LPARAM point) const;

  LRESULT Notified(NMHDR& header);
  void Describe(LVITEMW& item) const;
  void ItemChanged(const NMLISTVIEW& change);
  void HeaderNotified(const NMHDR& header);
  void AdoptTop() { list_.TopRow.Adopt(static_cast<int>(Send(LVM_GETTOPINDEX))); }

  void Press(LPARAM point, bool again);
  void Release(LPARAM point);

  ui::RowList& list_;
  RowImages images_;
  int columns_ = 0;       // that the window has
  bool showing_ = false;  // the window follows the model; its reports are no news
  int pressed_ = ui::RowList::kNoRow;
  bool twice_ = false;  // the button went down for the second time
};

}  // namespace krx::win32
