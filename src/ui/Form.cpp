#include "ui/Form.h"

#include <algorithm>
#include <utility>

#include "base/Error.h"
#include "ui/Control.h"
#include "ui/Platform.h"

namespace krx::ui {

Form::Form(Platform& platform, String name) : platform_(platform), name_(std::move(name)) {}

namespace {

// While a form is shown modally, the one that was in use before has no use for a companion.
class Turn {
 public:
  explicit Turn(Form& form)
      : platform_(form.ThePlatform()), outer_(std::exchange(platform_.InUse, &form)) {
    if (outer_ && outer_->Beside) outer_->Beside->Leave();
  }
  ~Turn() { platform_.InUse = outer_; }
  Turn(const Turn&) = delete;
  Turn& operator=(const Turn&) = delete;

 private:
  Platform& platform_;
  Form* const outer_;
};

}  // namespace

// The controls are members of the derived form and are gone by now; only the form's peer is left.
Form::~Form() = default;

void Form::Load() {
  if (std::exchange(loaded_, true)) return;
  try {
    LoadStep();
  } catch (...) {
    loaded_ = false;
    throw;
  }
}

void Form::ShowModal() {
  if (showing_) throw RuntimeError(400, u"Form already displayed; can't show modally");
  Load();
  if (!loaded_) return;  // its own load step has unloaded it
  if (!right_to_left_) right_to_left_ = AsksRightToLeft && AsksRightToLeft();
  came_up_.reset();
  showing_ = visible_ = true;
  const Turn turn(*this);
  try {
    GivePeers();
    Appear();
    if (visible_) platform_.RunModal(*this);
  } catch (...) {
    EndShowing();
    UnloadAfterFailure();
    throw;
  }
  EndShowing();
  if (!loaded_) DropPeers();
}

void Form::EndShowing() {
  showing_ = visible_ = false;
  active_ = nullptr;
  if (Beside) Beside->Leave();
}

void Form::ShowBeside() {
  if (std::exchange(visible_, true)) return;
  GivePeers();
  Changed(Aspect::Visible);
}

void Form::Hide() {
  if (!std::exchange(visible_, false)) return;
  Changed(Aspect::Visible);
  if (Beside) Beside->Leave();
}

void Form::Unload() {
  if (!std::exchange(loaded_, false)) return;
  Hide();
  UnloadStep();
  // A handler that unloads runs inside a window of this form; the windows go when the loop is left.
  if (!showing_) DropPeers();
}

void Form::UnloadAfterFailure() {
  try {
    Unload();
  } catch (...) {
    // The failure that ended the showing is the one to report.
  }
  DropPeers();
}

void Form::CameUp() {
  if (Panel.FirstAnswerDelay > 0) came_up_ = platform_.Ticks();
}

// A form that is not on the screen yet has seen no operator.
bool Form::TakesAnswers() const {
  if (Panel.FirstAnswerDelay <= 0 || !showing_) return true;
  constexpr double kSecond = 1000;
  return came_up_ && platform_.Ticks() - *came_up_ >= Panel.FirstAnswerDelay * kSecond;
}

void Form::Move(Twips left, Twips top) {
  const bool moved_across = Left.Adopt(left);
  const bool moved_down = Top.Adopt(top);
  if (moved_across || moved_down) Changed(Aspect::Bounds);
}

Component* Form::Find(StringView name) const {
  const auto found = std::find_if(components_.begin(), components_.end(),
                                  [&](const Component* c) { return c->Name() == name; });
  return found == components_.end() ? nullptr : *found;
}

void Form::FocusMovedTo(Control* control) {
  if (control == active_) return;
  Control* const before = std::exchange(active_, control);
  if (before) before->LostFocus();
  // The handler may have moved the focus on; then the newer move has raised its own events.
  if (control && active_ == control) control->GotFocus();
}

Control* Form::FirstFocus() const {
  const auto found = std::find_if(tab_order_.begin(), tab_order_.end(),
                                  [](const Control* c) { return c->CanFocus(); });
  return found == tab_order_.end() ? nullptr : *found;
}

krx::Font Form::FontOfClass(StringView name) const {
  return FontClassResolver ? FontClassResolver(name) : krx::Font();
}

void Form::Changed(Aspect aspect) {
  if (peer_) peer_->Update(aspect);
}

void Form::Add(Component& component) {
  components_.push_back(&component);
}

void Form::Remove(Component& component) {
  std::erase(components_, &component);
  std::erase_if(tab_order_, [&](const Control* c) { return c == &component; });
  if (active_ == &component) active_ = nullptr;
}

// Controls come in tab order, in which screen readers find them. What lies below others comes
// behind them, as a port puts later ones below earlier ones.
void Form::GivePeers() {
  if (!peer_) peer_ = platform_.CreatePeer(*this);
  for (const bool below : {false, true}) {
    for (Control* control : tab_order_)
      if (control->LiesBelow() == below) GivePeer(*control);
  }
  for (Component* component : components_)
    GivePeer(*component);
}

void Form::GivePeer(Component& component) {
  if (!visible_ || component.peer_ || !component.WantsPeer()) return;
  component.peer_ = platform_.CreatePeer(component);
}

void Form::DropPeers() {
  if (Beside) Beside->Drop();
  active_ = nullptr;
  for (Component* component : components_)
    component->peer_.reset();
  peer_.reset();
}

void Form::AddToTabOrder(Control& control) {
  tab_order_.push_back(&control);
}

void Form::MoveInTabOrder(Control& control, int index) {
  std::erase(tab_order_, &control);
  const int last = static_cast<int>(tab_order_.size());
  tab_order_.insert(tab_order_.begin() + std::clamp(index, 0, last), &control);
}

int Form::PositionInTabOrder(const Control& control) const {
  const auto found = std::find(tab_order_.begin(), tab_order_.end(), &control);
  return static_cast<int>(found - tab_order_.begin());
}

}  // namespace krx::ui
