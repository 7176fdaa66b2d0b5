#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "WindowCopy.h"

namespace krx::bench {

// As many windows of the same kinds, places, texts and fonts as a dialog has, made and shown by the
// plainest program that can: what the platform itself takes for them.
class Twin {
 public:
  // Of a dialog that is shown.
  explicit Twin(HWND dialog);
  ~Twin();
  Twin(const Twin&) = delete;
  Twin& operator=(const Twin&) = delete;

  // Opens it and returns once Esc has closed it.
  void Show();

  std::size_t Windows() const { return copies_.size(); }

 private:
  static LRESULT CALLBACK OnForm(HWND window, UINT message, WPARAM w, LPARAM l);

  void Make();
  void MakeChild(const WindowCopy& copy);
  void FillList(const WindowCopy& copy, HWND list);
  HFONT FontOf(const WindowCopy& copy);
  void Describe(LVITEMW& item, HWND list) const;
  void DropDrawings();

  const std::vector<WindowCopy> copies_;
  HWND form_ = nullptr;
  HWND focused_ = nullptr;
  std::map<HWND, const WindowCopy*> children_;
  std::vector<std::pair<const WindowCopy*, HFONT>>
      fonts_;  // each with the first window that has it
  std::vector<HIMAGELIST> images_;
};

}  // namespace krx::bench
