#pragma once

#include <cstdint>
#include <string_view>

namespace krx::runtime {

// CRC-64 (ECMA-182, reflected): finds torn and damaged files. It is no protection against someone
// who may write the file; the rights of the folder are.
std::uint64_t Checksum(std::string_view bytes);

}  // namespace krx::runtime
