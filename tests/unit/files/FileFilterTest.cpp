#include "files/FileFilter.h"

#include <gtest/gtest.h>

namespace krx::test {
namespace {

using files::FileTypes;
using files::LastPass;
using files::ParseFilter;

TEST(FileFilterTest, HalvesAreRoundedToTheEvenNeighbour) {
  const std::size_t expected[] = {0, 0, 1, 2, 2, 2, 3, 4, 4, 4};
  for (std::size_t highest = 0; highest < std::size(expected); ++highest) {
    EXPECT_EQ(LastPass(highest), expected[highest]) << highest;
  }
}

TEST(FileFilterTest, CompletePairsLineUpAndATrailingDescriptionStandsAlone) {
  String filter;
  for (std::size_t fields = 1; fields <= 9; ++fields) {
    if (fields > 1) filter += u'|';
    filter += ToString(static_cast<int>(fields));
    const FileTypes types = ParseFilter(filter);
    // Fields 1, 3, 5 ... are descriptions, 2, 4, 6 ... patterns.
    ASSERT_EQ(types.Descriptions.size(), (fields + 1) / 2) << fields;
    ASSERT_EQ(types.Patterns.size(), fields / 2) << fields;
    for (std::size_t i = 0; i < types.Descriptions.size(); ++i)
      EXPECT_EQ(types.Descriptions[i], ToString(static_cast<int>(2 * i + 1)));
    for (std::size_t i = 0; i < types.Patterns.size(); ++i)
      EXPECT_EQ(types.Patterns[i], ToString(static_cast<int>(2 * i + 2)));
  }
}

TEST(FileFilterTest, TheEmptyFilterIsOneEmptyDescription) {
  const FileTypes types = ParseFilter(u"");
  EXPECT_EQ(types.Descriptions, std::vector<String>{u""});
  EXPECT_TRUE(types.Patterns.empty());
}

TEST(FileFilterTest, EmptyFieldsCount) {
  const FileTypes types = ParseFilter(u"||");
  EXPECT_EQ(types.Descriptions, (std::vector<String>{u"", u""}));
  EXPECT_EQ(types.Patterns, std::vector<String>{u""});
}

}  // namespace
}  // namespace krx::test
