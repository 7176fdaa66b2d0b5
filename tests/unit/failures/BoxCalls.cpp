#include "failures/Calls.h"
#include "service/MessageBoxStyle.h"
#include "ui/Keyboard.h"

namespace krx::test {

namespace {

using headless::Operator;

void AnswerNo(Operator& op) {
  op.Press(u'C', ui::kControl);
  op.Press(ui::kKeyTab);
  op.MouseDown(u"idxCaption", ui::kLeftButton, 100, 100);
  op.MouseMove(u"idxCaption", ui::kLeftButton, 400, 250);
  op.MouseUp(u"idxCaption", ui::kLeftButton, 400, 250);
  op.Click(u"keyButton(1)");
}

}  // namespace

std::vector<PlantCall> BoxCalls() {
  const String text = u"The pump in hall 3 does not answer.\nIs it to be stopped at once?";
  const auto box = [text](Plant& plant) {
    return plant.Dialog->KRMsgBox(text, service::kYesNoCancel | service::kQuestion,
                                  u"The title of the box", u"help.chm", 3);
  };
  // Nobody answers: the third button does so by itself.
  const auto free = [text](Plant& plant) {
    return plant.Dialog->KRMsgBoxEx(text, service::kCritical | service::kDefaultButton3, {}, {}, 0,
                                    {u"&Retry as before", u"&Skip this one", u"By &hand", 5});
  };
  return {{"KRMsgBox", [](Plant& plant) { plant.Platform.Expect(u"FMessageBox", AnswerNo); },
           [box](Plant& plant) { return std::to_string(box(plant)); }},
          {"KRMsgBoxEx",
           [](Plant& plant) {
             plant.Runtime.Panel.ShowCountdown = true;
             plant.Platform.Expect(u"FMessageBox",
                                   [](Operator& op) { op.Wait(std::chrono::seconds(6)); });
           },
           [free](Plant& plant) { return std::to_string(free(plant)); }}};
}

}  // namespace krx::test
