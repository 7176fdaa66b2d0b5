#pragma once

#include <ole2.h>

#include <cstdint>
#include <span>

#include "base/String.h"
#include "com/Variant.h"

namespace krx::runtime {

// Arrays as automation clients expect them, with indexes from 0. Raise std::bad_alloc.
com::Variant ArrayOf(std::span<const String> texts);
com::Variant ArrayOf(std::span<const std::int32_t> numbers);

}  // namespace krx::runtime
