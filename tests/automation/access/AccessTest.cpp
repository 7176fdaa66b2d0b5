#include "access/AccessTest.h"

namespace krx::drive {

void AccessTest::SetUp() {
  UsersTest::SetUp();
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  Tree.emplace();
  for (const StringView folder : {u"Alpha", u"Logs", u"Logs\\Old", u"Zeta"})
    Tree->AddFolder(folder);
  for (const StringView file : {u"notes.txt", u"plan.bmp", u"readme.txt"})
    Tree->AddFile(file);
}

void AccessTest::TearDown() {
  UsersTest::TearDown();
  CoUninitialize();
}

std::string AccessTest::Folder() const {
  return '"' + ToUtf8(Tree->Path()) + '"';
}

void AccessTest::Leave(const Window& form, const std::wstring& key) {
  Control(form, key).PressToEnd();
  form.WaitUntilGone();
}

}  // namespace krx::drive
