#include "runtime/users/store/StoreFormat.h"

#include <gtest/gtest.h>

#include <random>

#include "runtime/core/KorvelError.h"
#include "runtime/users/store/Checksum.h"

namespace krx::test {
namespace {

using runtime::ParseStore;
using runtime::PasswordHash;
using runtime::Serialize;
using runtime::StoredUser;
using runtime::UserStore;

PasswordHash Hash(std::uint8_t seed) {
  return {600'000, std::vector<std::uint8_t>(16, seed), std::vector<std::uint8_t>(32, 0xA5)};
}

UserStore TwoUsers() {
  UserStore store;
  StoredUser anna;
  anna.Name = u"Anna \u00C4\u0416\U0001F600";
  anna.FullName = u"tab\t line\n backslash\\ nul" + String(1, u'\0');
  anna.Comment = u"\u2028\u0085\x7F";
  anna.ClassName = u"Operator";
  anna.Passwords = {Hash(1), Hash(2)};
  store.Add(anna);
  StoredUser bert;
  bert.Name = u"bert";
  bert.Deactivated = true;
  bert.MustRenew = false;
  bert.RemainingLogOns = 7;
  bert.PasswordChangedOn = -5;
  bert.Failures = 3;
  bert.LastFailure = 1'767'225'600;
  bert.Passwords = {Hash(3)};
  store.Add(bert);
  return store;
}

bool IsRefused(std::string_view bytes) {
  try {
    ParseStore(u"users.dat", bytes);
    return false;
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Status(), runtime::kUnreadableUsers);
    EXPECT_EQ(failure.Description().find(u"users.dat, line "), 0u);
    return true;
  }
}

// The bytes with a checksum that is right again.
std::string Sealed(std::string text, std::size_t users) {
  char end[64];
  std::snprintf(end, sizeof end, "end\t%zu\t%016llx\n", users,
                static_cast<unsigned long long>(runtime::Checksum(text)));
  return text + end;
}

const std::string kHead = "KorvelUsers\t1\t9\n";
const std::string kHashText = "1000:00112233445566778899aabbccddeeff:" + std::string(64, '0');

std::string UserLine(const std::string& id, const std::string& name, const std::string& flags,
                     const std::string& hash = kHashText) {
  return "user\t" + id + "\t" + name + "\t\t\tOperator\t" + flags + "\t-1\t0\t0\t0\t" + hash + "\n";
}

TEST(ChecksumTest, GivesThePublishedCheckValue) {
  EXPECT_EQ(runtime::Checksum("123456789"), 0x995DC9BBDF1939FAu);
  EXPECT_EQ(runtime::Checksum(""), 0u);
}

TEST(StoreFormatTest, WhatIsWrittenIsRead) {
  EXPECT_EQ(ParseStore(u"", Serialize(TwoUsers())), TwoUsers());
  EXPECT_EQ(ParseStore(u"", Serialize(UserStore())), UserStore());
}

TEST(StoreFormatTest, IdsAreNotGivenAgainAfterReading) {
  UserStore store = TwoUsers();
  store.Remove(2);
  store = ParseStore(u"", Serialize(store));
  store.Add(StoredUser());
  EXPECT_EQ(store.Users().back().Id, 3u);
}

TEST(StoreFormatTest, EveryPrefixIsRefused) {
  const std::string bytes = Serialize(TwoUsers());
  for (std::size_t length = 0; length < bytes.size(); ++length)
    ASSERT_TRUE(IsRefused(std::string_view(bytes).substr(0, length))) << length;
}

TEST(StoreFormatTest, EveryFlippedBitIsRefused) {
  const std::string bytes = Serialize(TwoUsers());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    for (int bit = 0; bit < 8; ++bit) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
      ASSERT_TRUE(IsRefused(damaged)) << at << " " << bit;
    }
  }
}

TEST(StoreFormatTest, EveryOtherByteAtAnyPlaceIsRefused) {
  const std::string bytes = Serialize(UserStore());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    for (int change = 1; change < 256; ++change) {
      std::string damaged = bytes;
      damaged[at] = static_cast<char>(damaged[at] ^ change);
      ASSERT_TRUE(IsRefused(damaged)) << at << " " << change;
    }
  }
}

TEST(StoreFormatTest, EveryMissingOrDoubledByteIsRefused) {
  const std::string bytes = Serialize(TwoUsers());
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    ASSERT_TRUE(IsRefused(bytes.substr(0, at) + bytes.substr(at + 1))) << at;
    ASSERT_TRUE(IsRefused(bytes.substr(0, at + 1) + bytes.substr(at))) << at;
  }
}

