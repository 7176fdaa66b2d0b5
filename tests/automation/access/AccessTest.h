#pragma once

#include <optional>
#include <string>

#include "access/Reader.h"
#include "files/SampleTree.h"
#include "users/UsersTest.h"

namespace krx::drive {

// Base of the tests that look at the dialogs as assistive programs do, from a process of their own:
// users, and a tree of folders.
class AccessTest : public UsersTest {
 protected:
  void SetUp() override;
  void TearDown() override;

  // The tree as a literal of the script.
  std::string Folder() const;

  static Element Control(const Window& form, const std::wstring& name) {
    return Element(form.Child(name));
  }
  // Presses a button without mouse and keyboard and waits until the form has gone.
  static void Leave(const Window& form, const std::wstring& key);

  std::optional<test::SampleTree> Tree;
};

}  // namespace krx::drive
