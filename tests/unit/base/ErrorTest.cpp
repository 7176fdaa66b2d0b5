#include "base/Error.h"

#include <gtest/gtest.h>

namespace krx {

TEST(Error, CarriesStatusDescriptionAndSource) {
  const Error error(0x80004005u, u"Grün", u"Service");
  EXPECT_EQ(error.Status(), 0x80004005u);
  EXPECT_EQ(error.Description(), u"Grün");
  EXPECT_EQ(error.Source(), u"Service");
  EXPECT_STREQ(error.what(), "Gr\xC3\xBCn");
}

TEST(Error, SourceIsTheLibraryUnlessNamed) {
  EXPECT_EQ(Error(1, u"").Source(), u"KRXDialogs");
}

TEST(Error, RuntimeErrorsCountFromTheirBase) {
  EXPECT_EQ(RuntimeError(5, u"d").Status(), 0x800A0005u);
  EXPECT_EQ(RuntimeError(5, u"d").Description(), u"d");
  EXPECT_EQ(TypeMismatch().Status(), 0x800A000Du);  // 13
  EXPECT_EQ(ObjectNotSet().Status(), 0x800A005Bu);  // 91
}

TEST(Error, NamedErrorsDescribeThemselves) {
  EXPECT_FALSE(TypeMismatch().Description().empty());
  EXPECT_FALSE(ObjectNotSet().Description().empty());
}

}  // namespace krx
