#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "base/Error.h"
#include "service/MKRXDialog.h"
#include "ui/KRXIndex.h"
#include "ui/Keyboard.h"

// Texts from outside: message texts (encoded and wrapped), keystroke notations, result codes. The
// first byte is the width of a line; the rest is the text.

namespace {

using krx::String;
using krx::StringView;

void Require(bool holds) {
  if (!holds) std::abort();
}

String TextOf(const std::uint8_t* data, std::size_t size) {
  String text(size / sizeof(char16_t), u'\0');
  std::memcpy(text.data(), data, text.size() * sizeof(char16_t));
  return text;
}

bool IsPair(StringView line) {
  return line.size() == 2 && (line[0] & 0xFC00) == 0xD800 && (line[1] & 0xFC00) == 0xDC00;
}

void WrapAndCheck(const String& text, std::size_t limit) {
  const String wrapped =
      krx::ui::WrapLines(text, [limit](StringView line) { return line.size() <= limit; });
  StringView rest = wrapped;
  for (;;) {
    const std::size_t end = rest.find(u'\n');
    const StringView line = rest.substr(0, end);
    Require(line.size() <= limit || line.size() == 1 || IsPair(line));
    if (end == StringView::npos) return;
    rest.remove_prefix(end + 1);
  }
}

template <class Parse>
void ParseOrRefuse(Parse parse) {
  try {
    parse();
  } catch (const krx::Error&) {
    // A refusal is an answer; anything else ends the run.
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::size_t limit = data[0] % 32;
  const String text = TextOf(data + 1, size - 1);
  Require(krx::service::EncodeLineBreaks(text).find_first_of(u"\r\n") == String::npos);
  WrapAndCheck(text, limit);
  ParseOrRefuse([&] { krx::ui::ParseKeystrokes(text); });
  ParseOrRefuse(
      [&] { Require(krx::ToLong(krx::ToString(krx::ToLong(text))) == krx::ToLong(text)); });
  return 0;
}
