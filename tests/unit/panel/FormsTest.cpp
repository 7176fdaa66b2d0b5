// The keyboard beside every form of the system that has text fields, with the runtime's own texts
// and fonts, on every panel: what the operator needs stays in sight.
#include <functional>

#include "Layouts.h"
#include "panel/Placement.h"
#include "runtime/core/FontClasses.h"
#include "runtime/core/TextTable.h"
#include "users/UsersTest.h"

namespace krx::test {

namespace {

struct PanelScreen {
  int Width, Height, Dpi;  // pixels
};
constexpr PanelScreen kPanels[] = {{800, 480, 96},   {1024, 600, 96},  {1280, 800, 96},
                                   {1920, 1080, 96}, {1366, 768, 120}, {1280, 800, 144},
                                   {800, 480, 192},  {1280, 800, 192}, {1920, 1080, 192}};

struct FormCase {
  String Name;
  // Of its text fields on all panels: so many stand so far from the buttons that no keyboard with
  // keys of 7 mm has room beside both. There the field comes first.
  int WithoutRoom;
  std::function<void(service::KRXDialog&)> Open;
};

void PrintTo(const FormCase& form, std::ostream* out) {
  *out << ToUtf8(form.Name);
}

Twips Bottom(const Rect& rect) {
  return rect.Top + rect.Height;
}

Rect Around(const Rect& one, const Rect& other) {
  const Twips top = std::min(one.Top, other.Top);
  return {one.Left, top, one.Width, std::max(Bottom(one), Bottom(other)) - top};
}

// Downwards alone: the keyboard is as wide as most screens.
bool Meet(const Rect& one, const Rect& other) {
  return one.Top < Bottom(other) && other.Top < Bottom(one);
}

}  // namespace

class KeyboardBesideForms : public UsersTest, public ::testing::WithParamInterface<FormCase> {
 protected:
  KeyboardBesideForms() {
    for (const char* const name : {"de", "en", "symbols", "accents"})
      platform.Layouts[String(name, name + std::char_traits<char>::length(name))] =
          LayoutText(name);
    for (const runtime::FontClass& one : runtime::FontClasses())
      runtime.Fonts[String(one.Name)] = runtime::FontOf(one, u"Tahoma");
    runtime.Panel.Keyboard = KeyboardUse::Always;
    Users().Current = {u"anna", u"Admin", true};
    Users().Records[u"anna"] = {};
    Users().Names = {u"anna"};
    Users().AdministrationMode = 1;
    platform.Machine.AddFolder(u"C:\\Data");
  }

  void UseTexts(const char* language) {
    runtime::TextTable table;
    table.Add(u"texts", ReadFile(std::string(KRX_CHECKOUT "/runtime/texts/") + language + ".txt"));
    for (const auto& [name, text] : table.Entries())
      runtime.Texts[name.second] = text;
  }
  void UsePanel(const PanelScreen& screen, bool for_fingers) {
    platform.PixelSize = 1440.0f / static_cast<Twips>(screen.Dpi);
    platform.Area = {0, 0, static_cast<Twips>(screen.Width) * platform.PixelSize,
                     static_cast<Twips>(screen.Height) * platform.PixelSize};
    service::SharedSettings& settings = dialog->Settings();
    const String kind = for_fingers ? u"KRPanel" : u"KRDialogs";
    settings.FontClassCaption = kind + u"Caption";
    settings.FontClassText = kind + u"Text";
    settings.FontClassButton = kind + u"Button";
    settings.FontClassInput = kind + u"Input";
    settings.ButtonMinHeight = settings.CaptionMinHeight = for_fingers ? 600.0f : 0.0f;
  }

  // Where the port puts a form that has just come up.
  void Centre(ui::Form& form) const {
    const Rect& area = platform.Area;
    form.Move((area.Width - form.Width() - panel::kEdges) / 2,
              std::max((area.Height - form.Height() - panel::kEdges) / 2, 0.0f));
  }

