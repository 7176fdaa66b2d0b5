#pragma once

namespace krx::headless {

// Unicode's simple case folding, from the table of a library that follows Unicode.
char32_t FoldCase(char32_t character);

}  // namespace krx::headless