TEST(StoreFormatTest, ASealedStoreIsRead) {
  EXPECT_FALSE(IsRefused(Sealed(kHead + UserLine("1", "anna", "0\t1"), 1)));
}

TEST(StoreFormatTest, NonsenseWithARightChecksumIsRefused) {
  const std::string anna = UserLine("1", "anna", "0\t1");
  const std::string cases[] = {
      Sealed("KorvelUsers\t2\t9\n" + anna, 1),                     // later version
      Sealed("KorvelUsers\t1\t09\n" + anna, 1),                    // not as it is written
      Sealed("KorvelUsers\t1\tx\n" + anna, 1),                     // no number
      Sealed("Something\t1\t9\n" + anna, 1),                       // another file
      Sealed(kHead + anna, 2),                                     // wrong number of users
      Sealed(kHead + anna + anna, 2),                              // the same user twice
      Sealed(kHead + anna + UserLine("2", "ANNA", "0\t1"), 2),     // names that differ in case
      Sealed(kHead + UserLine("9", "anna", "0\t1"), 1),            // id not given yet
      Sealed(kHead + UserLine("-1", "anna", "0\t1"), 1),           // negative id
      Sealed(kHead + UserLine("99999999999", "anna", "0\t1"), 1),  // out of range
      Sealed(kHead + UserLine("1", "", "0\t1"), 1),                // no name
      Sealed(kHead + UserLine("1", " anna", "0\t1"), 1),           // no name of a user
      Sealed(kHead + UserLine("1", "a\\nna", "0\t1"), 1),          // unknown escape
      Sealed(kHead + UserLine("1", "a\\u00", "0\t1"), 1),          // short escape
      Sealed(kHead + UserLine("1", "a\\u0041", "0\t1"), 1),        // escape without need
      Sealed(kHead + UserLine("1", "a\xC3", "0\t1"), 1),           // no UTF-8
      Sealed(kHead + UserLine("1", "anna", "2\t1"), 1),            // no flag
      Sealed(kHead + UserLine("1", "anna", "0"), 1),               // a field is missing
      Sealed(kHead + UserLine("1", "anna", "0\t1\t5"), 1),         // a field too many
      Sealed(kHead + UserLine("1", "anna", "0\t1", ""), 1),        // no password
      Sealed(kHead + UserLine("1", "anna", "0\t1", "0" + kHashText.substr(4)), 1),
      Sealed(kHead + UserLine("1", "anna", "0\t1", "1000:0011:" + std::string(64, '0')), 1),
      Sealed(kHead + UserLine("1", "anna", "0\t1", kHashText + "00"), 1),
      Sealed(kHead + UserLine("1", "anna", "0\t1", kHashText + " "), 1),
      Sealed(kHead + "group\t1\n", 0),  // unknown line
      Sealed(kHead + anna, 1) + "\n",   // text after the end
      "end\t0\t0000000000000000\n",
  };
  for (const std::string& bytes : cases)
    EXPECT_TRUE(IsRefused(bytes)) << bytes;
}

TEST(StoreFormatTest, ARefusalNamesFileLineAndReason) {
  try {
    ParseStore(u"users.dat", kHead + UserLine("1", "anna", "0\t1") + "group\n");
    FAIL();
  } catch (const Error& failure) {
    EXPECT_EQ(failure.Description(), u"users.dat, line 3: this is no user line");
  }
}

TEST(StoreFormatTest, RandomBytesAreRefusedOrReadAsWritten) {
  std::mt19937 random(20260101);
  const std::string valid = Serialize(TwoUsers());
  const std::string pieces[] = {kHead,      UserLine("1", "anna", "0\t1"),
                                "end\t1\t", "\t",
                                "\n",       kHashText,
                                "user\t",   "0",
                                "\\u",      "\xC3\xA4"};
  for (int run = 0; run < 30'000; ++run) {
    std::string bytes;
    const int parts = static_cast<int>(random() % 12);
    for (int i = 0; i < parts; ++i) {
      const auto kind = random() % 12;
      if (kind < 10) {
        bytes += pieces[kind];
      } else if (kind == 10) {
        bytes += static_cast<char>(random() & 0xFF);
      } else {
        bytes += valid.substr(random() % valid.size(), random() % 200);
      }
    }
    if (random() % 2 == 0) bytes = Sealed(bytes, random() % 3);
    try {
      ASSERT_EQ(Serialize(ParseStore(u"users.dat", bytes)), bytes);
    } catch (const Error& failure) {
      ASSERT_EQ(failure.Status(), runtime::kUnreadableUsers);
    }
  }
}

}  // namespace
}  // namespace krx::test
