#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "base/Error.h"
#include "files/SelectionForm.h"
#include "ui/Timer.h"

namespace krx::files {

// The folder browser of the touch dialogs: a list of drives, a grid of folders and the path that
// both lead to. Touching a folder names it in the path, touching it twice opens it. The close key
// and Esc do nothing here: a gloved hand meets them too easily.
class TouchForm : public SelectionForm {
 public:
  ui::KRXGrid grdFolders{*this, u"grdFolders"};

  bool Loaded = false;  // from the end of the load step on
  // Number of parts of the listed folder below its drive or share; 0 for such a root. While a
  // folder is named in the path as well, the path has one part more.
  std::int32_t Depth = 0;

  // Lists the folders of the path. False when there are none or they cannot be read; then the grid
  // keeps its rows, or is emptied for a drive or share.
  bool ListFolders();
  // Names a folder of the grid in the path, or takes the name away again for "..".
  virtual void RefreshPath(StringView folder);
  // Selects the row of a folder and brings it into sight; without such a row nothing happens.
  void SelectFolder(StringView folder);

 protected:
  TouchForm(service::Apartment& apartment, String name, String drives, String path);

  ui::KRXComboBox drives_;
  ui::TextBox path_;

  // The path is another one; afterwards its folders may be listed.
  virtual void PathReplaced() {}
  // What the path names is to be shown.
  virtual void PathShown() {}
  // The start directory is shown.
  virtual void StartShown() {}
  // A drive was chosen whose medium cannot be read.
  virtual void DriveNotReady() = 0;
  // The folders of a path could not be read.
  virtual void FoldersFailed(const Error&) {}

  // Texts and fonts; what fails is passed over.
  virtual void LoadLook() = 0;
  virtual void LayOut() = 0;
  void CalcPositions() final;

  // Runs a procedure; its failure is shown in a message box that bears the procedure's name.
  void Report(StringView procedure, const std::function<void()>& body);
  // All of a folder, with the hourglass meanwhile.
  folders::FolderPart ReadWhole(StringView path);
  // Selects the row with this text without treating it as touched.
  void Highlight(ui::KRXGrid& grid, int column, StringView text);
  // Touching a row, by finger, mouse or arrow key, and touching it twice or pressing Enter on it.
  void BindRows(ui::KRXGrid& grid, std::function<void(int)> touched,
                std::function<void(int)> opened);
  void ClearFolders();

  // Steps of the layout, all lengths in twips.
  void SizeParts(std::span<ui::Label* const> headings, std::span<ui::KRXComboBox* const> combos,
                 std::span<ui::KRXGrid* const> grids);
  // Height of a grid whose upper edge is `top`, so that the form fits the screen.
  Twips GridHeight(Twips top) const;
  Twips FormWidth(Twips wanted) const;

 private:
  // The start: the list of drives is filled, with the drive of the start directory selected, or
  // else the first fixed drive that is ready; then the start directory is opened, or else that
  // drive.
  void GetDrives();
  void OpenStart();
  void OpenDrive();
  void Touched(int row);
  void Opened(int row);
  void FollowMarkers(const std::vector<String>& folders);
  void TakeMarkers(std::chrono::milliseconds patience);
  void DropMarkers();

  String start_;  // the start directory as a whole path
  ui::Timer tmrMarkers_;
  std::unique_ptr<folders::SubfolderProbe> probe_;
  int next_marker_ = 0;  // row of the next answer
  int last_marker_ = 0;  // row behind the last one
  bool highlighting_ = false;
};

}  // namespace krx::files
