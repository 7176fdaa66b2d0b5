#pragma once

#include <memory>
#include <vector>

#include "host/UserManager.h"
#include "service/DialogForm.h"
#include "service/Layout.h"

namespace krx::users {

// A service object of the user management that a dialog call creates when it first needs it.
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
  ui::Frame fra{*this, u"fra"};

 protected:
  UserForm(service::Apartment& apartment, String name);

  // Steps of the load; each failing statement in them is passed over.
  void LoadCaption(StringView key, StringView suffix = {});
  void LoadKeys(std::span<ui::KRXKey* const> keys, std::span<const StringView> text_keys);
  void LoadLabel(ui::Label& label, StringView text_key);
  void LoadInput(ui::Control& field);

  // Caption line, rows and button row; the buttons end at the frame's right edge.
  void LayOut(std::span<const service::InputRow> rows, std::span<ui::KRXKey* const> keys,
              Twips caption_padding = service::kCaptionPadding);

  // Shows the text of a key through the shared dialog service.
  void ShowMessage(StringView key, std::int32_t style, const String& title);

  // A read-only field in the colours of a button.
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
};

}  // namespace krx::users
