#pragma once

#include "ports/win32/FormPeer.h"
#include "ports/win32/Spoken.h"

namespace krx::win32 {

// A form is a dialog; what it announces describes it. It speaks for its parts that have no windows.
class SpokenForm final : public Spoken {
 public:
  explicit SpokenForm(const FormPeer& form) : Spoken(form.Window()), form_(form) {}

  long Role(int part) const override;
  long State(int part) const override;
  String Name(int part) const override;
  String Description(int part) const override;
  String Shortcut(int part) const override;
  RECT Place(int part) const override;
  int PartAt(POINT point) const override;
  int Count() const override { return static_cast<int>(form_.Insides().size()); }
  HWND WindowOf(int part) const override;
  std::optional<int> FocusedPart() const override;

 protected:
  bool TakesFocus() const override { return true; }

 private:
  const DrawnPeer& Part(int number) const;
  RECT Seen(const FormPeer::Inside& inside) const;

  const FormPeer& form_;
};

}  // namespace krx::win32
