#pragma once

#include <functional>
#include <string>
#include <vector>

#include "client/Dialogs.h"

namespace krx::bench {

// A method of the component, called as a client calls it.
struct Method {
  enum class Of { Messages, Users, Files };

  std::string Name;
  Of Kind;
  int FewestRows;  // that a list of the dialog has at least in the folder that is measured
  std::function<HRESULT(IKRXDialog&)> Open;
};

constexpr int kUsers = 10;
constexpr int kFiles = 100;
constexpr int kFolders = 10;

inline constexpr const wchar_t* kMessage = L"The recipe has changed. Save it before closing?";
inline constexpr const wchar_t* kTitle = L"Recipe";

// All methods that open a dialog; the folder holds kFiles text files and kFolders folders. Throws
// where the component describes others.
std::vector<Method> Methods(const std::wstring& folder);

// The platform's own boxes with the same question.
void ShowMessageBox();
void ShowTaskDialog();

}  // namespace krx::bench
