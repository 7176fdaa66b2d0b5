#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "Desk.h"
#include "Person.h"
#include "ScreenPixels.h"
#include "TestForm.h"
#include "driver/List.h"
#include "platform/Imports.h"

// Measured on what the screen shows.
namespace krx::test {

namespace {

// Every kind of control, enabled and disabled; Esc closes it. No key does anything.
class ThemedForm : public FormWithCross {
 public:
  explicit ThemedForm(ui::Platform& platform) : FormWithCross(platform, u"FThemed") {
    Width = 7200;
    Height = 5400;
    idxCaption.Place({0, 0, 7200, 360});
    idxCaption.Text = u"Caption";
    idxCaption.BackColor = ui::kActiveCaption;
    idxCaption.ForeColor = ui::kActiveCaptionText;
    idxCaption.TabIndex = 20;
    MakeCross(keyClose, {6840, 60, 240, 240});
    keyClose.Click = [this] { Hide(); };
    PlaceLabel(lblName, 480);
    PlaceLabel(lblOff, 840);
    lblOff.Enabled = false;
    txtName.Place({1500, 480, 1500, 330});
    txtName.Text = u"WWWW";
    txtOff.Place({1500, 900, 1500, 330});
    txtOff.Text = u"WWWW";
    txtOff.Enabled = false;
    FillCombo(cboName, 480);
    FillCombo(cboOff, 900);
    cboOff.Enabled = false;
    FillList(grdRows, {120, 1500, 2200, 2400});
    FillList(lvwRows, {2500, 1500, 2200, 2400});
    FillList(grdOff, {4900, 1500, 2200, 2400});
    grdOff.Enabled = false;
    PlaceKey(keyOne, 120);
    PlaceKey(keyTwo, 2500);
    PlaceKey(keyOff, 4900);
    keyOff.Enabled = false;
  }

  ui::KRXIndex idxCaption{*this, u"idxCaption"};
  ui::KRXKey keyClose{*this, u"keyClose"};
  ui::Label lblName{*this, u"lblName"};
  ui::Label lblOff{*this, u"lblOff"};
  ui::TextBox txtName{*this, u"txtName"};
  ui::TextBox txtOff{*this, u"txtOff"};
  ui::KRXComboBox cboName{*this, u"cboName"};
  ui::KRXComboBox cboOff{*this, u"cboOff"};
  ui::KRXGrid grdRows{*this, u"grdRows"};
  ui::ListView lvwRows{*this, u"lvwRows"};
  ui::KRXGrid grdOff{*this, u"grdOff"};
  ui::KRXKey keyOne{*this, u"keyOne"};
  ui::KRXKey keyTwo{*this, u"keyTwo"};
  ui::KRXKey keyOff{*this, u"keyOff"};

 private:
  static void PlaceLabel(ui::Label& label, Twips top) {
    label.Caption = u"WWWW";
    label.Place({120, top, 1200, 300});
  }
  static void FillCombo(ui::ComboBox& combo, Twips top) {
    combo.AddItem(u"WWWW", ui::ComboBox::kAtEnd);
    combo.Select(0);
    combo.Place({3300, top, 1800, 360});
  }
  static void FillList(ui::StoredRows& list, const Rect& place) {
    list.Place(place);
    list.Columns = {{u"WWWW", 0}};
    list.SetRows({{u"WWWW"}, {u"WWWW"}, {u"WWWW"}});
    list.SelectRow(1);
  }
  static void PlaceKey(ui::KRXKey& key, Twips left) {
    key.Place({left, 4500, 1500, 600});
    key.Caption = u"WWWW";
  }
};

// A scheme of high contrast for as long as it lives.
class BlackScheme {
 public:
  BlackScheme() {
    for (std::size_t i = 0; i < kIndexes.size(); ++i)
      before_[i] = GetSysColor(kIndexes[i]);
    SetSysColors(static_cast<int>(kIndexes.size()), kIndexes.data(), kColors.data());
  }
  ~BlackScheme() {
    SetSysColors(static_cast<int>(kIndexes.size()), kIndexes.data(), before_.data());
  }
  BlackScheme(const BlackScheme&) = delete;
  BlackScheme& operator=(const BlackScheme&) = delete;

