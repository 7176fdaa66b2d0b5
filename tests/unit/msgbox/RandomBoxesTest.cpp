#include <algorithm>
#include <array>
#include <chrono>
#include <random>

#include "support/DialogTest.h"
#include "ui/Keyboard.h"

// Random operators on random boxes, next to a model that holds only what an operator knows: which
// buttons there are, where the focus is, how much time has passed.
namespace krx::test {

namespace {

constexpr int kSequences = 20000;
constexpr int kActsPerSequence = 8;

struct ModelKey {
  String Name;
  std::int32_t Code;  // 0: help
  char16_t Mark;      // access key, 0 without one
};

// What the operator can tell about a box. Keys are in tab order: the default key, then the others.
class Model {
 public:
  Model(std::vector<ModelKey> keys, std::int32_t result, std::int32_t seconds)
      : keys_(std::move(keys)),
        result_(result),
        milliseconds_left_(seconds * 1000LL),
        closes_itself_(seconds > 0) {}

  bool IsOpen() const { return open_; }
  std::int32_t Result() const { return result_; }
  int HelpCalls() const { return help_calls_; }
  String Focus() const { return keys_.empty() ? String() : keys_[focus_].Name; }
  const std::vector<ModelKey>& Keys() const { return keys_; }

  void Close() { open_ = false; }
  void Click(std::size_t at) {
    focus_ = at;
    if (keys_[at].Code == 0) {
      ++help_calls_;
      return;
    }
    result_ = keys_[at].Code;
    Close();
  }
  void PressFocused() {
    if (!keys_.empty()) Click(focus_);
  }
  void Walk(std::size_t steps) {
    if (!keys_.empty()) focus_ = (focus_ + steps) % keys_.size();
  }
  void WalkBack() { Walk(keys_.size() - (keys_.empty() ? 0 : 1)); }
  void Wait(long long milliseconds) {
    milliseconds_left_ -= milliseconds;
    if (closes_itself_ && milliseconds_left_ <= 0) Close();
  }
  // A mark of one key presses it, a shared one walks to the next key that bears it.
  void AccessKey(char16_t mark) {
    const auto bears = [mark](const ModelKey& key) { return key.Mark == mark; };
    const auto count = std::count_if(keys_.begin(), keys_.end(), bears);
    if (count == 0) return;
    std::size_t at = focus_;
    do {
      at = (at + 1) % keys_.size();
    } while (!bears(keys_[at]));
    focus_ = at;
    if (count == 1) Click(at);
  }

 private:
  std::vector<ModelKey> keys_;
  std::int32_t result_;
  long long milliseconds_left_;
  bool closes_itself_;
  std::size_t focus_ = 0;
  int help_calls_ = 0;
  bool open_ = true;
};

// Button sets with the texts that the test gives to the keys of the service.
const std::vector<std::vector<ModelKey>> kSets{
    {{u"keyButton(0)", 1, u'o'}},
    {{u"keyButton(0)", 1, u'o'}, {u"keyButton(1)", 2, u'c'}},
    {{u"keyButton(0)", 3, u'a'}, {u"keyButton(1)", 4, u'r'}, {u"keyButton(2)", 5, 0}},
    {{u"keyButton(0)", 6, u'n'}, {u"keyButton(1)", 7, u'n'}, {u"keyButton(2)", 2, u'c'}},
    {{u"keyButton(0)", 6, u'n'}, {u"keyButton(1)", 7, u'n'}},
    {{u"keyButton(0)", 4, u'r'}, {u"keyButton(1)", 2, 0}},
};

}  // namespace

class FMessageBoxModel : public MessageBoxTest {
 protected:
  FMessageBoxModel() {
    runtime.Texts = {{u"OK", u"&OK"},         {u"Cancel", u"&Cancel"}, {u"Cancel&", u"Back&"},
                     {u"Abort", u"&Abort"},   {u"Retry", u"&Retry"},   {u"Ignore", u"Ignore"},
                     {u"Yes", u"Yes (&now)"}, {u"No", u"&No"},         {u"Help", u"&Help && more"}};
  }

  int Random(int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); }

  // The answer keys of a call, left to right.
  std::vector<ModelKey> AnswersOf(const BoxCall& call) {
    const auto set = static_cast<std::size_t>(call.Style & 15);
    std::vector<ModelKey> answers;
    if (set < kSets.size()) answers = kSets[set];
    const std::array free{&call.Button1, &call.Button2, &call.Button3};
    for (std::size_t i = 0; i < free.size(); ++i) {
      if (free[i]->empty()) continue;
      const auto number = static_cast<std::int32_t>(i);
      const ModelKey key{u"keyButton(" + ToString(number) + u")", 11 + number, u'f'};
      const auto taken = std::find_if(answers.begin(), answers.end(),
                                      [&](const ModelKey& k) { return k.Name == key.Name; });
      if (taken == answers.end()) {
        answers.push_back(key);
      } else if (set == 0) {
        *taken = key;
      }
    }
    std::sort(answers.begin(), answers.end(),
              [](const ModelKey& a, const ModelKey& b) { return a.Name < b.Name; });
    return answers;
  }

