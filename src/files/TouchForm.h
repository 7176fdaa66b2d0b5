#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "base/Error.h"
#include "service/DialogForm.h"
#include "ui/Timer.h"

namespace krx::files {

// The folder browser of the touch dialogs: a list of drives, a grid of folders and the path that
// both lead to. Touching a folder names it in the path, touching it twice opens it. The close key
// and Esc do nothing here: a gloved hand meets them too easily.
class TouchForm : public service::DialogForm {
 public:
  ui::KRXGrid grdFolders{*this, u"grdFolders"};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  String StartDirectory;  // as it was passed
  // Number of parts of the listed folder below its drive or share; 0 for such a root. While a
  // folder is named in the path as well, the path has one part more.
  std::int32_t Depth = 0;

  // Lists the folders of the path. False when there are none or they cannot be read; then the grid
  // keeps its rows, or is emptied for a drive or share.
  bool ListFolders();
  // Names a folder of the grid in the path, or takes the name away again for "..".
  virtual bool RefreshPath(StringView folder);
  // Selects the row of a folder and brings it into sight; without such a row nothing happens.
  bool SelectFolder(StringView folder);
  // Fills the list of drives and selects that of the start directory, or else the first fixed drive
  // that is ready. A failure is shown in a message box.
  void GetDrives();

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

  // From now on choosing a drive leads to its root.
  void EndStart() { started_ = true; }
  bool Started() const { return started_; }
  // Runs a procedure; its failure is shown in a message box that bears the procedure's name.
  bool Report(StringView procedure, const std::function<void()>& body);
  // All of a folder, with the hourglass meanwhile.
  ui::FolderPart ReadWhole(StringView path);
  // Selects the row with this text without treating it as touched.
  void Highlight(ui::KRXGrid& grid, int column, StringView text);
  // Touching a row, by finger, mouse or arrow key, and touching it twice or pressing Enter on it.
  void BindRows(ui::KRXGrid& grid, std::function<void(int)> touched,
                std::function<void(int)> opened);
  void ClearFolders();

  // Steps of the load; what fails is passed over.
  void LoadText(ui::KRXKey& key, StringView text_key);
  void LoadText(ui::Label& label, StringView text_key);
  void LoadFonts(std::span<ui::Control* const> texts, std::span<ui::Control* const> inputs);

  // Steps of the layout, all lengths in twips.
  void SizeParts(std::span<ui::KRXComboBox* const> combos, std::span<ui::KRXGrid* const> grids);
  // Puts a heading below `top` and the field below it; returns where the field ends.
  Twips Stack(ui::Label& heading, ui::Control& field, Twips left, Twips width, Twips top);
  // Height of a grid whose upper edge is `top`, so that the form fits the screen.
  Twips GridHeight(Twips top) const;
  Twips FormWidth(Twips wanted) const;
  // The button row below `bottom`, and the form's size.
  void Finish(Twips width, Twips bottom);

 private:
  void DriveChanged();
  void OpenStart();
  void Touched(int row);
  void Opened(int row);
  void FollowMarkers(const std::vector<String>& folders);
  void TakeMarkers(std::chrono::milliseconds patience);
  void DropMarkers();

  String start_;  // the start directory as a whole path
  ui::Timer tmrMarkers_;
  std::unique_ptr<ui::SubfolderProbe> probe_;
  int next_marker_ = 0;  // row of the next answer
  int last_marker_ = 0;  // row behind the last one
  bool started_ = false;
  bool highlighting_ = false;
};

inline constexpr Twips kTouchMargin = 120;  // between the form's edges and its controls

}  // namespace krx::files
