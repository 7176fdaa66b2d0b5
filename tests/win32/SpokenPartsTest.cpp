// What assistive programs are told of labels and frames, which have no windows.

#include <gmock/gmock.h>

#include <cmath>
#include <vector>

#include "ControlsForm.h"
#include "Person.h"
#include "access/Reader.h"

namespace krx::test {

namespace {

class SpokenParts : public testing::Test {
 protected:
  SpokenParts() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~SpokenParts() override { CoUninitialize(); }

  // Asks on the form's own thread as soon as it is shown.
  void Ask(const std::function<void(const drive::Element&)>& ask) {
    form.Soon([this, ask] {
      ask(drive::Element(drive::Window(WindowOf(form))));
      form.Unload();
    });
    form.ShowModal();
  }

  win32::Win32Platform platform;
  ControlsForm form{platform};
};

// What a reader finds, one after the other: windows by their names, parts by role and words.
std::vector<std::string> Read(const drive::Element& dialog) {
  std::vector<std::string> found;
  for (long i = 1; i <= dialog.Count(); ++i) {
    const drive::Element inside = dialog.Inside(i);
    if (inside.Has(STATE_SYSTEM_INVISIBLE)) continue;
    const std::string name = drive::RoleWord(inside.Role()) + ' ' + drive::Narrow(inside.Name());
    found.push_back(inside.IsPart() ? name : ToUtf8(NameOf(inside.TheWindow().Handle())));
  }
  return found;
}

TEST_F(SpokenParts, ALabelStandsRightBeforeItsFieldAlsoOneThatComesLate) {
  form.txtPassword.Visible = false;
  form.lblShown.Visible = false;
  Ask([this](const drive::Element& dialog) {
    form.txtPassword.Visible = true;
    form.lblShown.Visible = true;
    form.lblName.Visible = false;
    EXPECT_THAT(Read(dialog),
                testing::ElementsAre("cboName", "text Passwort", "txtPassword", "text Anzeige",
                                     "txtShown", "keyOK", "keyClose", "idxCaption", "grouping "))
        << "what lies below others comes last";
  });
}

TEST_F(SpokenParts, ALabelTellsWhereItIsAndWhatItSays) {
  form.lblName.Enabled = false;
  Ask([this](const drive::Element& dialog) {
    const drive::Element label = dialog.Inside(1);
    EXPECT_EQ(drive::Narrow(label.Name()), "Name");
    EXPECT_EQ(label.Shortcut(), L"Alt+N");
    EXPECT_TRUE(label.Has(STATE_SYSTEM_READONLY));
    EXPECT_TRUE(label.Has(STATE_SYSTEM_UNAVAILABLE));
    POINT corner{};
    ClientToScreen(WindowOf(form), &corner);
    const auto pixels = [this](Twips length) {
      return std::lround(length / platform.TwipsPerPixel());
    };
    const RECT place = label.Place();
    EXPECT_EQ(place.left, corner.x + pixels(form.lblName.Left()));
    EXPECT_EQ(place.top, corner.y + pixels(form.lblName.Top()));
    EXPECT_EQ(place.right - place.left, pixels(form.lblName.Width()));
    EXPECT_EQ(place.bottom - place.top, pixels(form.lblName.Height()));
    VARIANT hit{};
    EXPECT_EQ(dialog.Object().accHitTest(place.left + 1, place.top + 1, &hit), S_OK);
    EXPECT_EQ(hit.vt, VT_I4);
    EXPECT_EQ(hit.lVal, 1);
  });
}

TEST_F(SpokenParts, AWindowSpeaksForItself) {
  Ask([](const drive::Element& dialog) {
    VARIANT field = dialog.Part();
    field.lVal = 2;
    BSTR name = nullptr;
    EXPECT_EQ(dialog.Object().get_accName(field, &name), E_INVALIDARG);
    EXPECT_FALSE(dialog.Inside(2).IsPart());
  });
}

// Numbers of the children that were renamed, on a form of the thread.
std::vector<LONG> renamed;

void CALLBACK HearName(HWINEVENTHOOK, DWORD, HWND, LONG object, LONG part, DWORD, DWORD) {
  if (object == OBJID_CLIENT) renamed.push_back(part);
}

TEST_F(SpokenParts, ACaptionThatChangesIsTold) {
  renamed.clear();
  const HWINEVENTHOOK hook =
      SetWinEventHook(EVENT_OBJECT_NAMECHANGE, EVENT_OBJECT_NAMECHANGE, nullptr, &HearName,
                      GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
  ASSERT_NE(hook, nullptr);
  form.Soon([&] { form.lblPassword.Caption = u"Other"; });
  ShowWith(form, [](Person& person) {
    person.AwaitForm(u"FControls");
    person.Await([] { return !renamed.empty(); }, "the event");
    person.Press(VK_ESCAPE);
  });
  UnhookWinEvent(hook);
  EXPECT_EQ(renamed, std::vector<LONG>{3}) << "behind the first label and its field";
}

}  // namespace

}  // namespace krx::test
