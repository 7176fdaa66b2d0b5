#pragma once

#include <memory>
#include <span>

#include "host/UserManager.h"
#include "service/DialogForm.h"
#include "service/Layout.h"

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
  using Keys = std::span<ui::KRXKey* const>;
  using Rows = std::span<const service::InputRow>;
  // Which edge a button row that is wider than the frame shares with it.
  enum class WideRow { CentredBelowFrame, EndsWithFrame };

  UserForm(service::Apartment& apartment, String name, String frame = u"fra");

  // A label stands before its field in the tab order, so that its access key leads there.
  static void OrderRows(Rows rows);

  // Steps of the load: all texts, then all fonts, then the layout. Each failing statement in them
  // is passed over, and what it was to set keeps its value.
  void LoadCaption(StringView key, StringView suffix = {});
  void LoadText(ui::KRXKey& key, StringView text_key);
  void LoadText(ui::Label& label, StringView text_key);
  void LoadFonts(Keys keys, Rows rows);
  // Caption line, rows and button row; the buttons end at the frame's right edge.
  void LayOut(Rows rows, Keys keys, Twips caption_padding = service::kCaptionPadding,
              WideRow wide_row = WideRow::CentredBelowFrame);

  // Size of a button for its text and the configured minimum; one whose text cannot be measured
  // gets a size of its own.
  void SizeKey(ui::KRXKey& key);

  // Shows the text of a key through the shared dialog service.
  void ShowMessage(StringView key, std::int32_t style, const String& title);
  // Reports a refusal and leads the operator to the control that he has to correct.
  void Refuse(StringView key, ui::Control& focus);

  // OK sets the flag; OK, Cancel and the close key hide the form.
  void HideOnAnswer(ui::KRXKey& ok, ui::KRXKey& cancel, bool& ok_pressed);
  // Enter in the last field presses OK, or leads to another field while OK is disabled.
  static void ConfirmOnEnter(ui::Control& field, ui::KRXKey& ok, ui::Control& otherwise);
  static void SelectAllOnFocus(ui::EditBox& box);

  // A read-only field in the colours of a button, which Tab passes over.
  static void MakeDisplayField(ui::TextBox& field);

  // Enter is swallowed in every input field and leads on.
  template <class Next>
  static void OnEnter(ui::Control& field, Next next) {
    field.KeyPress = [next](char16_t& key) {
      if (key != kEnter) return;
      key = 0;
      next();
    };
  }

  static constexpr char16_t kEnter = 13;

 private:
  Twips SizeKeys(Keys keys);
  void PlaceKeys(Keys keys, Twips left, Twips top);
  Twips WidestLabelEnd(Rows rows) const;
};

}  // namespace krx::users
