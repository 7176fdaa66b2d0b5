#include "ports/win32/Paths.h"

#include <gtest/gtest.h>

namespace krx::test {

namespace {

struct Case {
  StringView Path;
  StringView Expected;
  StringView Current = u"C:\\Plant\\Recipes";
};

TEST(Paths, EveryPathBecomesAnAbsoluteOneThatTheSystemTakesLiterally) {
  const Case cases[] = {
      {u"D:\\Data\\Logs", u"\\\\?\\D:\\Data\\Logs"},
      {u"d:\\Data", u"\\\\?\\d:\\Data"},
      {u"D:\\Data\\", u"\\\\?\\D:\\Data"},
      {u"D:\\\\Data\\\\\\Logs", u"\\\\?\\D:\\Data\\Logs"},
      {u"D:/Data/Logs", u"\\\\?\\D:\\Data\\Logs"},
      {u"D:\\Data\\.\\Logs", u"\\\\?\\D:\\Data\\Logs"},
      {u"D:\\Data\\..\\Logs", u"\\\\?\\D:\\Logs"},
      {u"D:\\..\\..\\Logs", u"\\\\?\\D:\\Logs"},
      {u"D:\\Data.\\Logs ", u"\\\\?\\D:\\Data.\\Logs "},
      {u"D:\\...\\ ..", u"\\\\?\\D:\\...\\ .."},
      {u"D:\\CON\\nul.txt", u"\\\\?\\D:\\CON\\nul.txt"},
      {u"\\\\server\\share", u"\\\\?\\UNC\\server\\share\\"},
      {u"\\\\server\\share\\a\\..\\..\\..\\b", u"\\\\?\\UNC\\server\\share\\b"},
      {u"//server/share/a", u"\\\\?\\UNC\\server\\share\\a"},
      {u"\\\\?\\D:\\a.\\..\\b ", u"\\\\?\\D:\\a.\\..\\b "},
      {u"\\\\?\\D:", u"\\\\?\\D:\\"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ToUtf8(win32::SystemPath(c.Path, c.Current)), ToUtf8(c.Expected)) << ToUtf8(c.Path);
}

TEST(Paths, ABareDriveIsItsRootAndNeverTheCurrentFolderThere) {
  EXPECT_EQ(win32::SystemPath(u"C:", u"C:\\Plant"), u"\\\\?\\C:\\");
  EXPECT_EQ(win32::SystemPath(u"C:Data", u"C:\\Plant"), u"\\\\?\\C:\\Data");
}

TEST(Paths, WhatNamesNoDriveBeginsAtTheCurrentFolder) {
  const Case cases[] = {
      {u"Data", u"\\\\?\\C:\\Plant\\Recipes\\Data"},
      {u"..", u"\\\\?\\C:\\Plant"},
      {u".", u"\\\\?\\C:\\Plant\\Recipes"},
      {u"\\Data", u"\\\\?\\C:\\Data"},
      {u"Data", u"\\\\?\\C:\\Data", u"C:\\"},
      {u"Data", u"\\\\?\\UNC\\server\\share\\Data", u"\\\\server\\share"},
      {u"\\Data", u"\\\\?\\UNC\\server\\share\\Data", u"\\\\server\\share\\Plant"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(ToUtf8(win32::SystemPath(c.Path, c.Current)), ToUtf8(c.Expected)) << ToUtf8(c.Path);
}

TEST(Paths, NamesAreKeptUnitByUnit) {
  const String lone{u'D', u':', u'\\', 0xD800, u'a', 0xDC00};
  EXPECT_EQ(win32::SystemPath(lone, u"C:\\"), u"\\\\?\\" + lone);
  const String longest = u"D:\\" + String(32000, u'x');
  EXPECT_EQ(win32::SystemPath(longest, u"C:\\"), u"\\\\?\\" + longest);
}

TEST(Paths, WhatCannotNameAnythingHasNoPath) {
  for (const StringView path :
       {StringView(), StringView(u"\\\\server"), StringView(u"\\\\"), StringView(u"D:\\a\0b", 6)})
    EXPECT_EQ(win32::SystemPath(path, u"C:\\"), u"") << ToUtf8(path);
}

TEST(Paths, TheRootOfAPathIsThatOfItsDriveOrShare) {
  EXPECT_EQ(win32::RootOf(u"\\\\?\\C:\\"), u"\\\\?\\C:\\");
  EXPECT_EQ(win32::RootOf(u"\\\\?\\C:\\Data\\Logs"), u"\\\\?\\C:\\");
  EXPECT_EQ(win32::RootOf(u"\\\\?\\UNC\\server\\share\\"), u"\\\\?\\UNC\\server\\share\\");
  EXPECT_EQ(win32::RootOf(u"\\\\?\\UNC\\server\\share\\a\\b"), u"\\\\?\\UNC\\server\\share\\");
}

}  // namespace

}  // namespace krx::test
