// Every public member has a page in both languages, which tells the same as the interface
// description.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "documents/Checkout.h"
#include "documents/Interface.h"
#include "documents/Markdown.h"

namespace krx::tests {
namespace {

// The words that the pages of a language use.
struct Language {
  std::string Folder;
  std::string HelpContext, Id, Required;
  std::string Value, Parameters, Result, Behaviour, Errors, Example, Values;
};

void PrintTo(const Language& language, std::ostream* out) {
  *out << language.Folder;
}

const Language kLanguages[] = {
    {"de", "Hilfekontext", "Dispatch-Kennung", "n\u00F6tig", "Wert", "Parameter", "Ergebnis",
     "Verhalten", "Fehler", "Beispiel", "Werte"},
    {"en", "Help context", "Dispatch identifier", "required", "Value", "Parameters", "Result",
     "Behaviour", "Errors", "Example", "Values"},
};

std::string Description() {
  return ReadText(Checkout() / "src/automation/KRXDialogs.idl");
}

// A page of the reference and what its tables tell.
struct Page {
  Page(const Language& language, const std::string& name)
      : Words(language),
        Text(Markdown::Read(Checkout() / "docs/reference" / language.Folder / (name + ".md"))) {}

  // What the table at the top says behind a word.
  std::string Fact(const std::string& word) const {
    for (const auto& row : TableRows(Head()))
      if (row.size() == 2 && row[0] == word) return row[1];
    return {};
  }
  std::string Head() const {
    const std::string whole = ReadText(File());
    return whole.substr(0, whole.find("\n## "));
  }
  std::filesystem::path File() const {
    return Checkout() / "docs/reference" / Words.Folder / (Text.Title() + ".md");
  }

  const Language& Words;
  Markdown Text;
};

class Reference : public ::testing::TestWithParam<std::tuple<Member, Language>> {
 protected:
  const Member& TheMember() const { return std::get<0>(GetParam()); }
  const Language& Words() const { return std::get<1>(GetParam()); }

  void ExpectParameters(const Page& page) const {
    std::vector<Parameter> told;
    for (const auto& row : TableRows(page.Text.Section(Words().Parameters))) {
      if (row.size() != 5) continue;  // the values of a parameter have a table of their own
      told.push_back({row[0], row[1], row[3] == Words().Required ? "" : row[3]});
      EXPECT_NE(row[2], "") << row[0] << " has no unit";
      EXPECT_NE(row[4], "") << row[0] << " has no meaning";
    }
    EXPECT_EQ(told, TheMember().Parameters);
  }

