#include "ui/KRXKey.h"

#include <utility>

#include "ui/Form.h"

namespace krx::ui {

KRXKey::KRXKey(Form& parent, String name) : KRXKey(parent, std::move(name), Kind::Key) {}

KRXKey::KRXKey(Form& parent, String name, ui::Kind kind)
    : FontClassControl(parent, std::move(name), kind) {
  TabStop = true;
}

void KRXKey::Press() {
  if (Parent().TakesAnswers()) Click();
}

}  // namespace krx::ui
