// Name, role and state of every control of every dialog in both languages, as assistive programs
// get them; the document shows the same table.

#include <algorithm>
#include <fstream>
#include <ostream>

#include "access/AccessTest.h"
#include "platform/Differences.h"

namespace krx::drive {
namespace {

using Row = std::vector<std::string>;  // control, role, type, German, English, state
constexpr std::size_t kType = 2;
constexpr std::size_t kGerman = 3;
constexpr std::size_t kEnglish = 4;

std::string Line(const Row& row) {
  std::string line = "|";
  for (const std::string& cell : row) {
    line += ' ';
    line += cell;
    line += cell.empty() ? "|" : " |";
  }
  return line;
}

std::string Trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? ""
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

Row Cells(const std::string& line) {
  Row row;
  std::size_t at = 1;
  for (std::size_t end; (end = line.find('|', at)) != std::string::npos; at = end + 1)
    row.push_back(Trimmed(line.substr(at, end - at)));
  return row;
}

// What the document says of a dialog.
struct Dialog {
  std::string Section;  // the form's name, and its state behind a comma
  std::string Call;     // statement of the script; "@" stands for the folder
  std::string Answer;   // button that closes it
  std::vector<Row> Rows;

  std::wstring Form() const { return Widen(Section.substr(0, Section.find(','))); }
  // The control that has the keyboard at first.
  std::wstring Focus() const {
    for (const Row& row : Rows)
      if (row.back().find("focused") != std::string::npos) return Widen(row.front());
    throw std::runtime_error("nothing in " + Section + " has the focus");
  }
};

std::ostream& operator<<(std::ostream& out, const Dialog& dialog) {
  return out << dialog.Section;
}

// The words of a line that stand between backticks.
std::vector<std::string> Quoted(const std::string& line) {
  std::vector<std::string> words;
  std::size_t begin = 0;
  while ((begin = line.find('`', begin)) != std::string::npos) {
    const std::size_t end = line.find('`', begin + 1);
    words.push_back(line.substr(begin + 1, end - begin - 1));
    begin = end + 1;
  }
  return words;
}

std::vector<Dialog> Documented() {
  std::ifstream document(KRX_DOCUMENT);
  if (!document) throw std::runtime_error("there is no " KRX_DOCUMENT);
  constexpr std::ptrdiff_t kTitles = 2;  // lines at the top of a table
  std::vector<Dialog> dialogs;
  for (std::string line; std::getline(document, line);) {
    if (line.starts_with("## ")) dialogs.push_back({line.substr(3), {}, {}, {}});
    if (dialogs.empty()) continue;
    Dialog& dialog = dialogs.back();
    if (line.starts_with("`")) {
      const std::vector<std::string> words = Quoted(line);
      dialog.Call = words.at(0);
      dialog.Answer = words.at(1);
    }
    if (line.starts_with("|")) dialog.Rows.push_back(Cells(line));
  }
  for (Dialog& dialog : dialogs)
    dialog.Rows.erase(dialog.Rows.begin(), dialog.Rows.begin() + kTitles);
  return dialogs;
}

// Name, access key, and what a dialog announces besides.
std::string Words(const Element& element) {
  std::wstring words = element.Name();
  if (const std::wstring key = element.Shortcut(); !key.empty()) words += L" (" + key + L')';
  if (const std::wstring more = element.Description(); !more.empty()) words += L": " + more;
  std::replace(words.begin(), words.end(), L'\n', L' ');
  return Trimmed(Narrow(words));
}

class SpokenNames : public AccessTest, public testing::WithParamInterface<Dialog> {
 protected:
  Row Read(const Element& element) {
    const Window window = element.TheWindow();
    const std::string words = Words(element);
    // A part has neither a window with a name nor an element of the newer interface.
    if (element.IsPart())
      return {"", RoleWord(element.Role()), "", words, words, StateWords(element.State())};
    std::string type;
    if (automation_) {
      const Automation::Facts facts = automation_->Of(window);
      type = TypeWord(facts.Type);
      EXPECT_EQ(Narrow(facts.Name), Narrow(element.Name())) << Narrow(window.Name());
      EXPECT_EQ(facts.IsPassword, element.Has(STATE_SYSTEM_PROTECTED)) << Narrow(window.Name());
      EXPECT_EQ(facts.IsDialog, element.Role() == ROLE_SYSTEM_DIALOG) << Narrow(window.Name());
    }
    return {Narrow(window.Name()),      RoleWord(element.Role()), type, words, words,
            StateWords(element.State())};
  }

  // The dialog and its visible controls, in the order in which a reader finds them.
  std::vector<Row> ReadAll(const char* language) {
    std::string call = GetParam().Call;
    if (const auto at = call.find('@'); at != std::string::npos) call.replace(at, 1, Folder());
    RunUserScript("Runtime.Language = \"" + std::string(language) + "\"\r\n" + call + "\r\n");
    const Window form = Form(GetParam().Form(), GetParam().Focus());
    const Element dialog(form);
    std::vector<Row> rows{Read(dialog)};
    for (long i = 1; i <= dialog.Count(); ++i) {
      const Element inside = dialog.Inside(i);
      if (!inside.Has(STATE_SYSTEM_INVISIBLE)) rows.push_back(Read(inside));
    }
    Leave(form, Widen(GetParam().Answer));
    EXPECT_EQ(Printed(), Lines{"end"});
    return rows;
  }

  void SetUp() override {
    AccessTest::SetUp();
    automation_.emplace();
    const bool available = static_cast<bool>(*automation_);
    EXPECT_EQ(available, test::Expected(test::kAutomationClient, true, false));
    if (!available) automation_.reset();
  }
  void TearDown() override {
    automation_.reset();
    AccessTest::TearDown();
  }

  std::optional<Automation> automation_;
};

TEST_P(SpokenNames, AreThoseOfTheTable) {
  const std::vector<Row> german = ReadAll("de");
  std::vector<Row> rows = ReadAll("en");
  ASSERT_EQ(rows.size(), german.size());
  const std::vector<Row>& documented = GetParam().Rows;
  std::string table;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    Row& row = rows[i];
    row[kGerman] = german[i][kGerman];
    if (!automation_ && i < documented.size()) row[kType] = documented[i].at(kType);
    Row same = german[i];
    same[kType] = row[kType];
    same[kEnglish] = row[kEnglish];
    EXPECT_EQ(Line(same), Line(row)) << "only words differ between the languages";
    table += Line(row) + '\n';
  }
  EXPECT_TRUE(rows == documented) << "seen of " << GetParam().Section << ":\n" << table;
}

INSTANTIATE_TEST_SUITE_P(OfEveryDialog, SpokenNames, testing::ValuesIn(Documented()),
                         [](const auto& test) {
                           std::string name = test.param.Section;
                           std::erase_if(name, [](char c) { return c == ',' || c == ' '; });
                           return name;
                         });

}  // namespace
}  // namespace krx::drive
