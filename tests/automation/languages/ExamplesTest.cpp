// The examples that this platform can run: the same small plant in several languages, with the same
// dialogs and the same words.

#include <fstream>

#include "driver/List.h"
#include "users/UsersTest.h"

namespace krx::drive {
namespace {

// The folder that the examples name, as long as a test needs it; what else lies there is left
// alone.
class RecipeFolder {
 public:
  RecipeFolder() {
    std::filesystem::create_directories(kFolder);
    for (const wchar_t* name : kNames)
      std::ofstream(kFolder / name) << "flour";
  }
  ~RecipeFolder() {
    std::error_code ignored;
    for (const wchar_t* name : kNames)
      std::filesystem::remove(kFolder / name, ignored);
    std::filesystem::remove(kFolder, ignored);
    std::filesystem::remove(kFolder.parent_path(), ignored);
  }
  RecipeFolder(const RecipeFolder&) = delete;
  RecipeFolder& operator=(const RecipeFolder&) = delete;

 private:
  inline static const std::filesystem::path kFolder = L"C:\\Plant\\Recipes";
  static constexpr const wchar_t* kNames[] = {L"bread.rcp", L"cake.rcp", L"readme.txt"};
};

std::wstring Script(const char* file) {
  return L"cscript.exe //nologo " + Widen(std::string(KRX_EXAMPLES "/") + file);
}

std::wstring Program(const wchar_t* file) {
  return (ProgramFolder() / file).wstring();
}

struct Language {
  const char* Name;
  std::wstring Command;
};

class Plant : public UsersTest, public ::testing::WithParamInterface<Language> {
 protected:
  void Run() { RunCommand(GetParam().Command); }

  // Logs on and comes to the question.
  Window Question() {
    Run();
    LogOn(kOperator, kPassword);
    return NextBox();
  }
  // Answers it with mixer B and comes to the file dialog.
  Window FileDialog() {
    Question().Child(L"keyButton(1)").Click();
    return Form(L"FFileSelect", L"txtFileName");
  }

  RecipeFolder recipes_;
};

TEST_P(Plant, LogsOnAsksChoosesARecipeAndShowsWhoDidIt) {
  const Window box = Question();
  EXPECT_EQ(box.Text(), L"Next batch");
  EXPECT_EQ(box.Child(L"idxMessage").Text(), L"Which mixer takes the next batch?");
  std::vector<std::wstring> answers;
  for (const std::wstring& key : VisibleButtons(box))
    answers.push_back(Shown(box.Child(key)));
  EXPECT_EQ(answers, (std::vector<std::wstring>{L"Mixer A", L"Mixer B", L"None"}));
  box.Child(L"keyButton(0)").Click();
  const Window form = Form(L"FFileSelect", L"txtFileName");
  EXPECT_EQ(form.Text(), L"Recipe for mixer A");
  EXPECT_EQ(form.Child(L"cboFileType(0)").Text(), L"Recipes");
  EXPECT_FALSE(form.Child(L"drvSelect").Enabled()) << "the operator may leave the recipes";
  const List files(form, L"filSelect");
  files.WaitForCount(2);
  files.Click(files.Find(L"bread.rcp"));
  form.Child(L"txtFileName").WaitForText(L"bread.rcp");
  form.Child(L"keyOK").Click();
  const Window who = Form(L"FWhoAmI", L"keyOK");
  EXPECT_EQ(who.Child(L"txtName").Text(), kOperator);
  who.Child(L"keyOK").Click();
  EXPECT_EQ(Printed(), Lines{"Loaded into mixer A: C:\\Plant\\Recipes\\bread.rcp"});
}

TEST_P(Plant, EndsWhenNobodyLogsOn) {
  Run();
  Form(L"FLogOn", L"txtName");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"Nobody has logged on."});
}

TEST_P(Plant, EndsWhenTheQuestionIsLeftByEsc) {
  Question();
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"No mixer has been chosen."});
}

TEST_P(Plant, EndsWithoutARecipe) {
  EXPECT_EQ(FileDialog().Text(), L"Recipe for mixer B");
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), Lines{"No recipe has been chosen."});
}

TEST_P(Plant, TellsWhyItStopsAndFails) {
  Store.emplace("not a rule\n");
  Store->Use();
  Run();
  LogOn(kOperator, kPassword);
  EXPECT_EQ(TheClient().Finish(), 1u);
  const Lines said = TheClient().Lines();
  ASSERT_EQ(said.size(), 1u);
  EXPECT_TRUE(said.front().starts_with("The plant stops: ")) << said.front();
  EXPECT_NE(said.front().find("users.conf, line 2"), std::string::npos) << said.front();
}

INSTANTIATE_TEST_SUITE_P(In, Plant,
                         ::testing::Values(Language{"VBScript", Script("vbscript/plant.vbs")},
                                           Language{"JScript", Script("jscript/plant.js")},
                                           Language{"CPlusPlus", Program(L"plant_cpp.exe")},
                                           Language{"Pascal", Program(L"plant_pascal.exe")}),
                         [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace krx::drive
