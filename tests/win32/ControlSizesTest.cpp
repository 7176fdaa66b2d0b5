#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "ControlsForm.h"
#include "Person.h"

namespace krx::test {

namespace {

int HeightOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place.bottom - place.top;
}

class ControlSizes : public testing::Test {
 protected:
  int Pixels(Twips twips) {
    return static_cast<int>(std::lround(twips / platform.TwipsPerPixel()));
  }
  // The least pixels that are as high as a finger.
  int Finger() {
    constexpr double kMillimetres = 9;
    constexpr double kPerInch = 25.4;
    return static_cast<int>(
        std::ceil(kMillimetres / kPerInch * 1440 / platform.TwipsPerPixel() - 1e-6));
  }
  void Look(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      person(somebody, somebody.AwaitForm(u"FControls"));
      somebody.Press(VK_ESCAPE);
    });
  }

  win32::Win32Platform platform;
  ControlsForm form{platform};
};

TEST_F(ControlSizes, RowsAreAsHighAsAFinger) {
  form.AddNames(12);
  Look([&](Person& person, HWND window) {
    const HWND combo = person.Control(window, u"cboName");
    const auto row = static_cast<int>(SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0));
    EXPECT_GE(row, Finger());
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    person.Press(VK_F4);
    person.Await([&] { return IsWindowVisible(info.hwndList) != FALSE; }, "the list");
    EXPECT_GE(HeightOf(info.hwndList), 8 * row);
    EXPECT_LT(HeightOf(info.hwndList), 9 * row);
    person.Press(VK_ESCAPE);
  });
}

TEST_F(ControlSizes, AListFilledWhileItIsShownOpensFarEnough) {
  form.Soon([&] { form.AddNames(5); });
  Look([&](Person& person, HWND window) {
    const HWND combo = person.Control(window, u"cboName");
    person.Await([&] { return SendMessageW(combo, CB_GETCOUNT, 0, 0) == 5; }, "the entries");
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    GetComboBoxInfo(combo, &info);
    person.Press(VK_F4);
    person.Await([&] { return IsWindowVisible(info.hwndList) != FALSE; }, "the list");
    EXPECT_GE(HeightOf(info.hwndList), 5 * Finger());
    person.Press(VK_ESCAPE);
  });
}

TEST_F(ControlSizes, FieldsAreAsHighAsTheirControls) {
  const Twips tall = 900;
  form.Soon([&] { form.cboName.Height = tall; });
  Look([&](Person& person, HWND window) {
    const HWND combo = person.Control(window, u"cboName");
    EXPECT_EQ(HeightOf(person.Control(window, u"txtPassword")), Pixels(form.txtPassword.Height()));
    person.Await([&] { return HeightOf(combo) == Pixels(tall); }, "the height");
  });
}

TEST_F(ControlSizes, ALowComboBoxIsAsHighAsATextBox) {
  form.cboName.Height = 0;
  EXPECT_EQ(form.cboName.Height(), platform.TextBoxHeight(form.cboName.Font()));
  Look([&](Person& person, HWND window) {
    EXPECT_EQ(HeightOf(person.Control(window, u"cboName")), Pixels(form.cboName.Height()));
  });
}

// Notes the heights that combo boxes of this thread have for as long as it lives.
class ComboHeights {
 public:
  ComboHeights() { noted_.clear(); }
  ~ComboHeights() { UnhookWindowsHookEx(hook_); }
  ComboHeights(const ComboHeights&) = delete;
  ComboHeights& operator=(const ComboHeights&) = delete;

  const std::set<int>& Noted() const { return noted_; }

 private:
  static LRESULT CALLBACK Note(int code, WPARAM w, LPARAM l) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(l);
    wchar_t name[16] = L"";
    if (code == HC_ACTION && sent.message == WM_SIZE && GetClassNameW(sent.hwnd, name, 16) != 0 &&
        lstrcmpiW(name, L"ComboBox") == 0)
      noted_.insert(HIWORD(sent.lParam));
    return CallNextHookEx(nullptr, code, w, l);
  }
  static inline std::set<int> noted_;
  const HHOOK hook_ = SetWindowsHookExW(WH_CALLWNDPROC, &Note, nullptr, GetCurrentThreadId());
};

TEST_F(ControlSizes, AComboBoxIsAsHighAsItIsToBeFromTheBeginning) {
  form.AddNames(5);
  const ComboHeights heights;
  Look([&](Person& person, HWND window) {
    EXPECT_EQ(HeightOf(person.Control(window, u"cboName")), Pixels(form.cboName.Height()));
  });
  EXPECT_EQ(heights.Noted(), std::set<int>{Pixels(form.cboName.Height())});
}

// As the system tells when the form is dragged to another monitor.
TEST_F(ControlSizes, FollowTheFormToAMonitorOfAnotherResolution) {
  form.AddNames(3);
  Look([&](Person& person, HWND window) {
    const HWND combo = person.Control(window, u"cboName");
    constexpr int kDpi = 240;
    const auto scaled = [](Twips twips) {
      return static_cast<int>(std::lround(twips * kDpi / 1440.0));
    };
    RECT place{};
    GetWindowRect(window, &place);
    SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(kDpi, kDpi), reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(HeightOf(combo), scaled(form.cboName.Height()));
    EXPECT_EQ(HeightOf(person.Control(window, u"txtPassword")), scaled(form.txtPassword.Height()));
    EXPECT_GE(SendMessageW(combo, CB_GETITEMHEIGHT, 0, 0), scaled(510));
  });
}

}  // namespace

}  // namespace krx::test
