#pragma once

#include <filesystem>

namespace krx::tests {

inline std::filesystem::path Checkout() {
  return KRX_CHECKOUT;
}

}  // namespace krx::tests
