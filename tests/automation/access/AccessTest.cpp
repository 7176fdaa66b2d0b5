#include "access/AccessTest.h"

namespace krx::drive {

void AccessTest::SetUp() {
  UsersTest::SetUp();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Tree.emplace();
}

void AccessTest::TearDown() {
  UsersTest::TearDown();
  CoUninitialize();
}

std::string AccessTest::Folder() const {
  return ScriptLiteral(Tree->WidePath());
}

void AccessTest::Leave(const Window& form, const std::wstring& key) {
  Control(form, key).PressToEnd();
  form.WaitUntilGone();
}

}  // namespace krx::drive
