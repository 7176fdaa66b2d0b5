#include "runtime/core/References.h"

#include <optional>

#include "host/TextService.h"
#include "runtime/core/KorvelError.h"

namespace krx::runtime {
namespace {

std::optional<std::int32_t> GroupOf(StringView text) {
  try {
    return ToLong(text);
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

String ResolveReference(Languages& languages, StringView reference) {
  if (!reference.starts_with(u'@')) {
    throw KorvelError(kInvalidArgument, u"A text reference begins with \"@\".");
  }
  const StringView name = reference.substr(1);
  if (name.empty()) return String(reference);
  const std::size_t colon = name.find(u':');
  if (colon != StringView::npos && colon + 1 < name.size()) {
    if (const auto group = GroupOf(name.substr(0, colon))) {
      return languages.Text(name.substr(colon + 1), *group);
    }
  }
  if (auto text = languages.Find(name, host::kDialogTexts)) return *text;
  return languages.Text(name, host::kUserTexts);
}

}  // namespace krx::runtime
