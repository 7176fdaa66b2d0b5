#include "ui/Component.h"

#include <utility>

#include "ui/Form.h"

namespace krx::ui {

Component::Component(Form& parent, String name, ui::Kind kind)
    : parent_(parent), name_(std::move(name)), kind_(kind) {
  parent_.Add(*this);
}

Component::~Component() {
  parent_.Remove(*this);
}

void Component::Changed(Aspect aspect) {
  if (aspect == Aspect::Visible) parent_.GivePeer(*this);
  if (peer_) peer_->Update(aspect);
}

}  // namespace krx::ui
