#include <array>
#include <vector>

#include "support/DialogTest.h"

// Every combination of button set 0 to 7, icon bits, default button and help flag, each with and
// without a help file, against what the style bits mean.
namespace krx::test {

namespace {

struct Answer {
  String Caption;
  std::int32_t Code;
};

const std::array<std::vector<Answer>, 8> kAnswers{{
    {{u"OK", 1}},
    {{u"OK", 1}, {u"Cancel", 2}},
    {{u"Abort", 3}, {u"Retry", 4}, {u"Ignore", 5}},
    {{u"Yes", 6}, {u"No", 7}, {u"Cancel", 2}},
    {{u"Yes", 6}, {u"No", 7}},
    {{u"Retry", 4}, {u"Cancel&", 2}},
    {},
    {},
}};

// By icon bits / 16; 0 is no icon.
constexpr std::array<int, 8> kIcons{
    0, ui::kStopIcon, ui::kQuestionIcon, ui::kExclamationIcon, ui::kInformationIcon, 0, 0, 0};

constexpr std::int32_t kHelpFlag = 16384;

struct Combination {
  std::size_t Set;
  std::size_t Icon;
  std::size_t Default;  // 0 to 2 the answers, 3 help
  bool HelpFlag;
  bool HelpFile;

  std::int32_t Style() const {
    return static_cast<std::int32_t>(Set + 16 * Icon + kDefaultButton2 * Default) +
           (HelpFlag ? kHelpFlag : 0);
  }
};

std::vector<Combination> All(bool help_file) {
  std::vector<Combination> all;
  for (std::size_t set = 0; set < 8; ++set)
    for (std::size_t icon = 0; icon < 8; ++icon)
      for (std::size_t position = 0; position < 4; ++position)
        for (const bool flag : {false, true})
          all.push_back({set, icon, position, flag, help_file});
  return all;
}

String NameOfKey(std::size_t index) {
  return u"keyButton(" + ToString(static_cast<std::int32_t>(index)) + u")";
}

}  // namespace

class FMessageBoxCombinations : public MessageBoxTest {
 protected:
  BoxCall CallOf(const Combination& c) {
    return {.Style = c.Style(), .HelpFile = c.HelpFile ? u"h.chm" : u""};
  }

  void CheckShown(const Combination& c, Operator& op) {
    const auto& answers = kAnswers[c.Set];
    for (std::size_t i = 0; i < 3; ++i) {
      const auto& key = op.Get<ui::KRXKey>(NameOfKey(i));
      ASSERT_EQ(key.Visible(), i < answers.size());
      ASSERT_EQ(key.Caption(), i < answers.size() ? answers[i].Caption : u"");
    }
    ASSERT_EQ(op.Get(u"keyHelp").Visible(), c.HelpFile);
    const auto& icon = op.Get<ui::PictureBox>(u"picIcon");
    ASSERT_EQ(icon.Visible(), kIcons[c.Icon] != 0);
    ASSERT_EQ(icon.Picture().value_or(ui::PictureBox::Drawing{}).Icon.Id, kIcons[c.Icon]);
    const String alone = c.HelpFile ? u"keyHelp" : u"";
    ASSERT_EQ(op.Focus(), answers.empty() ? alone : NameOfKey(c.Default));
  }

  void CheckResults(const Combination& c) {
    const auto& answers = kAnswers[c.Set];
    const std::int32_t on_close = answers.empty() ? 0 : answers[c.Default].Code;
    EXPECT_EQ(Show(CallOf(c),
                   [&](Operator& op) {
                     CheckShown(c, op);
                     op.Click(u"keyClose");
                   }),
              on_close);
    for (std::size_t i = 0; i < answers.size(); ++i) {
      EXPECT_EQ(Show(CallOf(c), [&](Operator& op) { op.Click(NameOfKey(i)); }), answers[i].Code);
    }
  }

  void CheckAll(bool help_file) {
    const std::vector<Combination> all = All(help_file);
    ASSERT_EQ(all.size(), 512u);
    for (const Combination& c : all) {
      SCOPED_TRACE("style " + std::to_string(c.Style()));
      const std::size_t answers = kAnswers[c.Set].size();
      if (answers > 0 && c.Default >= answers) {
        EXPECT_EQ(StatusOf([&] { Open(CallOf(c)); }), kTypeMismatch);
      } else {
        CheckResults(c);
      }
      if (HasFailure()) return;
    }
  }
};

TEST_F(FMessageBoxCombinations, All512WithoutAHelpFile) {
  CheckAll(false);
}

TEST_F(FMessageBoxCombinations, All512WithAHelpFile) {
  CheckAll(true);
}

}  // namespace krx::test
