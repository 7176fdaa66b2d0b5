#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/Error.h"
#include "host/Application.h"
#include "host/Runtime.h"
#include "ports/headless/Operator.h"
#include "support/CallLog.h"
#include "support/FakeUsers.h"

namespace krx::test {

// A runtime whose texts and fonts a test sets. A key without a text is its own text; a font class
// without a font is 8 points of a font that bears its name.
class FakeRuntime : public host::Runtime {
 public:
  explicit FakeRuntime(CallLog& log) : Users(log), log_(log) {}

  std::map<String, String> Texts;
  std::map<String, Font> Fonts;
  int LiveTextServices = 0;
  int LiveFontServices = 0;
  FakeUsers Users;
  PanelSettings Panel;
  String LogOnNotice;
  bool LogOnNoticeFails = false;
  int LogOnNoticeAsked = 0;
  // What a dialog asks besides its own texts is counted here and not in the log.
  int DirectionAsked = 0;
  bool DirectionFails = false;

  std::unique_ptr<host::TextService> CreateTextService() override;
  std::unique_ptr<host::FontService> CreateFontService() override;
  std::unique_ptr<host::UserSession> CreateUserSession() override { return Users.CreateSession(); }
  std::unique_ptr<host::UserAdministration> CreateUserAdministration() override {
    return Users.CreateAdministration();
  }
  std::unique_ptr<host::UserClassAdministration> CreateUserClassAdministration() override {
    return Users.CreateClassAdministration();
  }
  PanelSettings ReadPanelSettings() override { return Panel; }
  String ReadLogOnNotice() override {
    ++LogOnNoticeAsked;
    if (LogOnNoticeFails) throw Error(0x80040212u, u"log-on-notice.txt is malformed");
    return LogOnNotice;
  }

 private:
  CallLog& log_;
};

// A host application that counts its living objects.
class FakeApplication : public host::Application {
 public:
  FakeApplication(CallLog& log, String name) : log_(log), name_(std::move(name)) {
    ++log_.LiveApplications;
  }
  ~FakeApplication() override { --log_.LiveApplications; }
  String EXEName() override {
    log_.Add("EXEName");
    return name_;
  }

 private:
  CallLog& log_;
  const String name_;
};

// The headless port with text measuring and a file system that can fail at every call.
class FakePlatform : public headless::HeadlessPlatform {
 public:
  explicit FakePlatform(CallLog& log) : log_(log) {
    Machine.OnCall = [this](const std::string& call) { log_.Add(call); };
  }

  bool MeasuringIsCounted = false;
  bool ShowingIsNoted = false;  // "Show <form>" in the log
  bool SendKeysFails = false;

  Size MeasureText(const Font& font, StringView text) override;
  Twips TextBoxHeight(const Font& font) override;
  void RunModal(ui::Form& form) override;
  void SendKeys(StringView keys) override;

 private:
  CallLog& log_;
};

}  // namespace krx::test
