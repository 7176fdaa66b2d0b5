#include "support/FormTest.h"

#include "base/Error.h"

namespace krx::test {

constexpr std::uint32_t kAlreadyShown = 0x800A0000u + 400;

using Form = FormTest;

TEST_F(Form, LoadsOnceHoweverOftenItIsShown) {
  int loads = 0;
  form.LoadStep = [&] { ++loads; };
  form.Load();
  form.Load();
  Show(form, [](Operator&) {});
  Show(form, [](Operator&) {});
  EXPECT_EQ(loads, 1);
  EXPECT_TRUE(form.Loaded());
}

TEST_F(Form, ShowingLoadsAFormThatIsNot) {
  int loads = 0;
  form.LoadStep = [&] { ++loads; };
  EXPECT_FALSE(form.Loaded());
  Show(form, [](Operator&) {});
  EXPECT_EQ(loads, 1);
}

TEST_F(Form, IsVisibleOnlyWhileItIsShown) {
  EXPECT_FALSE(form.Visible());
  Show(form, [](Operator& op) { EXPECT_TRUE(op.Form().Visible()); });
  EXPECT_FALSE(form.Visible());
}

TEST_F(Form, HiddenFormKeepsItsStateForTheNextShowing) {
  Show(form, [](Operator& op) {
    op.Get(u"txtName").SetFocus();
    op.Type(u"abc");
  });
  Show(form, [this](Operator&) { EXPECT_EQ(form.txtName.Text(), u"abc"); });
}

TEST_F(Form, UnloadingRunsItsStepOnceAndTheNextShowingLoadsAgain) {
  int loads = 0;
  int unloads = 0;
  form.LoadStep = [&] { ++loads; };
  form.UnloadStep = [&] { ++unloads; };
  form.Unload();
  EXPECT_EQ(unloads, 0);
  form.Load();
  form.Unload();
  form.Unload();
  EXPECT_EQ(unloads, 1);
  Show(form, [](Operator&) {});
  EXPECT_EQ(loads, 2);
}

TEST_F(Form, UnloadingWhileShownEndsTheShowing) {
  Show(form, [this](Operator& op) {
    form.keyOne.Click = [this] { form.Unload(); };
    op.Click(u"keyOne");
    EXPECT_FALSE(form.Visible());
    EXPECT_FALSE(form.Loaded());
  });
}

TEST_F(Form, MayUnloadInTheHandlerOfItsFocus) {
  form.keyTwo.GotFocus = [this] { form.Unload(); };
  Show(form, [](Operator& op) {
    op.Press(ui::kKeyTab);
    op.Press(ui::kKeyTab);
    EXPECT_FALSE(op.Form().Visible());
  });
}

TEST_F(Form, ShownTwiceAtOnceIsAnError) {
  Show(form, [this](Operator&) {
    EXPECT_EQ(StatusOf([this] { form.ShowModal(); }), kAlreadyShown);
    EXPECT_TRUE(form.Visible());
  });
}

TEST_F(Form, HiddenInItsHandlerItCannotBeShownBeforeTheFirstShowingHasEnded) {
  Show(form, [this](Operator&) {
    form.Hide();
    EXPECT_EQ(StatusOf([this] { form.ShowModal(); }), kAlreadyShown);
  });
  Show(form, [](Operator&) {});
}

TEST_F(Form, OtherFormsMayBeShownFromItsHandlers) {
  SampleForm inner(platform, u"Inner");
  form.keyOne.Click = [&] {
    Show(inner, [this](Operator& op) {
      EXPECT_TRUE(form.Visible());
      op.Form().Unload();
    });
    EXPECT_TRUE(form.Visible());
  };
  Show(form, [](Operator& op) { op.Click(u"keyOne"); });
  EXPECT_FALSE(inner.Visible());
}

TEST_F(Form, ErrorInAHandlerEndsTheShowingAndReachesTheCaller) {
  form.keyOne.Click = [] { throw Error(7, u"seven"); };
  EXPECT_EQ(StatusOf([this] { Show(form, [](Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  EXPECT_FALSE(form.Visible());
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(form.ActiveControl(), nullptr);
}

TEST_F(Form, CanBeShownAgainAfterAnError) {
  form.keyOne.Click = [] { throw Error(7, u"seven"); };
  EXPECT_EQ(StatusOf([this] { Show(form, [](Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  int loads = 0;
  form.LoadStep = [&] { ++loads; };
  Show(form, [](Operator& op) { EXPECT_EQ(op.Focus(), u"txtName"); });
  EXPECT_EQ(loads, 1);
}

TEST_F(Form, ErrorInAHandlerRunsTheUnloadStep) {
  int unloads = 0;
  form.UnloadStep = [&] { ++unloads; };
  form.keyOne.Click = [] { throw Error(7, u"seven"); };
  EXPECT_EQ(StatusOf([this] { Show(form, [](Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  EXPECT_EQ(unloads, 1);
}

TEST_F(Form, ErrorBehindAnUnloadDoesNotUnloadAgain) {
  int unloads = 0;
  form.UnloadStep = [&] { ++unloads; };
  form.keyOne.Click = [this] {
    form.Unload();
    throw Error(7, u"seven");
  };
  EXPECT_EQ(StatusOf([this] { Show(form, [](Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  EXPECT_EQ(unloads, 1);
}

TEST_F(Form, ErrorInTheLoadStepLeavesItUnloaded) {
  form.LoadStep = [] { throw Error(8, u"eight"); };
  EXPECT_EQ(StatusOf([this] { form.ShowModal(); }), 8u);
  EXPECT_FALSE(form.Loaded());
  EXPECT_FALSE(form.Visible());
  int loads = 0;
  form.LoadStep = [&] { ++loads; };
  Show(form, [](Operator&) {});
  EXPECT_EQ(loads, 1);
}

TEST_F(Form, UnloadedByItsOwnLoadStepItIsNotShown) {
  form.LoadStep = [this] { form.Unload(); };
  form.ShowModal();
  EXPECT_FALSE(form.Loaded());
  EXPECT_TRUE(platform.Complaints().empty());
}

TEST_F(Form, FirstControlOfTheTabOrderThatCanHasTheFocusAtFirst) {
  Show(form, [](Operator& op) { EXPECT_EQ(op.Focus(), u"txtName"); });
  form.txtName.Enabled = false;
  form.keyOne.Visible = false;
  Show(form, [](Operator& op) { EXPECT_EQ(op.Focus(), u"keyTwo"); });
}

TEST_F(Form, PaintsWhenItIsShownAndWhenItIsUncovered) {
  int paints = 0;
  form.Paint = [&] { ++paints; };
  Show(form, [](Operator& op) {
    op.Uncover();
    op.Uncover();
  });
  EXPECT_EQ(paints, 3);
}

TEST_F(Form, MovingChangesThePlaceAndNotTheSize) {
  form.Width = 100;
  form.Height = 50;
  form.Move(-10, 20.5f);
  EXPECT_EQ(form.Left(), -10);
  EXPECT_EQ(form.Top(), 20.5f);
  EXPECT_EQ(form.Width(), 100);
  EXPECT_EQ(form.Height(), 50);
}

TEST_F(Form, FindsItsPartsByName) {
  EXPECT_EQ(form.Find(u"txtName"), &form.txtName);
  EXPECT_EQ(form.Find(u"tmrSample"), &form.tmrSample);
  EXPECT_EQ(form.Find(u"TXTNAME"), nullptr);
  EXPECT_EQ(form.Find(u""), nullptr);
}

TEST_F(Form, FocusEventsComeOncePerMoveLostBeforeGot) {
  std::string order;
  form.txtName.LostFocus = [&] { order += "-txtName "; };
  form.keyOne.GotFocus = [&] { order += "+keyOne "; };
  form.keyOne.LostFocus = [&] { order += "-keyOne "; };
  form.keyTwo.GotFocus = [&] { order += "+keyTwo "; };
  Show(form, [this](Operator&) {
    form.keyOne.SetFocus();
    form.keyOne.SetFocus();
    form.keyTwo.SetFocus();
  });
  EXPECT_EQ(order, "-txtName +keyOne -keyOne +keyTwo ");
}

TEST_F(Form, FocusMovedOnByALostFocusHandlerRaisesOnlyTheNewerEvents) {
  std::string order;
  form.txtName.LostFocus = [&] { form.keyThree.SetFocus(); };
  form.keyOne.GotFocus = [&] { order += "one "; };
  form.keyThree.GotFocus = [&] { order += "three "; };
  Show(form, [this](Operator& op) {
    form.keyOne.SetFocus();
    EXPECT_EQ(op.Focus(), u"keyThree");
  });
  EXPECT_EQ(order, "three ");
}

TEST_F(Form, HiddenAndDisabledControlsTakeNoFocus) {
  Show(form, [this](Operator& op) {
    form.keyOne.Visible = false;
    form.keyTwo.Enabled = false;
    form.keyOne.SetFocus();
    form.keyTwo.SetFocus();
    EXPECT_EQ(op.Focus(), u"txtName");
  });
}

TEST_F(Form, FontClassesWithoutAResolverAreTheDefaultFont) {
  EXPECT_EQ(form.FontOfClass(u"any"), krx::Font());
  form.FontClassResolver = [](StringView name) { return krx::Font{String(name), 10}; };
  form.keyOne.FontClass = u"Big";
  EXPECT_EQ(form.keyOne.Font(), (krx::Font{u"Big", 10}));
}

TEST_F(Form, ControlThatEndsBeforeItsFormIsForgotten) {
  {
    ui::KRXKey passing(form, u"keyPassing");
    EXPECT_EQ(form.Find(u"keyPassing"), &passing);
    form.FocusMovedTo(&passing);
  }
  EXPECT_EQ(form.Find(u"keyPassing"), nullptr);
  EXPECT_EQ(form.ActiveControl(), nullptr);
  EXPECT_EQ(form.TabOrder().size(), 5u);
}

}  // namespace krx::test
