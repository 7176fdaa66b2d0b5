#pragma once

#include <span>

#include "files/ConfinedNavigation.h"
#include "service/DialogForm.h"
#include "service/Layout.h"
#include "ui/DirListBox.h"
#include "ui/DriveListBox.h"

namespace krx::files {

// What the two selection dialogs with mouse and keyboard share: drive list, confined directory
// list, the notice in its place when a drive is not ready, and the button row.
class SelectForm : public service::DialogForm {
 protected:
  ui::FolderReadings readings_{*this};

 public:
  ui::DriveListBox drvSelect{*this, u"drvSelect"};
  ui::KRXIndex idxFileListBox{*this, u"idxFileListBox"};
  ui::DirListBox dirSelect{*this, u"dirSelect", readings_};
  ui::KRXKey keyOK{*this, u"keyOK"};
  ui::KRXKey keyCancel{*this, u"keyCancel"};

  String StartDirectory;  // as it was passed; the current directory where nothing was
  String Result;          // the chosen path; empty until OK

 protected:
  struct Heading {
    ui::Label& Label;
    StringView TextKey;
  };
  using Headings = std::span<const Heading>;

  enum class PathField { None, Shown };

  SelectForm(service::Apartment& apartment, String name, PathField field);

  // Shows an entry of the directory list as the one that the operator is at.
  virtual void ShowEntry(const String& path) = 0;
  // Another drive was chosen, ready or not.
  virtual void DriveChosen(const String& drive) = 0;
  // The path that OK returns.
  virtual String Chosen() const = 0;

  // What Enter does in a control.
  static void OnEnter(ui::Control& control, std::function<void()> act);
  // As the operator presses it: does nothing while it is disabled.
  void PressOK();

  // Steps of SetFonts: the headings and these controls get the text font class. What fails is
  // passed over.
  void LoadFonts(Headings headings, std::span<ui::Control* const> controls);
  // Steps of SetTexts. A failing text raises Error; opening the start directory does not.
  void LoadTitle(const String& title, StringView key);
  void LoadTexts(Headings headings, StringView ok_key);
  void OpenStart(const String& directory);

  // Steps of CalcPositions, all lengths in twips.
  void SizeKeys();
  // The width between the form's margins: no less than this, and enough for headings, buttons and
  // title.
  Twips InnerWidth(Twips narrowest, Headings headings);
  Twips DirectoryHeight() const;
  // Puts a heading below what ends at `above`, and the field below the heading. A height of 0 is
  // the field's natural one. Returns where the field ends.
  static Twips Stack(ui::Label& heading, ui::Control& field, const Rect& column, Twips above);
  // Puts the button row below what ends at `bottom` and sizes the form.
  void Finish(Twips inner_width, Twips bottom);

 private:
  void LoadLists();
  void DriveChanged();

  ConfinedNavigation navigation_;
};

// Sets a control that the operator may not use apart from those that he may: its background is
// that of a button instead of a window.
void ShowUsable(ui::Control& control, bool usable);

inline constexpr Twips kMargin = 120;         // between the form's edges and its controls
inline constexpr Twips kHeadingToField = 30;  // from a heading down to its field

}  // namespace krx::files
