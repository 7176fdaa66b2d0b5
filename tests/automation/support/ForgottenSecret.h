#pragma once

#include <gtest/gtest.h>

#include <string>

#include "driver/Client.h"
#include "support/MemoryScan.h"

namespace krx::drive {

// The client's memory holds no second half of the secret, which a copy keeps whose beginning was
// written over, but what it shows: the scan finds what is there.
inline void ExpectNowhereIn(const Client& client, const std::wstring& secret,
                            const std::wstring& shown, const char* what) {
  const HANDLE process =
      OpenProcess(PROCESS_VM_READ | PROCESS_QUERY_INFORMATION, FALSE, client.ProcessId());
  ASSERT_NE(process, nullptr);
  const std::wstring half = secret.substr(secret.size() / 2);
  const auto copies = [process](const std::wstring& text) {
    return test::CopiesIn(process, text.size(), [&text](std::size_t i) { return text[i]; });
  };
  const test::Copies found = copies(half);
  EXPECT_GE(copies(shown).Text, 1) << what;
  EXPECT_EQ(found.Text, 0) << what;
  EXPECT_EQ(found.Bytes, 0) << what;
  CloseHandle(process);
}

}  // namespace krx::drive
