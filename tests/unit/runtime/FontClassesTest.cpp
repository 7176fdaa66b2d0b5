#include "runtime/core/FontClasses.h"

#include <gtest/gtest.h>

namespace krx::runtime {
namespace {

struct Expected {
  StringView Name;
  float Size;
  int Weight;
};

TEST(FontClasses, HoldTheFourClassesOfTheDialogsForDesktopAndPanel) {
  const Expected expected[] = {
      {u"KRDialogsCaption", 9, 700}, {u"KRDialogsText", 9, 400},   {u"KRDialogsButton", 9, 400},
      {u"KRDialogsInput", 9, 400},   {u"KRPanelCaption", 14, 700}, {u"KRPanelText", 14, 400},
      {u"KRPanelButton", 16, 400},   {u"KRPanelInput", 16, 400},
  };
  EXPECT_EQ(std::size(expected), FontClasses().size());
  for (const Expected& row : expected) {
    const FontClass& found = FontClassOf(row.Name);
    EXPECT_EQ(row.Name, found.Name);
    EXPECT_EQ(row.Size, found.Size) << ToUtf8(row.Name);
    EXPECT_EQ(row.Weight, found.Weight) << ToUtf8(row.Name);
  }
}

TEST(FontClasses, AnswerAnUnknownNameWithTheTextClass) {
  for (const StringView name :
       {u"", u"Unknown", u"krdialogscaption", u"KRDialogsCaption ", u"KR"}) {
    EXPECT_EQ(u"KRDialogsText", FontClassOf(name).Name) << ToUtf8(name);
  }
}

TEST(FontClasses, TakeTheFaceOfTheSystemAndKeepSizeAndWeight) {
  const Font font = FontOf(FontClassOf(u"KRPanelCaption"), u"Segoe UI");
  EXPECT_EQ(u"Segoe UI", font.Name);
  EXPECT_EQ(14, font.Size);
  EXPECT_EQ(700, font.Weight);
  EXPECT_FALSE(font.Italic || font.Underline || font.Strikethrough);
}

}  // namespace
}  // namespace krx::runtime
