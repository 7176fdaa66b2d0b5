#include "runtime/core/LineReader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/Utf8.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(LineReader::kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(LineReader::kBlanks) - first + 1);
}

LineReader::LineReader(const String& file, std::string_view bytes, std::uint32_t status)
    : file_(file), rest_(bytes), status_(status) {
  if (rest_.starts_with(kByteOrderMark)) rest_.remove_prefix(kByteOrderMark.size());
}

bool LineReader::Next() {
  if (rest_.empty()) return false;
  ++number_;
  const std::size_t end = std::min(rest_.find('\n'), rest_.size());
  line_ = Trimmed(rest_.substr(0, end));
  rest_.remove_prefix(std::min(end + 1, rest_.size()));
  return true;
}

String LineReader::Text(std::string_view bytes) const {
  std::optional<String> text = FromUtf8(bytes);
  if (!text) Refuse(u"the line is not UTF-8");
  for (const char16_t unit : *text) {
    if (unit < u' ' && unit != u'\t') Refuse(u"the line contains a control character");
  }
  return std::move(*text);
}

void LineReader::Refuse(const String& reason) const {
  throw KorvelError(status_, file_ + u", line " + ToString(number_) + u": " + reason);
}

}  // namespace krx::runtime