  BoxCall RandomCall() {
    const auto button = [this] { return Random(3) == 0 ? String(u"&free") : String(); };
    return {.Style = Random(8) + 16 * Random(8) + kDefaultButton2 * Random(4) + 16384 * Random(2),
            .HelpFile = Random(2) == 0 ? u"h" : u"",
            .Button1 = button(),
            .Button2 = button(),
            .Button3 = button(),
            .AutoActivation = Random(3) == 0 ? 1 + Random(3) : 0};
  }

  // One act on both; what must agree is checked behind it.
  void Act(Operator& op, Model& model) {
    const std::size_t keys = model.Keys().size();
    switch (Random(9)) {
      case 0:
        return op.Press(ui::kKeyTab), model.Walk(1);
      case 1:
        return op.Press(ui::kKeyTab, ui::kShift), model.WalkBack();
      case 2:
        return op.Press(Random(2) ? ui::kKeyRight : ui::kKeyDown), model.Walk(1);
      case 3:
        return op.Press(Random(2) ? ui::kKeyLeft : ui::kKeyUp), model.WalkBack();
      case 4: {
        const int wait = Random(1200);
        return op.Wait(std::chrono::milliseconds(wait)), model.Wait(wait);
      }
      case 5: {
        const char16_t mark = u"ocarnfhx&"[Random(9)];
        return op.AccessKey(mark, Random(2) == 0), model.AccessKey(mark);
      }
      case 6:
        return Drag(op);
      default:
        return keys == 0 || Random(3) != 0 ? PressOrClose(op, model) : ClickAny(op, model);
    }
  }

  void PressOrClose(Operator& op, Model& model) {
    switch (Random(4)) {
      case 0:
        return op.Press(ui::kKeyEscape), model.Close();
      case 1:
        return op.Click(u"keyClose"), model.Close();
      default:
        return op.Press(Random(2) ? ui::kKeyEnter : ui::kKeySpace), model.PressFocused();
    }
  }

  void ClickAny(Operator& op, Model& model) {
    const auto at = static_cast<std::size_t>(Random(static_cast<int>(model.Keys().size())));
    const String name = model.Keys()[at].Name;
    op.Click(name);
    model.Click(at);
  }

  void Drag(Operator& op) {
    const int button = 1 + Random(2);
    const auto x = static_cast<Twips>(Random(300));
    const auto y = static_cast<Twips>(Random(300));
    const Twips left = op.Form().Left();
    const Twips top = op.Form().Top();
    op.MouseDown(u"idxCaption", button, 10, 20);
    op.MouseMove(u"idxCaption", button, x, y);
    const bool drags = button == ui::kLeftButton;
    EXPECT_EQ(op.Form().Left(), drags ? left + x - 10 : left);
    EXPECT_EQ(op.Form().Top(), drags ? top + y - 20 : top);
  }

  void Operate(Operator& op, Model& model) {
    EXPECT_EQ(op.Focus(), model.Focus());
    for (int act = 0; act < kActsPerSequence && model.IsOpen() && !HasFailure(); ++act) {
      Act(op, model);
      EXPECT_EQ(op.Form().Visible(), model.IsOpen());
      if (model.IsOpen()) {
        EXPECT_EQ(op.Focus(), model.Focus());
      }
      EXPECT_EQ(platform.SentKeys.size(), static_cast<std::size_t>(model.HelpCalls()));
    }
    if (!model.IsOpen()) return;
    op.Click(u"keyClose");
    model.Close();
  }

  void Sequence(const BoxCall& call) {
    std::vector<ModelKey> keys = AnswersOf(call);
    const auto position = (call.Style & 768) / 256;
    const String name = position < 3 ? u"keyButton(" + ToString(position) + u")" : u"keyHelp";
    const auto is_default = [&](const ModelKey& key) { return key.Name == name; };
    const auto answer = std::find_if(keys.begin(), keys.end(), is_default);
    if (!keys.empty() && answer == keys.end()) {
      EXPECT_EQ(StatusOf([&] { Open(call); }), kTypeMismatch);
      return;
    }
    const std::int32_t result = keys.empty() ? 0 : answer->Code;
    if (!call.HelpFile.empty()) keys.push_back({u"keyHelp", 0, u'h'});
    std::stable_partition(keys.begin(), keys.end(), is_default);
    Model model(keys, result, call.AutoActivation);
    platform.SentKeys.clear();
    const std::int32_t got = Show(call, [&](Operator& op) { Operate(op, model); });
    EXPECT_EQ(got, model.Result());
  }

  std::mt19937 random{20240229};
};

TEST_F(FMessageBoxModel, RandomOperatorsFindEveryBoxAsTheModelHasIt) {
  for (int i = 0; i < kSequences; ++i) {
    const BoxCall call = RandomCall();
    SCOPED_TRACE("sequence " + std::to_string(i) + ", style " + std::to_string(call.Style));
    Sequence(call);
    if (HasFailure()) return;
  }
}

}  // namespace krx::test
