#pragma once

#include <memory>
#include <span>
#include <vector>

#include "host/UserManager.h"
#include "service/DialogForm.h"

namespace krx::users {

// A service object of the user management that a dialog call creates when it first needs it and
// keeps until the call ends.
template <class Service>
class OnFirstUse {
 public:
  using Factory = std::unique_ptr<Service> (host::Runtime::*)();
  OnFirstUse(host::Runtime& runtime, Factory factory) : runtime_(runtime), factory_(factory) {}

  Service* operator->() {
    if (!service_) service_ = (runtime_.*factory_)();
    return service_.get();
  }

 private:
  host::Runtime& runtime_;
  Factory factory_;
  std::unique_ptr<Service> service_;
};

// What the log-on, password and who-am-I dialogs share: the frame with its input rows, the button
// row below it, texts by key and messages through the shared dialog service.
class UserForm : public service::DialogForm {
 public:
  ui::Frame fra;

 protected:
  // Which edge a button row that is wider than the frame shares with it.
  enum class WideRow { CentredBelowFrame, EndsWithFrame };

  UserForm(service::Apartment& apartment, String name, String frame = u"fra");

  // What stands in the frame, from top to bottom, and below it, from left to right.
  virtual std::vector<service::InputRow> InputRows() { return {}; }
  virtual std::vector<ui::KRXKey*> Buttons() = 0;
  void OrderRows();

  // The key of a label's text, and the caption that holds until texts are loaded and where that
  // fails.
  struct LabelText {
    StringView Key;
    StringView Caption = {};
  };
  static void NameLabels(std::span<ui::Label> labels, std::initializer_list<LabelText> texts);

  // Steps of the load: all texts, then all fonts, then the layout. What fails is passed over.
  void LoadCaption(StringView key, StringView suffix = {});
  // A button's name is the key of its text.
  void LoadLabels(std::span<ui::Label> labels);
  void LoadButtons();
  void LoadLook();

  // Caption line, rows and button row; the buttons end at the frame's right edge.
  void CalcPositions() override;
  Twips caption_padding_ = service::kCaptionPadding;
  WideRow wide_row_ = WideRow::CentredBelowFrame;

  // Shows the text of a key through the shared dialog service.
  void ShowMessage(StringView key, std::int32_t style, const String& title);
  // Reports a refusal and leads the operator to the control that he has to correct.
  void Refuse(StringView key, ui::Control& focus);

  // OK sets the flag; OK, Cancel and the close key hide the form.
  void HideOnAnswer(ui::KRXKey& ok, ui::KRXKey& cancel, bool& ok_pressed);
  // Enter in the last field presses OK, or leads to another field while OK is disabled.
  void ConfirmOnEnter(ui::Control& field, ui::KRXKey& ok, ui::Control& otherwise);
  static void SelectAllOnFocus(ui::EditBox& box);

  // A read-only field in the colours of a button, which Tab passes over.
  static void MakeDisplayField(ui::TextBox& field);
};

}  // namespace krx::users
