#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace krx::test {

// Runs the tests of a filter in another process, which finds `value` in its environment variable
// `variable`; returns its exit code, 0 when they all passed.
DWORD RunSelf(const std::wstring& filter, const wchar_t* variable, const std::wstring& value);
// The number that such a process was given; none in one that was started otherwise.
std::optional<std::uint64_t> GivenNumber(const wchar_t* variable);

}  // namespace krx::test
