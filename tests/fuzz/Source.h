#pragma once

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <span>
#include <string>
#include <string_view>

#include "base/Error.h"
#include "base/String.h"

namespace krx::fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

// Runs what may refuse its input by an Error, and nothing else; whether it did not.
template <class Act>
bool Allowed(Act&& act) {
  try {
    act();
    return true;
  } catch (const Error&) {
    return false;
  }
}

// Hands the bytes of an input out as what a target needs. At the end there are zeros and empty
// texts, so that every input means something, and a small change of it a similar thing.
class Source {
 public:
  Source(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

  bool AtEnd() const { return rest_.empty(); }

  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const std::uint8_t byte = rest_.front();
    rest_ = rest_.subspan(1);
    return byte;
  }
  std::size_t Below(std::size_t bound) { return Byte() % bound; }
  bool Coin() { return Byte() % 2 != 0; }

  template <class Number>
  Number Whole() {
    Number number{};
    for (std::size_t i = 0; i < sizeof number; ++i)
      number = static_cast<Number>((static_cast<std::uint64_t>(number) << 8) | Byte());
    return number;
  }
  // Mostly small, at times one of the ends of its type.
  template <class Number>
  Number NumberNearEnds() {
    const std::uint8_t kind = Byte();
    if (kind < 128) return static_cast<Number>(static_cast<std::int8_t>(Byte()));
    if (kind < 160) return static_cast<Number>(std::numeric_limits<Number>::max() - Byte());
    if (kind < 192) return static_cast<Number>(std::numeric_limits<Number>::min() + Byte());
    return Whole<Number>();
  }

  // A text of given words, letters and now and then any unit; a zero ends it.
  String Text(std::span<const StringView> words) {
    String text;
    for (std::uint8_t byte; (byte = Byte()) != 0;) {
      if (byte >= 0xF0)
        text += Whole<char16_t>();
      else if (byte >= ' ' && byte < 0x7F)
        text += byte;
      else if (!words.empty())
        text += words[byte % words.size()];
    }
    return text;
  }
  // The same of bytes.
  std::string Bytes(std::span<const std::string_view> words) {
    std::string bytes;
    for (std::uint8_t byte; (byte = Byte()) != 0;) {
      if (byte >= 0xF0)
        bytes += static_cast<char>(Byte());
      else if (byte >= ' ' && byte < 0x7F)
        bytes += static_cast<char>(byte);
      else if (!words.empty())
        bytes += words[byte % words.size()];
    }
    return bytes;
  }
  std::string Raw(std::size_t most) {
    std::string bytes;
    while (bytes.size() < most && !AtEnd())
      bytes += static_cast<char>(Byte());
    return bytes;
  }

 private:
  std::span<const std::uint8_t> rest_;
};

// Whether every surrogate has its partner, so that the text survives UTF-8.
inline bool IsWellFormed(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((text[i] & 0xF800) != 0xD800) continue;
    const bool pairs =
        (text[i] & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (!pairs) return false;
    ++i;
  }
  return true;
}

}  // namespace krx::fuzz