 private:
  static constexpr COLORREF kBlack = RGB(0, 0, 0);
  static constexpr COLORREF kWhite = RGB(255, 255, 255);
  static constexpr std::array kIndexes{COLOR_ACTIVECAPTION, COLOR_WINDOW,    COLOR_WINDOWTEXT,
                                       COLOR_CAPTIONTEXT,   COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT,
                                       COLOR_BTNFACE,       COLOR_GRAYTEXT,  COLOR_BTNTEXT};
  static constexpr std::array kColors{
      RGB(128, 0, 128), kBlack, RGB(255, 255, 0), kWhite, RGB(26, 235, 255),
      kBlack,           kBlack, RGB(63, 242, 63), kWhite};
  std::array<COLORREF, kIndexes.size()> before_{};
};

// The system asks for high contrast as long as this lives. Not every system keeps what it is told
// of that, so the question itself is answered.
class ContrastAskedFor {
 public:
  ContrastAskedFor() { Answer(&AskedFor); }
  ~ContrastAskedFor() { Answer(kSystem); }
  ContrastAskedFor(const ContrastAskedFor&) = delete;
  ContrastAskedFor& operator=(const ContrastAskedFor&) = delete;

 private:
  using Question = BOOL(WINAPI*)(UINT, UINT, void*, UINT);
  // Not by its name, which leads to the place that is redirected.
  static inline const Question kSystem = reinterpret_cast<Question>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"user32.dll"), "SystemParametersInfoW")));

  static void Answer(Question question) {
    RedirectImport(GetModuleHandleW(nullptr), "SystemParametersInfoW",
                   reinterpret_cast<void*>(question));
  }
  static BOOL WINAPI AskedFor(UINT what, UINT size, void* data, UINT flags) {
    if (what != SPI_GETHIGHCONTRAST) return kSystem(what, size, data, flags);
    static_cast<HIGHCONTRASTW*>(data)->dwFlags = HCF_HIGHCONTRASTON;
    return TRUE;
  }
};

// The colour in a place that is farthest from its ground: that of a text, whose edges are paler.
double TextContrast(const RECT& place) {
  const std::vector<COLORREF> pixels = ScreenPixels(place);
  const COLORREF ground = GroundOf(pixels);
  double most = 1;
  for (const COLORREF pixel : pixels)
    most = std::max(most, ui::Contrast(pixel, ground));
  return most;
}

RECT Inside(RECT place, int margin) {
  InflateRect(&place, -margin, -margin);
  return place;
}

// Of the middle of a window's left edge, so many pixels inside; outside where it is less than 0.
COLORREF EdgeOf(HWND window, int x) {
  const RECT place = PlaceOf(window);
  const int middle = (place.top + place.bottom) / 2;
  return GroundOf(ScreenPixels({place.left + x, middle - 3, place.left + x + 1, middle + 3}));
}

class Themes : public testing::TestWithParam<Theme> {
 protected:
  Themes() {
    if (GetParam() == Theme::HighContrast) scheme_.emplace();
    form.Panel.Theme = GetParam();
    colors = ColorsOf(GetParam());
  }
  void Look(const std::function<void(Person&, HWND)>& person) {
    ShowWith(form, [&](Person& somebody) {
      somebody.PointAway();
      person(somebody, somebody.AwaitForm(u"FThemed"));
      somebody.Press(VK_ESCAPE);
    });
  }
  RECT PlaceOnScreen(HWND window, const ui::Control& control) {
    const auto pixels = [&](Twips length) {
      return static_cast<int>(std::lround(length / platform.TwipsPerPixel()));
    };
    POINT at{pixels(control.Left()), pixels(control.Top())};
    ClientToScreen(window, &at);
    return {at.x, at.y, at.x + pixels(control.Width()), at.y + pixels(control.Height())};
  }
  static COLORREF FaceOf(HWND key) { return GroundOf(ScreenPixels(Inside(PlaceOf(key), 6))); }

