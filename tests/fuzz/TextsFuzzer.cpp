#include "Source.h"
#include "service/MKRXDialog.h"
#include "ui/Control.h"
#include "ui/Direction.h"
#include "ui/KRXIndex.h"
#include "ui/Keyboard.h"

// Texts from outside: message texts (encoded, wrapped and cut), captions with access keys, texts of
// both directions, keystroke notations, result codes.

namespace krx::fuzz {
namespace {

constexpr StringView kWords[] = {u"\n",
                                 u"\r\n",
                                 u"\r",
                                 u" ",
                                 u"&",
                                 u"&&",
                                 u"{",
                                 u"}",
                                 u"+",
                                 u"^",
                                 u"%",
                                 u"~",
                                 u"(",
                                 u")",
                                 u"ENTER",
                                 u"{F1 3}",
                                 u"{ESC}",
                                 u"\\n",
                                 u"\xD83D\xDE00",
                                 u"\x05D0",
                                 u"\x0627",
                                 u"2147483648",
                                 u"-1",
                                 u"\t",
                                 u"{TAB 2147483647}",
                                 u"ab cd"};

bool IsPair(StringView line) {
  return line.size() == 2 && (line[0] & 0xFC00) == 0xD800 && (line[1] & 0xFC00) == 0xDC00;
}

String WithoutBreaks(String text) {
  std::erase_if(text, [](char16_t unit) { return unit == u'\n' || unit == u' '; });
  return text;
}

void CheckWrapping(const String& text, std::size_t limit) {
  const auto fits = [limit](StringView line) { return line.size() <= limit; };
  const String wrapped = ui::WrapLines(text, fits);
  Require(WithoutBreaks(wrapped) == WithoutBreaks(text));
  StringView rest = wrapped;
  for (;;) {
    const std::size_t end = rest.find(u'\n');
    const StringView line = rest.substr(0, end);
    Require(fits(line) || line.size() == 1 || IsPair(line));
    if (end == StringView::npos) break;
    rest.remove_prefix(end + 1);
  }
  ui::CutLines(text, fits);
}

void CheckCaption(const String& text) {
  const char16_t key = ui::AccessKeyOf(text);
  Require(key == 0 || text.find(u'&') != String::npos);
  const String plain = ReplaceAll(text, u"&", u"&&");
  Require(ui::AccessKeyOf(plain) == 0 && ui::WithoutAccessKey(plain) == text);
}

void CheckKeystrokes(const String& text) {
  std::vector<ui::Keystroke> strokes;
  if (!Allowed([&] { strokes = ui::ParseKeystrokes(text); })) return;
  for (const ui::Keystroke& stroke : strokes)
    Require((stroke.Code != 0) != (stroke.Character != 0) || text.find(u'\0') != String::npos);
}

void CheckNumber(const String& text) {
  std::int32_t number = 0;
  if (Allowed([&] { number = ToLong(text); })) Require(ToLong(ToString(number)) == number);
}

}  // namespace
}  // namespace krx::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace krx::fuzz;
  Source source(data, size);
  const std::size_t limit = source.Below(32);
  const krx::String text = source.Text(kWords);
  Require(krx::service::EncodeLineBreaks(text).find_first_of(u"\r\n") == krx::String::npos);
  CheckWrapping(text, limit);
  CheckCaption(text);
  CheckKeystrokes(text);
  CheckNumber(text);
  krx::ui::InsideRightToLeft(text);
  return 0;
}
