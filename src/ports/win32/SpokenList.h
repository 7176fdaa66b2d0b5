#pragma once

#include "ports/win32/Spoken.h"
#include "ui/RowList.h"

namespace krx::win32 {

// A list and its rows, of any number: they are described when they are asked for.
class SpokenList final : public SpokenControl {
 public:
  SpokenList(HWND window, ui::RowList& list) : SpokenControl(window, list), list_(list) {}

  long Role(int part) const override;
  long State(int part) const override;
  String Name(int part) const override;
  String Description(int part) const override;
  String Shortcut(int part) const override;
  RECT Place(int part) const override;
  int PartAt(POINT point) const override;
  int Count() const override { return list_.RowCount(); }
  std::optional<int> FocusedPart() const override;
  std::optional<int> SelectedPart() const override;
  bool Focus(int part) override;
  bool Select(int part) override;

 private:
  LRESULT Ask(UINT message, WPARAM w = 0, LPARAM l = 0) const {
    return SendMessageW(Window(), message, w, l);
  }
  int FramedRow() const;
  bool InSight(int row) const;

  ui::RowList& list_;
};

}  // namespace krx::win32
