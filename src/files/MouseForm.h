#pragma once

#include <span>

#include "files/ConfinedNavigation.h"
#include "files/SelectionForm.h"
#include "ui/DirListBox.h"
#include "ui/DriveListBox.h"

namespace krx::files {

// What the two selection dialogs with mouse and keyboard share: drive list, confined directory
// list, the notice in its place when a drive is not ready.
class MouseForm : public SelectionForm {
 protected:
  ui::FolderReadings readings_{*this};

 public:
  ui::DriveListBox drvSelect{*this, u"drvSelect"};
  ui::KRXIndex idxFileListBox{*this, u"idxFileListBox"};
  ui::DirListBox dirSelect{*this, u"dirSelect", readings_};

  bool Confined = false;  // to the start directory and what is below it
  String Result;          // the chosen path; empty until OK

 protected:
  enum class PathField { None, Shown };

  MouseForm(service::Apartment& apartment, String name, PathField field);

  // The headings, each with the key of its text in its tag.
  virtual std::span<ui::Label> Headings() = 0;
  // Shows an entry of the directory list as the one that the operator is at.
  virtual void ShowEntry(const String& path) = 0;
  // Another drive was chosen, ready or not.
  virtual void DriveChosen(const String& drive) = 0;
  // The path that OK returns.
  virtual String Chosen() const = 0;

  // As the operator presses it: does nothing while it is disabled.
  void PressOK();

  // The step of SetFonts. What fails is passed over.
  void LoadLook(Controls texts, Controls inputs);
  // Begins to read the start directory, the current one where none is passed, so that it is at
  // hand when texts and fonts are. Raises nothing.
  void BeginStart(const String& directory);

  // Steps of SetTexts. A failing text raises Error; opening the start directory does not.
  void LoadTexts(StringView ok_key);
  void OpenStart(const String& directory);

  // Steps of CalcPositions, all lengths in twips.
  void SizeKeys();
  // The width between the form's margins: no less than this, and enough for headings, buttons and
  // title. The headings get their heights.
  Twips InnerWidth(Twips narrowest);
  Twips DirectoryHeight() const;
  void PlaceNoticeAndButtons(Twips inner_width, Twips bottom);

  // Whoever may not leave the start directory has no drives to choose from.
  void Confine(bool confined);
  // Sets a control that the operator may not use apart from those that he may: its background is
  // that of a button instead of a window.
  static void ShowUsable(ui::Control& control, bool usable);

 private:
  void ChooseStartDrive();
  void DriveChanged();
  void DriveAnswered(bool ready);
  void StartShown();
  void Refused(const String& path);

  ConfinedNavigation navigation_;
  String whole_;                       // the start directory as a whole path
  ui::FolderReadings::Listing begun_;  // of the start directory, until it is shown
  bool other_drive_ = false;           // the start directory is not on the current drive
  String asked_drive_;                 // a root that was opened by choosing a drive
};

}  // namespace krx::files
