#pragma once

#include <windows.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "Picture.h"
#include "Scenes.h"

namespace krx::pictures {

// The sums of the approved pictures by their names.
using Approved = std::map<std::string, std::string>;

// Takes pictures of dialogs that this thread opens. A picture that is the approved one is taken as
// soon as it is seen. Any other has to stay the same for many looks, and is written into a folder;
// between two looks the form has handled all that it had to.
class Camera {
 public:
  Camera(Approved approved, std::filesystem::path folder);
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

  // Opens the dialog, takes its picture and has it closed; true when it is the approved one. Throws
  // when the dialog fails or was never seen.
  bool Take(const std::string& name, const Scene& scene, const Look& look, IKRXDialog& dialogs);

 private:
  static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD);
  static LRESULT CALLBACK HoldTime(int code, WPARAM removed, LPARAM message);
  void LookAt(HWND form);
  void Wait(HWND form);
  void Compare(Picture picture);
  void Finish(HWND form);

  const Approved approved_;
  const std::filesystem::path folder_;
  const UINT_PTR timer_;

  // Of the picture that is being taken.
  const Scene* scene_ = nullptr;
  std::string name_;
  std::string wanted_;
  bool acted_ = false;
  bool spoiled_ = false;
  int looks_ = 0;
  int waits_ = 0;
  Picture last_;
  std::optional<bool> same_;
  std::string failure_;
};

}  // namespace krx::pictures
