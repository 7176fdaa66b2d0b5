#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/FormTest.h"

// What a port gets to see: when peers come and go, and what they are told.
namespace krx::test {

namespace {

using Updates = std::vector<ui::Aspect>;

class RecordingPort : public headless::HeadlessPlatform {
 public:
  std::map<String, Updates> Told;
  std::map<String, int> Created;
  std::vector<String> Order;
  int Live = 0;
  bool CreationFails = false;

  std::unique_ptr<ui::Peer> CreatePeer(ui::Form& form) override { return Make(form.Name()); }
  std::unique_ptr<ui::Peer> CreatePeer(ui::Component& component) override {
    if (CreationFails) throw Error(0x8007000Eu, u"No more windows");
    return Make(component.Name(), dynamic_cast<ui::Control*>(&component));
  }

 private:
  struct RecordingPeer : ui::Peer {
    RecordingPeer(RecordingPort& of_port, const String& of_name, ui::Control* of_control)
        : port(of_port), name(of_name), control(of_control) {
      ++port.Live;
    }
    ~RecordingPeer() override { --port.Live; }
    void Update(ui::Aspect aspect) override { port.Told[name].push_back(aspect); }
    void SetFocus() override { control->Parent().FocusMovedTo(control); }

    RecordingPort& port;
    const String name;
    ui::Control* control;
  };

  std::unique_ptr<ui::Peer> Make(const String& name, ui::Control* control = nullptr) {
    ++Created[name];
    Order.push_back(name);
    return std::make_unique<RecordingPeer>(*this, name, control);
  }
};

}  // namespace

class Peers : public ::testing::Test {
 protected:
  void Show(headless::HeadlessPlatform::Script script) {
    port.Expect(u"Sample", [this, script](headless::Operator& op) {
      script(op);
      form.Hide();
    });
    form.ShowModal();
  }