 private:
  std::optional<BlackScheme> scheme_;

 protected:
  win32::Win32Platform platform;
  ThemedForm form{platform};
  ui::Palette colors{};
};

TEST_P(Themes, EveryTextIsRead) {
  Look([&](Person& person, HWND window) {
    const auto read = [&](const RECT& place, const std::string& what) {
      person.Await([&] { return TextContrast(place) >= 4.5; }, what);
    };
    for (const ui::Control* const control :
         std::initializer_list<const ui::Control*>{&form.idxCaption, &form.lblName, &form.lblOff})
      read(PlaceOnScreen(window, *control), ToUtf8(control->Name()));
    for (const ui::Control* const control : std::initializer_list<const ui::Control*>{
             &form.txtName, &form.txtOff, &form.cboName, &form.cboOff, &form.keyOne, &form.keyOff,
             &form.keyClose})
      read(Inside(PlaceOf(person.Control(window, control->Name())), 4), ToUtf8(control->Name()));
    for (const ui::RowList* const list :
         std::initializer_list<const ui::RowList*>{&form.grdRows, &form.lvwRows, &form.grdOff}) {
      const drive::List rows{drive::Window(person.Control(window, list->Name()))};
      for (const int row : {0, 1})
        read(Inside(rows.RowBounds(row), 3), ToUtf8(list->Name()) + " " + std::to_string(row));
    }
  });
}

TEST_P(Themes, TheKeyboardIsSeenWhereverItIs) {
  Look([&](Person& person, HWND window) {
    for (const ui::Control* const control : std::initializer_list<const ui::Control*>{
             &form.txtName, &form.cboName, &form.grdRows, &form.lvwRows, &form.keyOne}) {
      const HWND here = person.Control(window, control->Name());
      while (FocusOf(window) != here) {
        const HWND before = FocusOf(window);
        person.Press(VK_TAB);
        person.Await([&] { return FocusOf(window) != before; }, "the next control");
      }
      COLORREF seen = 0;
      const auto focused = [&] { return (seen = EdgeOf(here, 0)) == colors.Focus; };
      ASSERT_TRUE(Within(focused)) << ToUtf8(control->Name()) << " with an edge of " << std::hex
                                   << seen << ", the focus on " << ToUtf8(NameOf(FocusOf(window)))
                                   << ", in front " << ToUtf8(NameOf(GetForegroundWindow()));
      EXPECT_EQ(EdgeOf(here, 1), colors.Focus) << ToUtf8(control->Name());
      EXPECT_GE(ui::Contrast(EdgeOf(here, 0), EdgeOf(here, -2)), 3) << ToUtf8(control->Name());
      EXPECT_GE(ui::Contrast(EdgeOf(here, 0), EdgeOf(here, 2)), 3) << ToUtf8(control->Name());
    }
  });
}

TEST_P(Themes, WhatIsSelectedInAFieldIsRead) {
  form.txtName.TabIndex = 0;
  Look([&](Person& person, HWND window) {
    const HWND field = person.Control(window, u"txtName");
    person.AwaitFocus(field);
    SendMessageW(field, EM_SETSEL, 0, -1);
    RECT text = PlaceOf(field);
    InflateRect(&text, -8, -(text.bottom - text.top) / 2 + 3);  // the middle of the letters
    text.right = text.left + 24;                                // less than four wide ones
    const auto shows = [](const RECT& place, COLORREF color) {
      const auto pixels = ScreenPixels(place);
      return std::find(pixels.begin(), pixels.end(), color) != pixels.end();
    };
    person.Await([&] { return shows(text, colors.Selection) && shows(text, colors.SelectionText); },
                 "the selection");
    EXPECT_EQ(GroundOf(ScreenPixels(text)), colors.Selection);
    EXPECT_GE(TextContrast(text), 4.5);
    // What is not selected looks as before.
    SendMessageW(field, EM_SETSEL, 0, 0);
    person.Await([&] { return GroundOf(ScreenPixels(text)) == colors.Field; }, "no selection");
  });
}

