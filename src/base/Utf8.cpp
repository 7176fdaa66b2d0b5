#include "base/Utf8.h"

namespace krx {
namespace {

// What the first byte of a sequence says: how many bytes follow, the bits it brings itself and the
// smallest code point that needs a sequence of this length.
struct Lead {
  int Following;
  char32_t Bits;
  char32_t Smallest;
};

std::optional<Lead> LeadOf(unsigned char byte) {
  if (byte < 0x80) return Lead{0, byte, 0};
  if (byte >= 0xC0 && byte < 0xE0) return Lead{1, byte & 0x1Fu, 0x80};
  if (byte >= 0xE0 && byte < 0xF0) return Lead{2, byte & 0x0Fu, 0x800};
  if (byte >= 0xF0 && byte < 0xF8) return Lead{3, byte & 0x07u, 0x10000};
  return std::nullopt;
}

bool IsScalar(char32_t point) {
  return point <= 0x10FFFF && (point < 0xD800 || point > 0xDFFF);
}

void AppendUtf16(String& text, char32_t point) {
  if (point < 0x10000) {
    text += static_cast<char16_t>(point);
    return;
  }
  text += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
  text += static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF));
}

}  // namespace

std::optional<String> FromUtf8(std::string_view bytes) {
  String text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const std::optional<Lead> lead = LeadOf(static_cast<unsigned char>(bytes[at++]));
    if (!lead) return std::nullopt;
    char32_t point = lead->Bits;
    for (int i = 0; i < lead->Following; ++i, ++at) {
      if (at == bytes.size()) return std::nullopt;
      const auto byte = static_cast<unsigned char>(bytes[at]);
      if ((byte & 0xC0) != 0x80) return std::nullopt;
      point = (point << 6) | (byte & 0x3Fu);
    }
    if (point < lead->Smallest || !IsScalar(point)) return std::nullopt;
    AppendUtf16(text, point);
  }
  return text;
}

}  // namespace krx
