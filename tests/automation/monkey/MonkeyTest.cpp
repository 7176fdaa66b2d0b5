// Lets a monkey loose on every dialog: whatever it has done, Cancel ends the dialog, and soon.

#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string>

#include "FolderTree.h"
#include "client/Methods.h"
#include "driver/Client.h"
#include "monkey/Monkey.h"
#include "platform/Wish.h"

namespace krx::drive {
namespace {

constexpr int kActions = 400;
constexpr int kBetweenCancels = 100;
constexpr Milliseconds kStroke{10};     // between two actions: a hundred in a second
constexpr Milliseconds kClicking{150};  // between two clicks on Cancel
constexpr unsigned kSeed = 20261121;

// Longer runs say in the environment how many actions, from which seed, and how many milliseconds
// Cancel may take; without that only standstill fails, for a busy machine may take its time.
Milliseconds Limit() {
  return Milliseconds(test::Wish("KRX_MONKEY_LIMIT", static_cast<long>(kPatience.count())));
}

std::wstring KindOf(const Window& window) {
  std::array<wchar_t, 32> kind{};
  GetClassNameW(window.Handle(), kind.data(), static_cast<int>(kind.size()));
  return kind.data();
}

std::string Described(const Window& window) {
  const RECT at = window.Bounds();
  std::ostringstream line;
  line << Narrow(window.Name()) << ' ' << Narrow(KindOf(window)) << " '" << Narrow(window.Text())
       << "' at " << at.left << ',' << at.top << (window.Enabled() ? "" : " disabled");
  return line.str();
}

bool IsDialog(const Window& window) {
  return !window.Name().empty() || KindOf(window) == L"#32770";  // a message box of the system
}

std::vector<Window> Dialogs(DWORD process) {
  std::vector<Window> dialogs = WindowsOf(process);
  std::erase_if(dialogs, [](const Window& window) { return !IsDialog(window); });
  return dialogs;
}

// A menu or a list that hangs open above the middle of the control; Esc closes it first.
bool Covered(const Window& control, const Window& dialog) {
  return GetAncestor(WindowFromPoint(control.Centre()), GA_ROOT) != dialog.Handle();
}

// The system's message box may lie behind whatever the monkey has clicked on, where no key reaches
// it.
void GiveUpBox(const Window& box) {
  const auto parts = box.Descendants();
  const auto button = std::find_if(parts.begin(), parts.end(),
                                   [](const Window& part) { return KindOf(part) == L"Button"; });
  if (button == parts.end() || Covered(*button, box)) return PressKey(VK_RETURN);
  button->Click();
}

// As an operator does: nothing but the close key where there is no Cancel.
void GiveUp(const Window& dialog) {
  if (dialog.Name().empty()) return GiveUpBox(dialog);
  for (const wchar_t* const name : {L"keyCancel", L"keyClose"}) {
    const auto key = dialog.Find(name);
    if (!key || !key->Visible() || !key->Enabled()) continue;
    return Covered(*key, dialog) ? PressKey(VK_ESCAPE) : key->Click();
  }
}

class MonkeyTest : public testing::TestWithParam<client::Method> {
 protected:
  void SetUp() override {
    // This also brings the desktop up, which a client would lend its output to for good.
    ASSERT_TRUE(Forms(L"").empty()) << "a dialog of an earlier test is open";
    for (const char16_t* const folder : {u"Alpha", u"Logs", u"Logs\\Old", u"Logs\\Old\\Older"})
      tree_.AddFolder(folder);
    tree_.AddFolders(u"Alpha", 30);
    tree_.AddFiles(u"Logs", 40);
    const std::wstring folder = tree_.WidePath(L"Logs");
    folder_ = Narrow(folder);
    client_.emplace((ProgramFolder() / "monkey_client.exe").wstring() + L" " +
                    Widen(GetParam().Name) + L" \"" + folder + L'"');
    client_->WaitForLine("ready");
  }

  DWORD Process() const { return client_->ProcessId(); }

  bool AwaitDialog() {
    bool open = false;
    Within(Limit(), [&] { return (open = !Dialogs(Process()).empty()) || !client_->Running(); });
    return open;
  }

  // Gives up whatever is on the screen, the innermost dialog first; false when one stays.
  bool EndDialogs() {
    const auto open = Dialogs(Process());
    const auto gone = [&] {
      return std::none_of(open.begin(), open.end(), [](const Window& w) { return w.Visible(); });
    };
    while (!gone()) {
      const auto dialogs = Dialogs(Process());
      const auto innermost =
          std::find_if(dialogs.begin(), dialogs.end(), [](const Window& w) { return w.Enabled(); });
      if (innermost != dialogs.end() && !End(*innermost)) return false;
    }
    return true;
  }

  std::string Story(int action) {
    std::ostringstream story;
    story << GetParam().Name << " after " << action << " actions:";
    for (const Window& window : WindowsOf(Process()))
      story << "\n" << Described(window);
    if (!client_->Running())
      story << " the client has ended with " << std::hex << client_->Finish();
    for (const std::string& line : client_->Lines())
      story << '\n' << line;
    return story.str();
  }

  // Whoever is confined chooses nothing outside; touch confines nobody. Returns how often he chose.
  int ExpectInside() {
    constexpr std::string_view kConfined = "confined: ";
    int chosen = 0;
    for (const std::string& line : client_->Lines()) {
      if (!line.starts_with(kConfined) || GetParam().Name.ends_with("Touch")) continue;
      ++chosen;
      EXPECT_NE(line.find(folder_, kConfined.size()), std::string::npos) << line;
    }
    return chosen;
  }

  Milliseconds slowest_{0};

 private:
  bool End(const Window& dialog) {
    using Clock = std::chrono::steady_clock;
    const auto begin = Clock::now();
    const auto taken = [&] {
      return std::chrono::duration_cast<Milliseconds>(Clock::now() - begin);
    };
    const auto gone = [&] { return !dialog.Visible() || !dialog.Enabled(); };
    while (!gone()) {
      if (taken() > Limit() || !client_->Running()) return false;
      GiveUp(dialog);
      Within(kClicking, gone);
    }
    slowest_ = std::max(slowest_, taken());
    return true;
  }

  test::FolderTree tree_;
  std::string folder_;  // that confines
  std::optional<Client> client_;
};

TEST_P(MonkeyTest, WhateverWasDoneCancelEndsTheDialog) {
  Monkey monkey(static_cast<unsigned>(test::Wish("KRX_MONKEY_SEED", kSeed)));
  const long actions = test::Wish("KRX_MONKEY_ACTIONS", kActions);
  int cancels = 0;
  for (int action = 1; action <= actions; ++action) {
    monkey.Act(Process());
    std::this_thread::sleep_for(kStroke);
    if (action % kBetweenCancels != 0) continue;
    monkey.LetGo();
    ASSERT_TRUE(AwaitDialog()) << Story(action);
    ASSERT_TRUE(EndDialogs()) << Story(action);
    ++cancels;
  }
  EXPECT_EQ(Story(0).find("failed"), std::string::npos) << Story(0);
  EXPECT_GT(cancels, 0);
  std::printf("%s: %ld actions, %d times cancelled, at most %lld ms, %d paths chosen inside\n",
              GetParam().Name.c_str(), actions, cancels, static_cast<long long>(slowest_.count()),
              ExpectInside());
}

INSTANTIATE_TEST_SUITE_P(Dialogs, MonkeyTest, testing::ValuesIn(client::Methods()),
                         [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::drive
