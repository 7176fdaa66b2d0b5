#include "support/Fakes.h"

#include <algorithm>
#include <iterator>

namespace krx::test {

namespace {

class FakeTextService : public host::TextService {
 public:
  FakeTextService(FakeRuntime& runtime, CallLog& log) : runtime_(runtime), log_(log) {
    ++runtime_.LiveTextServices;
  }
  ~FakeTextService() override {
    --runtime_.LiveTextServices;
    log_.Note("~TextService");
  }
  String GetText(StringView key, std::int32_t group) override {
    if (key == u"TextDirection") return Direction();
    log_.Add("GetText " + ToUtf8(key) + " " + std::to_string(group));
    const auto text = runtime_.Texts.find(String(key));
    return text == runtime_.Texts.end() ? String(key) : text->second;
  }
  String Direction() const {
    ++runtime_.DirectionAsked;
    if (runtime_.DirectionFails) throw Error(0x80004005u, u"no direction");
    const auto text = runtime_.Texts.find(u"TextDirection");
    return text == runtime_.Texts.end() ? String(u"TextDirection") : text->second;
  }
  String ResolveText(StringView reference) override {
    log_.Add("ResolveText " + ToUtf8(reference));
    return String(reference.substr(1));
  }

 private:
  FakeRuntime& runtime_;
  CallLog& log_;
};

class FakeFontService : public host::FontService {
 public:
  FakeFontService(FakeRuntime& runtime, CallLog& log) : runtime_(runtime), log_(log) {
    ++runtime_.LiveFontServices;
  }
  ~FakeFontService() override {
    --runtime_.LiveFontServices;
    log_.Note("~FontService");
  }
  void SelectFontClass(StringView name) override {
    log_.Add("SelectFontClass " + ToUtf8(name));
    current_ = name;
  }
  Font GetFont() override {
    log_.Add("GetFont");
    const auto font = runtime_.Fonts.find(current_);
    return font == runtime_.Fonts.end() ? Font{current_, 8} : font->second;
  }

 private:
  FakeRuntime& runtime_;
  CallLog& log_;
  String current_;
};

}  // namespace

void CallLog::FailCall(int number, bool persistent) {
  FailNothing();
  fail_at_ = number;
  persistent_ = persistent;
}

void CallLog::FailNothing() {
  entries_.clear();
  calls_ = fail_at_ = 0;
  injected_ = false;
}

void CallLog::Add(std::string call) {
  entries_.push_back(std::move(call));
  ++calls_;
  const bool due = persistent_ ? calls_ >= fail_at_ : calls_ == fail_at_;
  if (fail_at_ == 0 || !due) return;
  injected_ = true;
  throw FailureOf(calls_);
}

std::vector<std::string> CallLog::EntriesOf(std::string_view prefix) const {
  std::vector<std::string> found;
  std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(found),
               [&](const std::string& entry) { return entry.starts_with(prefix); });
  return found;
}

Error CallLog::FailureOf(int number) {
  return Error(0x80040000u + static_cast<std::uint32_t>(number), u"failed: " + ToString(number),
               u"Service");
}

std::unique_ptr<host::TextService> FakeRuntime::CreateTextService() {
  log_.Add("CreateTextService");
  return std::make_unique<FakeTextService>(*this, log_);
}

std::unique_ptr<host::FontService> FakeRuntime::CreateFontService() {
  log_.Add("CreateFontService");
  return std::make_unique<FakeFontService>(*this, log_);
}

Size FakePlatform::MeasureText(const Font& font, StringView text) {
  if (MeasuringIsCounted) log_.Add("MeasureText " + ToUtf8(text));
  return HeadlessPlatform::MeasureText(font, text);
}

Twips FakePlatform::TextBoxHeight(const Font& font) {
  if (MeasuringIsCounted) log_.Add("TextBoxHeight");
  return HeadlessPlatform::TextBoxHeight(font);
}

void FakePlatform::RunModal(ui::Form& form) {
  if (ShowingIsNoted) log_.Note("Show " + ToUtf8(form.Name()));
  HeadlessPlatform::RunModal(form);
}

void FakePlatform::SendKeys(StringView keys) {
  if (SendKeysFails) throw Error(0x80070005u, u"Access denied");
  HeadlessPlatform::SendKeys(keys);
}

}  // namespace krx::test
