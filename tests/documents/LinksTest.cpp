// Every link of the documents leads somewhere: to a file of the checkout and to a place on its
// page.

#include <gtest/gtest.h>

#include <algorithm>

#include "documents/Checkout.h"
#include "documents/Markdown.h"

namespace krx::tests {
namespace {

namespace fs = std::filesystem;

// What is wrong with a link on a page of the checkout; empty when it leads somewhere.
std::string Complaint(const fs::path& page, const std::string& link) {
  if (link.find("://") != std::string::npos) return {};
  const auto hash = link.find('#');
  const std::string path = link.substr(0, hash);
  const fs::path file = path.empty() ? page : (page.parent_path() / path).lexically_normal();
  if (!fs::exists(Checkout() / file)) return link + " leads to no file";
  if (file.generic_string().starts_with("..")) return link + " leads out of the checkout";
  if (hash == std::string::npos) return {};
  const auto places = Markdown::Read(Checkout() / file).Anchors();
  const bool there = std::find(places.begin(), places.end(), link.substr(hash + 1)) != places.end();
  return there ? "" : link + " leads to no place on its page";
}

std::string NameOf(const std::string& file) {
  std::string name = file.substr(0, file.size() - 3);
  std::replace_if(
      name.begin(), name.end(), [](char sign) { return !std::isalnum(sign); }, '_');
  return name;
}

class Links : public ::testing::TestWithParam<std::string> {};

TEST_P(Links, LeadSomewhere) {
  for (const std::string& link : Markdown::Read(Checkout() / GetParam()).Links())
    EXPECT_EQ(Complaint(GetParam(), link), "");
}

INSTANTIATE_TEST_SUITE_P(Of, Links, ::testing::ValuesIn(MarkdownFiles(Checkout())),
                         [](const auto& test) { return NameOf(test.param); });

TEST(Documents, AreFound) {
  const auto files = MarkdownFiles(Checkout());
  for (const char* known : {"README.md", "CONTRIBUTING.md", "docs/manual.md", "examples/README.md",
                            "docs/reference/de/KRUser.md"})
    EXPECT_NE(std::find(files.begin(), files.end(), known), files.end()) << known;
}

TEST(LinkChecks, ComplainOfMissingFilesAndPlaces) {
  EXPECT_EQ(Complaint("README.md", "docs/manual.md#settings"), "");
  EXPECT_EQ(Complaint("docs/manual.md", "#settings"), "");
  EXPECT_EQ(Complaint("docs/manual.md", "../README.md"), "");
  EXPECT_EQ(Complaint("README.md", "docs/missing.md"), "docs/missing.md leads to no file");
  EXPECT_EQ(Complaint("README.md", "docs/manual.md#missing"),
            "docs/manual.md#missing leads to no place on its page");
}

TEST(MarkdownPages, HaveLinksOutsideOfCodeOnly) {
  const Markdown page(
      "[a\nb](x.md) ![p](y.png)\n`[c](no.md)`\n```\n[d](no.md)\n```\n[e](z.md#f)\n");
  EXPECT_EQ(page.Links(), (std::vector<std::string>{"x.md", "y.png", "z.md#f"}));
}

TEST(MarkdownPages, NameTheirPlacesAsTheWebDoes) {
  const Markdown page("# A `Code` & more\n## \u00DCber uns\n```\n# no\n```\n## \u00DCber uns\n");
  EXPECT_EQ(page.Anchors(),
            (std::vector<std::string>{"a-code--more", "\u00FCber-uns", "\u00FCber-uns-1"}));
  EXPECT_EQ(page.Title(), "A Code & more");
}

}  // namespace
}  // namespace krx::tests
