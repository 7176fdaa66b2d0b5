#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/Error.h"
#include "host/Application.h"
#include "host/Runtime.h"
#include "ports/headless/HeadlessPlatform.h"

namespace krx::test {

// Writes down every call that reaches a fake, in order, and fails the n-th one: once or from then
// on.
class CallLog {
 public:
  void FailCall(int number, bool persistent);
  void FailNothing();
  // Writes the call down; throws the failure of this call when it is its turn.
  void Add(std::string call);
  // Writes down what cannot fail, such as the end of an object.
  void Note(std::string event) { entries_.push_back(std::move(event)); }

  int Calls() const { return calls_; }
  bool Injected() const { return injected_; }
  const std::vector<std::string>& Entries() const { return entries_; }
  // The entries that begin with `prefix`.
  std::vector<std::string> EntriesOf(std::string_view prefix) const;

  static Error FailureOf(int number);

  int LiveApplications = 0;

 private:
  std::vector<std::string> entries_;
  int calls_ = 0;
  int fail_at_ = 0;
  bool persistent_ = false;
  bool injected_ = false;
};

// A runtime whose texts and fonts a test sets. A key without a text is its own text; a font class
// without a font is 8 points of a font that bears its name.
class FakeRuntime : public host::Runtime {
 public:
  explicit FakeRuntime(CallLog& log) : log_(log) {}

  std::map<String, String> Texts;
  std::map<String, Font> Fonts;
  int LiveTextServices = 0;
  int LiveFontServices = 0;

  std::unique_ptr<host::TextService> CreateTextService() override;
  std::unique_ptr<host::FontService> CreateFontService() override;

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

// The headless port with text measuring that can fail at every call.
class FakePlatform : public headless::HeadlessPlatform {
 public:
  explicit FakePlatform(CallLog& log) : log_(log) {}

  bool MeasuringIsCounted = false;
  bool SendKeysFails = false;

  Size MeasureText(const Font& font, StringView text) override;
  void SendKeys(StringView keys) override;

 private:
  CallLog& log_;
};

}  // namespace krx::test
