#include "Plant.h"

#include <KorvelRuntime.h>
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include "client/Dialogs.h"
#include "driver/Window.h"

namespace krx::pictures {

namespace {

namespace fs = std::filesystem;

struct Person {
  const wchar_t* Name;
  const wchar_t* FullName;
  const wchar_t* Comment;
  const wchar_t* Class;
  long State;
};

constexpr Person kPeople[] = {
    {L"Berger", L"Karin Berger", L"Shift A", L"Operator", 0},
    {L"J\u00FCrgens", L"Ole J\u00FCrgens", L"Shift A, line 2", L"Operator", 1},
    {L"Lang", L"Ute Lang", L"", L"Operator", 3},
    {L"Vogel", L"Nils Vogel", L"Shift B", L"Administrator", 0},
};
static_assert(std::size(kPeople) + 1 == kUsers);

}  // namespace

PlantFolder::PlantFolder() {
  fs::remove_all(kPlant);
  const fs::path line(kLine);
  for (const wchar_t* const name : {L"Batches", L"Logs", L"M\u00FChle", L"Recipes", L"Trends"})
    fs::create_directories(line / name);
  fs::create_directories(line / "Logs" / "Old");
  fs::create_directories(fs::path(kRecipes) / "Archive");
  for (const wchar_t* const name :
       {L"Bread.rcp", L"Malt.rcp", L"Rye 70.rcp", L"Wei\u00DFbrot.rcp", L"notes.txt"})
    std::ofstream(fs::path(kRecipes) / name) << "x";
  for (const wchar_t* const name : {L"Malt.rcp", L"Rye 70.rcp", L"notes.txt"})
    std::ofstream(line / name) << "x";
}

PlantFolder::~PlantFolder() {
  std::error_code ignored;
  fs::remove_all(kPlant, ignored);
}

void CreateUsers() {
  using client::BasicString;
  com::ComPtr<IUserAdministration> users;
  CoCreateInstance(__uuidof(UserAdministration), nullptr, CLSCTX_INPROC_SERVER,
                   __uuidof(IUserAdministration), users.PutVoid());
  if (!users) throw std::runtime_error("there is no user administration");
  for (const Person& person : kPeople) {
    LONG result = -1;
    users->CreateUser(BasicString(person.Name), BasicString(person.FullName),
                      BasicString(person.Comment), BasicString(L"Line-seven-26!"),
                      BasicString(person.Class), 0, person.State, &result);
    if (result != 0)
      throw std::runtime_error("user " + drive::Narrow(person.Name) +
                               " is refused: " + std::to_string(result));
  }
}

}  // namespace krx::pictures
