// The gallery shows every dialog of the reference in both languages, on both kinds of screens.

#include <gtest/gtest.h>

#include <set>

#include "documents/Checkout.h"
#include "documents/Markdown.h"

namespace krx::tests {
namespace {

// Names of the forms that the reference tells of.
std::set<std::string> Forms() {
  std::set<std::string> forms;
  for (const auto& entry : std::filesystem::directory_iterator(Checkout() / "docs/reference/en"))
    for (const auto& row : TableRows(ReadText(entry.path())))
      if (row.size() == 2 && row[0] == "Form" && row[1].starts_with("F")) forms.insert(row[1]);
  return forms;
}

TEST(Gallery, ShowsEveryDialogInEveryWay) {
  std::set<std::string> expected{"pictures/demo.gif"};
  for (const std::string& form : Forms())
    for (const char* language : {"de", "en"})
      for (const char* screen : {"desktop", "panel"})
        for (const char* resolution : {"96", "192"})
          expected.insert("pictures/gallery/" + form + "-" + language + "-" + screen + "-" +
                          resolution + ".png");
  constexpr std::size_t kForms = 11;
  EXPECT_EQ(expected.size(), 1 + kForms * 2 * 2 * 2);
  for (const char* form : {"FMessageBox", "FLogOnCombo", "FFileSelect", "FFileSelectTouch"})
    for (const char* theme : {"dark", "grey", "high-contrast"})
      expected.insert(std::string("pictures/gallery/") + form + "-" + theme + ".png");
  for (const char* sheet : {"beside", "before-after"})
    expected.insert(std::string("pictures/") + sheet + ".png");
  const auto links = Markdown::Read(Checkout() / "docs/gallery.md").Links();
  EXPECT_EQ(std::set<std::string>(links.begin(), links.end()), expected);
}

TEST(Gallery, HasNoOtherPictures) {
  const auto links = Markdown::Read(Checkout() / "docs/gallery.md").Links();
  const std::set<std::string> shown(links.begin(), links.end());
  for (const auto& entry :
       std::filesystem::directory_iterator(Checkout() / "docs/pictures/gallery"))
    EXPECT_TRUE(shown.contains("pictures/gallery/" + entry.path().filename().string()))
        << entry.path();
}

}  // namespace
}  // namespace krx::tests
