#include "runtime/users/directory/PasswordWire.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>

namespace krx::runtime {
namespace {

constexpr std::uint8_t kSequence = 0x30;
constexpr std::uint8_t kIdentity = 0x80;
constexpr std::uint8_t kBefore = 0x81;
constexpr std::uint8_t kAfter = 0x82;
constexpr std::uint8_t kWarning = 0xA0;
constexpr std::uint8_t kGraceLogOns = 0x81;
constexpr std::uint8_t kError = 0x81;
constexpr int kLastError = 9;

// Reads elements of tag, length and content (BER) one after the other. Lengths of more than two
// bytes stand in no answer.
class BerReader {
 public:
  explicit BerReader(std::string_view bytes) : rest_(bytes) {}

  bool AtEnd() const { return rest_.empty(); }

  struct Element {
    std::uint8_t Tag;
    std::string_view Content;
  };

  std::optional<Element> Next() {
    const std::optional<std::uint8_t> tag = Byte();
    const std::optional<std::size_t> length = Length();
    if (!tag || !length || *length > rest_.size()) return std::nullopt;
    const Element element{*tag, rest_.substr(0, *length)};
    rest_.remove_prefix(*length);
    return element;
  }

 private:
  std::optional<std::uint8_t> Byte() {
    if (rest_.empty()) return std::nullopt;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  std::optional<std::size_t> Length() {
    const std::optional<std::uint8_t> first = Byte();
    if (!first || *first < 0x80) return first;
    std::size_t length = 0;
    if (*first == 0x80 || *first > 0x82) return std::nullopt;
    for (int i = *first & 0x7F; i > 0; --i) {
      const std::optional<std::uint8_t> byte = Byte();
      if (!byte) return std::nullopt;
      length = length * 256 + *byte;
    }
    return length;
  }

  std::string_view rest_;
};

// A whole number that is not negative and small.
std::optional<int> Number(std::string_view content) {
  if (content.empty() || content.size() > 3) return std::nullopt;
  int number = 0;
  for (const char byte : content)
    number = number * 256 + static_cast<unsigned char>(byte);
  return number;
}

bool ReadElement(const BerReader::Element& element, PolicyState& state) {
  if (element.Tag == kError) {
    const std::optional<int> code = Number(element.Content);
    if (!code || *code > kLastError) return false;
    state.Error = static_cast<PolicyError>(*code);
    return true;
  }
  if (element.Tag != kWarning) return false;
  const std::optional<BerReader::Element> warning = BerReader(element.Content).Next();
  if (!warning) return false;
  if (warning->Tag == kGraceLogOns) state.GraceLogOns = Number(warning->Content);
  return true;
}

// Writes into bytes of a known size.
class BerWriter {
 public:
  explicit BerWriter(std::span<std::uint8_t> bytes) : rest_(bytes) {}

  void Head(std::uint8_t tag, std::size_t length) {
    Put(tag);
    if (length >= 0x80) {
      Put(0x82);
      Put(static_cast<std::uint8_t>(length >> 8));
    }
    Put(static_cast<std::uint8_t>(length & 0xFF));
  }

  void Element(std::uint8_t tag, std::span<const std::uint8_t> content) {
    Head(tag, content.size());
    std::copy(content.begin(), content.end(), rest_.begin());
    rest_ = rest_.subspan(content.size());
  }

  void Put(std::uint8_t byte) {
    rest_.front() = byte;
    rest_ = rest_.subspan(1);
  }

 private:
  std::span<std::uint8_t> rest_;
};

std::size_t SizeOf(std::size_t content) {
  return content + (content < 0x80 ? 2 : 4);
}

// The bytes of one code point; a lone surrogate, which nobody can have as a password elsewhere,
// becomes the replacement character.
struct Utf8Point {
  std::array<std::uint8_t, 4> Bytes;
  std::size_t Size;
  std::size_t Units;
};

Utf8Point PointAt(StringView text, std::size_t at) {
  char32_t point = text[at];
  std::size_t units = 1;
  if (point >= 0xD800 && point <= 0xDFFF) {
    const char16_t next = at + 1 < text.size() ? text[at + 1] : u'\0';
    const bool pair = point < 0xDC00 && next >= 0xDC00 && next <= 0xDFFF;
    point = pair ? 0x10000 + ((point - 0xD800) << 10) + (next - 0xDC00u) : 0xFFFD;
    units = pair ? 2 : 1;
  }
  const auto tail = [point](int shift) {
    return static_cast<std::uint8_t>(0x80 | ((point >> shift) & 0x3F));
  };
  const auto head = [point](unsigned mark, int shift) {
    return static_cast<std::uint8_t>(mark | (point >> shift));
  };
  if (point < 0x80) return {{head(0, 0)}, 1, units};
  if (point < 0x800) return {{head(0xC0, 6), tail(0)}, 2, units};
  if (point < 0x10000) return {{head(0xE0, 12), tail(6), tail(0)}, 3, units};
  return {{head(0xF0, 18), tail(12), tail(6), tail(0)}, 4, units};
}

}  // namespace

std::optional<PolicyState> ParsePolicyControl(std::string_view value) {
  const std::optional<BerReader::Element> whole = BerReader(value).Next();
  if (!whole || whole->Tag != kSequence) return std::nullopt;
  PolicyState state;
  for (BerReader reader(whole->Content); !reader.AtEnd();) {
    const std::optional<BerReader::Element> element = reader.Next();
    if (!element || !ReadElement(*element, state)) return std::nullopt;
  }
  return state;
}

SecretBytes Utf8Of(const Password& password) {
  const StringView text = password.View();
  std::size_t size = 0;
  for (std::size_t i = 0; i < text.size(); i += PointAt(text, i).Units)
    size += PointAt(text, i).Size;
  SecretBytes bytes(size);
  std::size_t at = 0;
  for (std::size_t i = 0; i < text.size();) {
    const Utf8Point point = PointAt(text, i);
    std::memcpy(bytes.Bytes().data() + at, point.Bytes.data(), point.Size);
    at += point.Size;
    i += point.Units;
  }
  return bytes;
}

SecretBytes ModifyPasswordRequest(StringView user_dn, const Password& before,
                                  const Password& after) {
  const std::string dn = ToUtf8(user_dn);
  const SecretBytes old_bytes = Utf8Of(before);
  const SecretBytes new_bytes = Utf8Of(after);
  const std::size_t content =
      SizeOf(dn.size()) + SizeOf(old_bytes.Bytes().size()) + SizeOf(new_bytes.Bytes().size());
  SecretBytes request(SizeOf(content));
  BerWriter writer(request.Bytes());
  writer.Head(kSequence, content);
  writer.Element(kIdentity, {reinterpret_cast<const std::uint8_t*>(dn.data()), dn.size()});
  writer.Element(kBefore, old_bytes.Bytes());
  writer.Element(kAfter, new_bytes.Bytes());
  return request;
}

SecretBytes QuotedPassword(const Password& password) {
  const StringView text = password.View();
  SecretBytes bytes(2 * text.size() + 4);
  BerWriter writer(bytes.Bytes());
  const auto put = [&writer](char16_t unit) {
    writer.Put(static_cast<std::uint8_t>(unit & 0xFF));
    writer.Put(static_cast<std::uint8_t>(unit >> 8));
  };
  put(u'"');
  for (const char16_t unit : text)
    put(unit);
  put(u'"');
  return bytes;
}

}  // namespace krx::runtime
