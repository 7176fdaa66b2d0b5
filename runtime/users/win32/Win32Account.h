#pragma once

#include <cstdint>
#include <vector>

#include "base/String.h"

namespace krx::runtime {

using Sid = std::vector<std::uint8_t>;

// The account that this process runs under. Both raise Error when the system does not tell it.
Sid OfThisAccount();
// Its name as "DOMAIN\name".
String NameOfThisAccount();

}  // namespace krx::runtime
