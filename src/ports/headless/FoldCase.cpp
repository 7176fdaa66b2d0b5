#include "ports/headless/FoldCase.h"

#include <unicode/uchar.h>

namespace krx::headless {

char32_t FoldCase(char32_t character) {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(character), U_FOLD_CASE_DEFAULT));
}

}  // namespace krx::headless