  RecordingPort port;
  SampleForm form{port};
};

TEST_F(Peers, FormThatIsNotShownHasNone) {
  form.Load();
  form.keyOne.Caption = u"x";
  EXPECT_EQ(port.Live, 0);
  EXPECT_EQ(form.ThePeer(), nullptr);
}

TEST_F(Peers, ShownFormAndItsPartsHaveOneEach) {
  Show([this](headless::Operator&) {
    EXPECT_EQ(port.Live, 7);  // the form, five controls, the timer
    EXPECT_NE(form.ThePeer(), nullptr);
    EXPECT_NE(form.tmrSample.ThePeer(), nullptr);
  });
}

TEST_F(Peers, ComeInTabOrderAndWhatLiesBelowOthersLast) {
  struct FramedForm : SampleForm {
    using SampleForm::SampleForm;
    ui::Frame fra{*this, u"fra"};
    ui::KRXKey keyLast{*this, u"keyLast"};
  } framed(port);
  framed.lblName.TabIndex = 3;
  framed.txtName.TabIndex = 3;
  port.Expect(u"Sample", [&](headless::Operator&) { framed.Hide(); });
  framed.ShowModal();
  EXPECT_EQ(port.Order,
            (std::vector<String>{u"Sample", u"keyOne", u"keyTwo", u"lblName", u"txtName",
                                 u"keyThree", u"keyLast", u"fra", u"tmrSample"}));
}

TEST_F(Peers, HiddenControlGetsItsPeerWhenItIsFirstShown) {
  form.keyOne.Visible = false;
  Show([this](headless::Operator&) {
    EXPECT_EQ(form.keyOne.ThePeer(), nullptr);
    form.keyOne.Visible = true;
    EXPECT_NE(form.keyOne.ThePeer(), nullptr);
    form.keyOne.Visible = false;
    form.keyOne.Visible = true;
    EXPECT_EQ(port.Created[u"keyOne"], 1);
  });
}

TEST_F(Peers, HiddenFormKeepsItsPeersForTheNextShowing) {
  Show([](headless::Operator&) {});
  EXPECT_EQ(port.Live, 7);
  Show([](headless::Operator&) {});
  EXPECT_EQ(port.Created[u"Sample"], 1);
  EXPECT_EQ(port.Created[u"keyOne"], 1);
}

TEST_F(Peers, UnloadedFormDropsItsPeersWhenItsShowingHasEnded) {
  Show([this](headless::Operator&) {
    form.Unload();
    EXPECT_EQ(port.Live, 7);  // a handler of a window may still be running
  });
  EXPECT_EQ(port.Live, 0);
}

TEST_F(Peers, UnloadingAHiddenFormDropsItsPeersAtOnce) {
  Show([](headless::Operator&) {});
  form.Unload();
  EXPECT_EQ(port.Live, 0);
}

TEST_F(Peers, FormThatEndsTakesItsPeersAlong) {
  {
    SampleForm passing(port);
    port.Expect(u"Sample", [&](headless::Operator&) { passing.Hide(); });
    passing.ShowModal();
    EXPECT_EQ(port.Live, 7);
  }
  EXPECT_EQ(port.Live, 0);
}

TEST_F(Peers, AreGoneAfterAnError) {
  form.keyOne.Click = [] { throw Error(7, u"seven"); };
  EXPECT_EQ(StatusOf([this] { Show([](headless::Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  EXPECT_EQ(port.Live, 0);
}

TEST_F(Peers, AreGoneWhenTheUnloadStepFailsBehindAnError) {
  form.UnloadStep = [] { throw Error(8, u"eight"); };
  form.keyOne.Click = [] { throw Error(7, u"seven"); };
  EXPECT_EQ(StatusOf([this] { Show([](headless::Operator& op) { op.Click(u"keyOne"); }); }), 7u);
  EXPECT_EQ(port.Live, 0);
  EXPECT_FALSE(form.Loaded());
}

TEST_F(Peers, FailingCreationReachesTheCallerAndLeavesNone) {
  port.CreationFails = true;
  EXPECT_EQ(StatusOf([this] { form.ShowModal(); }), 0x8007000Eu);
  EXPECT_EQ(port.Live, 0);
  EXPECT_FALSE(form.Visible());
}

TEST_F(Peers, HearOfEveryChangeByItsAspect) {
  Show([this](headless::Operator&) {
    port.Told.clear();
    form.keyOne.Caption = u"x";
    form.keyOne.Enabled = false;
    form.keyOne.Left = 5;
    form.keyOne.Left = 5;
    form.keyOne.Font = krx::Font{u"x", 10};
    form.keyOne.BackColor = 0x123456;
    form.keyOne.Picture = ui::CrossPicture{16};
    form.keyOne.TabStop = false;
    form.txtName.Locked = true;
    form.txtName.SelStart = 1;
    form.tmrSample.Interval = 7;
    form.Caption = u"caption";
    form.Hide();
    using enum ui::Aspect;
    EXPECT_EQ(port.Told[u"keyOne"],
              (Updates{Text, Enabled, Bounds, Font, Colors, Picture, TabStop}));
    EXPECT_EQ(port.Told[u"txtName"], (Updates{Locked, Selection}));
    EXPECT_EQ(port.Told[u"tmrSample"], Updates{Timing});
    EXPECT_EQ(port.Told[u"Sample"], (Updates{ui::Aspect::Caption, Visible}));
  });
}

TEST_F(Peers, PlacingTellsOfOneChangeOfBounds) {
  Show([this](headless::Operator&) {
    port.Told.clear();
    form.keyOne.Place({1, 2, 3, 4});
    form.keyOne.Place({1, 2, 3, 4});
    form.Move(5, 6);
    form.Move(5, 6);
    EXPECT_EQ(port.Told[u"keyOne"], Updates{ui::Aspect::Bounds});
    EXPECT_EQ(port.Told[u"Sample"], Updates{ui::Aspect::Bounds});
  });
}

TEST_F(Peers, FocusGoesByWayOfThePeer) {
  Show([this](headless::Operator& op) {
    form.keyTwo.SetFocus();
    EXPECT_EQ(op.Focus(), u"keyTwo");
  });
}

}  // namespace krx::test