  // A table of one row: the type and two cells that say something.
  void ExpectType(const std::string& section) const {
    const auto rows = TableRows(section);
    ASSERT_EQ(rows.empty(), TheMember().Result.empty());
    if (rows.empty()) return;
    ASSERT_EQ(rows[0].size(), 3u);
    EXPECT_EQ(rows[0][0], TheMember().Result);
    EXPECT_NE(rows[0][1], "");
    EXPECT_NE(rows[0][2], "");
  }
};

TEST_P(Reference, NamesTheMemberAsTheInterfaceDoes) {
  const Page page(Words(), TheMember().Name);
  EXPECT_EQ(page.Text.Title(), TheMember().Name);
  EXPECT_EQ(page.Fact(Words().HelpContext), std::to_string(TheMember().HelpContext));
  EXPECT_EQ(page.Fact(Words().Id), std::to_string(TheMember().Id));
}

TEST_P(Reference, TellsTypesUnitsAndDefaults) {
  const Page page(Words(), TheMember().Name);
  if (TheMember().IsProperty) {
    ExpectType(page.Text.Section(Words().Value));
  } else {
    ExpectParameters(page);
    ExpectType(page.Text.Section(Words().Result));
  }
}

TEST_P(Reference, HasEverySection) {
  const Page page(Words(), TheMember().Name);
  std::vector<std::string> sections{Words().Behaviour, Words().Errors, Words().Example};
  if (TheMember().IsProperty)
    sections.push_back(Words().Value);
  else
    sections.insert(sections.end(), {Words().Parameters, Words().Result});
  for (const std::string& section : sections)
    EXPECT_GT(page.Text.Section(section).size(), std::string("\n\n\n").size()) << section;
}

TEST_P(Reference, HasAnExampleThatUsesTheMember) {
  const Page page(Words(), TheMember().Name);
  const auto examples = Markdown(page.Text.Section(Words().Example)).Code("vbscript");
  ASSERT_EQ(examples.size(), 1u);
  EXPECT_NE(examples[0].find("dialogs." + TheMember().Name), std::string::npos);
}

TEST_P(Reference, LeadsToTheOtherLanguage) {
  const Page page(Words(), TheMember().Name);
  const auto links = page.Text.Links();
  const std::string other = Words().Folder == "de" ? "en" : "de";
  const std::string target = "../" + other + "/" + TheMember().Name + ".md";
  EXPECT_NE(std::find(links.begin(), links.end(), target), links.end()) << target;
}

INSTANTIATE_TEST_SUITE_P(Of, Reference,
                         ::testing::Combine(::testing::ValuesIn(Members(Description())),
                                            ::testing::ValuesIn(kLanguages)),
                         [](const auto& test) {
                           return std::get<0>(test.param).Name + "_" +
                                  std::get<1>(test.param).Folder;
                         });

class ReferenceIn : public ::testing::TestWithParam<Language> {};

TEST_P(ReferenceIn, HasAPageForEachMemberAndNoOther) {
  const auto folder = Checkout() / "docs/reference" / GetParam().Folder;
  std::set<std::string> expected{"README.md", "KRMsgBoxResult.md"};
  for (const Member& member : Members(Description()))
    expected.insert(member.Name + ".md");
  std::set<std::string> found;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    found.insert(entry.path().filename().string());
  EXPECT_EQ(found, expected);
  const auto listed = Markdown::Read(folder / "README.md").Links();
  for (const std::string& page : expected)
    EXPECT_TRUE(page == "README.md" ||
                std::find(listed.begin(), listed.end(), page) != listed.end())
        << page << " is not in the contents";
}

TEST_P(ReferenceIn, ListsTheResultsWithTheirValues) {
  const Enumeration results = ReadEnumeration(Description());
  const Page page(GetParam(), results.Name);
  EXPECT_EQ(page.Fact(GetParam().HelpContext), std::to_string(results.HelpContext));
  std::vector<std::pair<std::string, std::string>> told;
  for (const auto& row : TableRows(page.Text.Section(GetParam().Values)))
    told.emplace_back(row.at(0), row.at(1));
  EXPECT_EQ(told, results.Values);
}

INSTANTIATE_TEST_SUITE_P(Language, ReferenceIn, ::testing::ValuesIn(kLanguages),
                         [](const auto& test) { return test.param.Folder; });

TEST(Interface, HasSixPropertiesAndFourteenMethods) {
  const auto members = Members(Description());
  ASSERT_EQ(members.size(), 20u);
  EXPECT_EQ(std::count_if(members.begin(), members.end(),
                          [](const Member& member) { return member.IsProperty; }),
            6);
  const Member& box = members[7];
  EXPECT_EQ(box.Name, "KRMsgBox");
  EXPECT_EQ(box.Parameters, (std::vector<Parameter>{{"Text", "String", ""},
                                                    {"Style", "Long", "0"},
                                                    {"Title", "String", "\"\""},
                                                    {"HelpFile", "String", "\"\""},
                                                    {"Context", "Long", "0"}}));
  EXPECT_EQ(box.Result, "Long");
}

// The help file has one page for each number.
TEST(Interface, HasAContextOfItsOwnForEachMember) {
  std::set<int> contexts{ReadEnumeration(Description()).HelpContext};
  for (const Member& member : Members(Description()))
    EXPECT_TRUE(contexts.insert(member.HelpContext).second) << member.Name;
}

}  // namespace
}  // namespace krx::tests