TEST_P(Themes, AKeyShowsItsState) {
  form.DefaultKey = &form.keyOne;
  Look([&](Person& person, HWND window) {
    const HWND one = person.Control(window, u"keyOne");
    const HWND two = person.Control(window, u"keyTwo");
    const auto shows = [&](HWND key, COLORREF color, const char* what) {
      person.Await([&] { return FaceOf(key) == color; }, what);
      EXPECT_GE(TextContrast(Inside(PlaceOf(key), 6)), 4.5) << what;
    };
    shows(one, colors.Accent, "the default one");
    shows(two, colors.Key, "a normal one");
    shows(person.Control(window, u"keyOff"), colors.DisabledKey, "a disabled one");
    const RECT place = PlaceOf(two);
    person.MoveTo({(place.left + place.right) / 2, place.top + 10});
    shows(two, colors.KeyHot, "a hot one");
    person.PointAway();
    shows(two, colors.Key, "a normal one again");
    while (FocusOf(window) != two) {
      const HWND before = FocusOf(window);
      person.Press(VK_TAB);
      person.Await([&] { return FocusOf(window) != before; }, "the next control");
    }
    shows(two, colors.Accent, "the one with the keyboard");
    shows(one, colors.Key, "no longer the default one");
    person.Down(VK_SPACE);
    shows(two, colors.AccentPressed, "a pressed one");
    person.Up(VK_SPACE);
    shows(two, colors.Accent, "released");
  });
}

// Whatever the plant has chosen; also while the form is shown.
class ContrastOfTheSystem : public testing::TestWithParam<Theme> {
 protected:
  void Look(const std::function<void(Person&, HWND)>& person) {
    win32::Win32Platform platform;
    ThemedForm form(platform);
    form.Panel.Theme = GetParam();
    ShowWith(form, [&](Person& somebody) {
      person(somebody, somebody.AwaitForm(u"FThemed"));
      somebody.Press(VK_ESCAPE);
    });
  }
  // At the lower edge, where nothing stands on the form.
  static void AwaitLook(Person& person, HWND window, Theme theme) {
    const COLORREF face = ColorsOf(theme).Face;
    const RECT form = PlaceOf(window);
    const RECT edge{form.left + 4, form.bottom - 9, form.right - 4, form.bottom - 4};
    person.Await([&] { return GroundOf(ScreenPixels(edge)) == face; }, ToUtf8(NameOf(theme)));
  }

 private:
  const BlackScheme scheme_;
};

TEST_P(ContrastOfTheSystem, WinsOverTheTheme) {
  ASSERT_NE(ColorsOf(GetParam()).Face, ColorsOf(Theme::HighContrast).Face);
  const ContrastAskedFor contrast;
  Look([](Person& person, HWND window) { AwaitLook(person, window, Theme::HighContrast); });
}

TEST_P(ContrastOfTheSystem, ComesAndGoesWhileTheFormIsShown) {
  Look([](Person& person, HWND window) {
    AwaitLook(person, window, GetParam());
    {
      const ContrastAskedFor contrast;
      SendMessageW(window, WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
      AwaitLook(person, window, Theme::HighContrast);
    }
    SendMessageW(window, WM_SETTINGCHANGE, SPI_SETHIGHCONTRAST, 0);
    AwaitLook(person, window, GetParam());
  });
}

INSTANTIATE_TEST_SUITE_P(All, ContrastOfTheSystem,
                         testing::Values(Theme::Light, Theme::Dark, Theme::Grey),
                         [](const auto& theme) { return ToUtf8(NameOf(theme.param)); });

INSTANTIATE_TEST_SUITE_P(All, Themes,
                         testing::Values(Theme::Light, Theme::Dark, Theme::Grey,
                                         Theme::HighContrast),
                         [](const auto& theme) {
                           std::string name = ToUtf8(NameOf(theme.param));
                           std::erase(name, '-');
                           return name;
                         });

}  // namespace

}  // namespace krx::test
