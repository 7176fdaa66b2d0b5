#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "base/Error.h"
#include "files/FolderGrid.h"
#include "files/SelectionForm.h"
#include "ui/FolderReadings.h"
#include "ui/Questions.h"

namespace krx::files {

// The folder browser of the touch dialogs: a list of drives, a grid of folders and the path that
// both lead to. Touching a folder names it in the path, touching it twice opens it. The close key
// and Esc do nothing here: a gloved hand meets them too easily. Folders are read in the background:
// rows come as they are read, and whatever else the operator does gives up what he waited for.
class TouchForm : public SelectionForm, private ui::FolderReadings::Watcher {
 public:
  FolderGrid grdFolders{*this, u"grdFolders"};

  bool Loaded = false;  // from the end of the load step on
  // Number of parts of the listed folder below its drive or share; 0 for such a root. While a
  // folder is named in the path as well, the path has one part more.
  std::int32_t Depth = 0;

  // Lists the folders of the path. False when there are none, when they cannot be read, or as long
  // as none is known; then the grid keeps its rows, or is emptied for a drive or share.
  bool ListFolders();
  // Names a folder of the grid in the path, or takes the name away again for "..".
  virtual void RefreshPath(StringView folder);
  // Selects the row of a folder and brings it into sight; without such a row nothing happens.
  void SelectFolder(StringView folder);

 protected:
  TouchForm(service::Apartment& apartment, String name, String drives, String path);

  using Listing = ui::FolderReadings::Listing;

  ui::KRXComboBox drives_;
  ui::TextBox path_;

  // Begins to ask for the start directory, so that the answers are at hand when texts and fonts
  // are.
  void BeginStart(const String& directory);
  // The reading of the folder that the path names, one for its folders and its files. Raises why it
  // cannot be read.
  Listing Reading();

  // The path is another one; afterwards its folders may be listed.
  virtual void PathReplaced() {}
  // What the path names is to be shown.
  virtual void PathShown() {}
  // The start directory is shown.
  virtual void StartShown() {}
  // A drive was chosen whose medium cannot be read.
  virtual void DriveNotReady() = 0;
  // The folders of a path could not be read, of which nothing is told unless memory is lacking.
  virtual void FoldersFailed(const Error& error) {
    if (error.Status() == kOutOfMemory) throw error;
  }
  // A reading has brought more.
  virtual void ReadingGrew() {}

  // Texts and fonts; what fails is passed over.
  virtual void LoadLook() = 0;
  virtual void LayOut() = 0;
  void CalcPositions() final;

  // Runs a procedure; its failure is shown in a message box that bears the procedure's name.
  void Report(StringView procedure, const std::function<void()>& body);
  // Selects the row with this text without treating it as touched. False without such a row.
  bool Highlight(ui::KRXGrid& grid, int column, StringView text);
  // Touching a row, by finger, mouse or arrow key, and touching it twice or pressing Enter on it.
  void BindRows(ui::KRXGrid& grid, std::function<void(int)> touched,
                std::function<void(int)> opened);
  void ClearFolders();

  // Steps of the layout, all lengths in twips.
  void SizeParts(std::span<ui::Label* const> headings, std::span<ui::KRXComboBox* const> combos,
                 std::span<ui::KRXGrid* const> grids);
  // As high as the font needs, and as a finger does where the buttons are made for one.
  void SizeField(ui::TextBox& field) const;
  // Height of a grid whose upper edge is `top`, so that the form fits the screen.
  Twips GridHeight(Twips top) const;
  Twips FormWidth(Twips wanted) const;

 private:
  // The start: the list of drives is filled, with the drive of the start directory selected, or
  // else the first fixed drive that is ready; then the start directory is opened, or else that
  // drive.
  void GetDrives();
  void AskDefaultDrive(int index);
  void DriveKnown(int index, const folders::Drive& drive);
  void OpenStart();
  void NameStart();
  void ShowStart();
  void OpenDrive();
  void DriveRefused(const Error& error);
  void Touched(int row);
  void Opened(int row);
  void OpenParent();

  void Leave();
  bool TakeAsked();
  void AskedRefused();
  void AskedCame();
  void ShowFolders();
  void AddFolders();
  void FollowMarkers();
  void TakeMarkers(folders::Patience patience);
  void DropMarkers();
  void ListingsGrew() override;

  ui::FolderReadings readings_{*this};
  ui::Questions questions_{*this, u"tmrQuestions"};
  String start_;  // the start directory as a whole path
  ui::Questions::Asked<bool> start_exists_;
  std::exception_ptr start_failure_;  // of asking for it

  Listing latest_;             // the last one that was begun
  Listing asked_;              // its folders are to be listed as soon as one is known
  Listing listed_;             // the grid shows its folders
  std::size_t taken_ = 0;      // of them
  bool entering_ = false;      // the asked one lies below the listed one
  bool asked_drive_ = false;   // the asked one is the root of a drive that was chosen
  String wish_;                // a folder to be selected when it comes
  bool highlighting_ = false;  // no touch
  bool choosing_ = false;      // no choice of the operator's

  ui::Timer tmrMarkers_;
  std::unique_ptr<folders::SubfolderProbe> probe_;
  bool probed_ = false;       // the listed folders have been asked
  std::size_t unmarked_ = 0;  // answers that are still to come
};

}  // namespace krx::files
