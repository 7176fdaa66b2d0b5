#include "ports/headless/HeadlessPlatform.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/Error.h"
#include "ports/headless/ControlPeer.h"
#include "ports/headless/FoldCase.h"
#include "ports/headless/Operator.h"
#include "ports/headless/TimerPeer.h"
#include "ui/Keyboard.h"

namespace krx::headless {

namespace {

constexpr float kCharacterPerPoint = 10;
constexpr float kBoldCharacterPerPoint = 11;
constexpr float kLinePerPoint = 24;
constexpr Twips kInputBorder = 90;
constexpr int kBoldWeight = 600;

std::size_t CodePoints(StringView line) {
  return static_cast<std::size_t>(std::count_if(
      line.begin(), line.end(), [](char16_t unit) { return (unit & 0xFC00) != 0xDC00; }));
}

// Makes an attached form known as long as it has its peer.
class AttachedPeer final : public ui::Peer {
 public:
  AttachedPeer(HeadlessPlatform& platform, ui::Form& form) : platform_(platform), form_(form) {}
  ~AttachedPeer() override {
    if (platform_.Attached == &form_) platform_.Attached = nullptr;
  }
  void Update(ui::Aspect) override {
    if (form_.Visible()) platform_.Attached = &form_;
  }

 private:
  HeadlessPlatform& platform_;
  ui::Form& form_;
};

}  // namespace

void HeadlessPlatform::Expect(String form, Script script) {
  expected_.push_back({std::move(form), std::move(script)});
}

std::vector<std::string> HeadlessPlatform::Complaints() const {
  std::vector<std::string> all = complaints_;
  for (const Expectation& missing : expected_) {
    all.push_back("expected form was never shown: " + ToUtf8(missing.Form));
  }
  return all;
}

void HeadlessPlatform::Advance(Milliseconds time) {
  const Milliseconds end = now_ + time;
  for (;;) {
    const auto next = std::min_element(
        timers_.begin(), timers_.end(),
        [](const TimerPeer* a, const TimerPeer* b) { return a->Due() < b->Due(); });
    if (next == timers_.end() || (*next)->Due() > end) break;
    // A handler may wait itself, and the clock never goes back.
    now_ = std::max(now_, (*next)->Due());
    (*next)->Fire();
  }
  now_ = std::max(now_, end);
}

char32_t HeadlessPlatform::FoldCase(char32_t character) {
  return headless::FoldCase(character);
}

Size HeadlessPlatform::MeasureText(const Font& font, StringView text) {
  if (Unmeasurable.contains(font.Name)) throw Error(0x80004005u, u"Font cannot be measured");
  const float per_point = font.Weight >= kBoldWeight ? kBoldCharacterPerPoint : kCharacterPerPoint;
  std::size_t widest = 0;
  std::size_t lines = 1;
  for (std::size_t end; (end = text.find(u'\n')) != StringView::npos; ++lines) {
    widest = std::max(widest, CodePoints(text.substr(0, end)));
    text.remove_prefix(end + 1);
  }
  widest = std::max(widest, CodePoints(text));
  return {static_cast<float>(widest) * per_point * font.Size,
          static_cast<float>(lines) * kLinePerPoint * font.Size};
}

Twips HeadlessPlatform::WidestText(const Font& font, std::size_t count,
                                   const std::function<StringView(std::size_t)>& text) {
  Twips widest = 0;
  for (std::size_t i = 0; i < count; ++i)
    widest = std::max(widest, MeasureText(font, text(i)).Width);
  return widest;
}

Twips HeadlessPlatform::TextBoxHeight(const Font& font) {
  return kLinePerPoint * font.Size + kInputBorder;
}

std::unique_ptr<ui::Peer> HeadlessPlatform::CreatePeer(ui::Form& form) {
  if (!form.Attached) return nullptr;
  return std::make_unique<AttachedPeer>(*this, form);
}

std::unique_ptr<ui::Peer> HeadlessPlatform::CreatePeer(ui::Component& component) {
  if (component.Kind() == ui::Kind::Timer)
    return std::make_unique<TimerPeer>(*this, static_cast<ui::Timer&>(component));
  return std::make_unique<ControlPeer>(static_cast<ui::Control&>(component));
}

std::optional<HeadlessPlatform::Script> HeadlessPlatform::TakeScript(const String& form) {
  if (!expected_.empty() && expected_.front().Form == form) {
    Script script = std::move(expected_.front().Run);
    expected_.pop_front();
    return script;
  }
  const auto always = Always.find(form);
  if (always == Always.end()) return std::nullopt;
  return always->second;
}

void HeadlessPlatform::RunModal(ui::Form& form) {
  const std::optional<Script> script = TakeScript(form.Name());
  if (!script) {
    complaints_.push_back("unexpected form: " + ToUtf8(form.Name()));
    return;
  }
  if (ui::Control* const first = form.FirstFocus()) first->SetFocus();
  if (!form.Visible()) return;  // closed by the handler of its first focus
  form.Paint();
  form.CameUp();
  if (form.Visible() && form.Beside) form.Beside->Settle();
  Operator person(*this, form);
  (*script)(person);
  if (form.Visible()) complaints_.push_back("form left open: " + ToUtf8(form.Name()));
}

ui::Color HeadlessPlatform::ResolveColor(ui::Color color) {
  // System colours differ from each other and from nothing else.
  return (color & 0x80000000u) != 0 ? 0x00010101u * (color & 0xFFu) : color;
}

void HeadlessPlatform::SendKeys(StringView keys) {
  ui::ParseKeystrokes(keys);
  SentKeys.emplace_back(keys);
}

void HeadlessPlatform::PressKey(const ui::Keystroke& stroke) {
  if (!InUse) throw std::logic_error("no form takes keys");
  Operator keys(*this, *InUse);
  if (stroke.Code != 0) {
    keys.Press(stroke.Code, stroke.Shift);
  } else {
    keys.Type(StringView(&stroke.Character, 1));
  }
}

std::string HeadlessPlatform::KeyboardLayout(StringView name) {
  const auto found = Layouts.find(String(name));
  return found == Layouts.end() ? std::string() : found->second;
}

int HeadlessPlatform::ShowMessageBox(StringView text, int style, StringView title) {
  Boxes.push_back({String(text), style, String(title)});
  return BoxAnswer;
}

}  // namespace krx::headless
