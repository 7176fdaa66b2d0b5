#include "ui/KRXKey.h"

#include <utility>

namespace krx::ui {

KRXKey::KRXKey(Form& parent, String name) : FontClassControl(parent, std::move(name), Kind::Key) {
  TabStop = true;
}

}  // namespace krx::ui
