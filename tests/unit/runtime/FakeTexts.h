#pragma once

#include <map>

#include "base/Error.h"
#include "runtime/core/Languages.h"

namespace krx::runtime {

// Texts written out in a test; counts how often each language is read.
class FakeTexts : public TextSource {
 public:
  std::vector<TextFile> Read(const String& language) override {
    ++Reads[language];
    const auto found = Files.find(language);
    return found == Files.end() ? std::vector<TextFile>() : found->second;
  }
  String SystemLanguage() override { return System; }

  std::map<String, std::vector<TextFile>> Files{
      {u"de", {{u"de.txt", "-105 Yes = &Ja\n-103 lblName = &Name\n-7 Both = sieben\n"}}},
      {u"en", {{u"en.txt", "-105 Yes = &Yes\n-105 No = &No\n-103 lblName = Name\n"}}},
  };
  String System = u"de-DE";
  std::map<String, int> Reads;
};

// The failure of an action; an action that succeeds is a failed test.
template <class Action>
Error FailureOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error;
  }
  throw std::logic_error("the action should have failed");
}

}  // namespace krx::runtime
