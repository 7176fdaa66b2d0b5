#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "driver/Client.h"
#include "driver/Input.h"
#include "driver/Texts.h"
#include "driver/Window.h"

namespace krx::drive {

using Lines = std::vector<std::string>;

// The statement of a script that opens a box of this style and prints its result.
std::string Ask(int style);

// Base of the tests: one client program in its own process and the dialogs that it opens one after
// the other. A dialog left open by a test is an error of the test.
class DialogTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Starts a script client that has `Dialogs` (English texts) and `Runtime` at hand.
  void RunScript(const std::string& body);
  // Starts a client program that lies beside the tests.
  void RunProgram(const std::string& arguments);
  void RunCommand(const std::wstring& command_line);
  // Starts a script as it stands.
  void RunPlainScript(const std::string& text, const wchar_t* extension = L".vbs");

  // The next message box of the client, active and with its focus set.
  Window NextBox();
  // Waits for the client's end and returns what it printed; it has to end with code 0.
  Lines Printed();

  Client& TheClient() { return *client_; }

 private:
  std::string Said();

  std::optional<ScriptFile> script_;
  std::unique_ptr<Client> client_;
  HWND last_ = nullptr;
};

// Shown text of a control without the marks of access keys.
std::wstring Shown(const Window& control);

// Names of the visible answer buttons and the help button, from left to right.
std::vector<std::wstring> VisibleButtons(const Window& box);

}  // namespace krx::drive
