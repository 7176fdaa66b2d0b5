#pragma once

#include "ports/win32/ControlPeer.h"
#include "ports/win32/DropList.h"
#include "ports/win32/Hovering.h"
#include "ui/ComboBox.h"

namespace krx::win32 {

// A combo box is the system's drop-down list, where asked with rows as high as a finger needs them.
// Its field shows the model's text, which need not be an entry.
class ComboPeer final : public ControlPeer {
 public:
  ComboPeer(Toolkit& toolkit, FormPeer& form, ui::ComboBox& box);

  void Update(ui::Aspect aspect) override;
  void Measure(MEASUREITEMSTRUCT& item) const override;

 protected:
  LRESULT Handle(UINT message, WPARAM w, LPARAM l) override;
  void UpdateContent(ui::Aspect aspect) override;
  // The system would only measure by it, and anew each time; we draw and measure ourselves.
  void GiveFont() const override {}
  void FocusChanged(bool) override { Invalidate(); }
  void Notified(WORD code) override;
  void Draw(const DRAWITEMSTRUCT& item) override;

 private:
  int RowHeight() const;
  int FieldHeight() const;
  int OuterHeight() const;
  void SizeRows() const;
  void SizeField(int height) const;
  void SizeEmptyList() const;
  // The window that drops; none when the system does not tell it.
  HWND List() const;
  void Fill() const;
  void FillUnlessOpen();
  void ShowSelection() const;
  void Dropped();
  void Choose();
  void PaintCombo(HDC dc) const;
  // As it reads in a form of either direction.
  String Shown(const String& text) const;
  void DrawRow(const DRAWITEMSTRUCT& item) const;
  LRESULT ListColors(HDC dc) const;

  ui::ComboBox& box_;
  Hovering hovering_;
  DropList list_;
  bool cancelled_ = false;  // the open list is being left without a choice
  bool stale_ = false;      // the open list is to be filled anew when it closes
};

}  // namespace krx::win32