  Rect OnScreen(const ui::Form& form, const ui::Control& control) const {
    Rect place = control.Bounds();
    place.Left += form.Left() + panel::kEdges / 2;
    place.Top += form.Top() + panel::kEdges / 2;
    return place;
  }

  // The lowest keyboard: four rows of 7 mm, with a gap of a millimetre at most around each.
  static constexpr Twips kLowest = (4 * 8 + 1) * panel::kMillimetre + panel::kEdges;

  // Goes through the text fields, as an operator does with Tab.
  void ExpectNothingCovered(Operator& op) {
    ui::Form& form = op.Form();
    Centre(form);
    int fields = 0;
    for (ui::Control* const control : form.TabOrder()) {
      const bool text =
          control->Kind() == ui::Kind::TextBox || control->Kind() == ui::Kind::PasswordBox;
      if (!text || !control->CanFocus()) continue;
      ++fields;
      control->SetFocus();
      form.Beside->Settle();
      ExpectFieldAndButtonsInSight(form, *control);
    }
    EXPECT_GT(fields, 0);
    form.Hide();
  }

  void ExpectFieldAndButtonsInSight(const ui::Form& form, const ui::Control& field) {
    SCOPED_TRACE(ToUtf8(field.Name()));
    const ui::Form* const board = platform.Attached;
    ASSERT_TRUE(board && board->Visible());
    const Rect keyboard{board->Left(), board->Top(), board->Width() + panel::kEdges,
                        board->Height() + panel::kEdges};
    const Twips bottom = Bottom(platform.Area);
    EXPECT_GE(keyboard.Top, 0);
    EXPECT_LE(Bottom(keyboard), bottom + 1);
    Rect needed = OnScreen(form, field);
    EXPECT_FALSE(Meet(needed, keyboard)) << "field";
    EXPECT_GE(needed.Top, 0);
    EXPECT_LE(Bottom(needed), bottom);
    for (const ui::Control* const control : form.TabOrder())
      if (control->Kind() == ui::Kind::Key && control->Visible() && control != form.CancelKey)
        needed = Around(needed, OnScreen(form, *control));
    if (needed.Height + kLowest + 3 * panel::kMillimetre > platform.Area.Height) {
      ++without_room_;
      return;
    }
    EXPECT_FALSE(Meet(needed, keyboard)) << "buttons";
    EXPECT_GE(needed.Top, 0);
    EXPECT_LE(Bottom(needed), bottom);
  }

  int without_room_ = 0;
};

TEST_P(KeyboardBesideForms, CoversNeitherTheFieldNorTheButtons) {
  for (const char* const language : {"de", "en"}) {
    UseTexts(language);
    for (const PanelScreen& screen : kPanels) {
      for (const bool for_fingers : {false, true}) {
        SCOPED_TRACE(std::string(language) + " " + std::to_string(screen.Width) + " at " +
                     std::to_string(screen.Dpi) + (for_fingers ? " for fingers" : ""));
        UsePanel(screen, for_fingers);
        platform.Expect(GetParam().Name, [this](Operator& op) { ExpectNothingCovered(op); });
        GetParam().Open(*dialog);
      }
    }
  }
  EXPECT_EQ(without_room_, GetParam().WithoutRoom);
}

const FormCase kForms[] = {
    {u"FLogOn", 2, [](service::KRXDialog& dialog) { dialog.KRUserLogOn(); }},
    {u"FLogOnCombo", 0, [](service::KRXDialog& dialog) { dialog.KRUserLogOnCombo(); }},
    {u"FChangePassword", 6, [](service::KRXDialog& dialog) { dialog.KRChangePassword(); }},
    {u"FAddUser", 28, [](service::KRXDialog& dialog) { dialog.KRAddUser(); }},
    {u"FFileSelect", 6, [](service::KRXDialog& dialog) {
       dialog.KRSaveFileAs({u"", u"C:\\Data", u"", true, u""});
     }}};

INSTANTIATE_TEST_SUITE_P(Forms, KeyboardBesideForms, ::testing::ValuesIn(kForms),
                         [](const auto& form) { return ToUtf8(form.param.Name); });

}  // namespace krx::test
