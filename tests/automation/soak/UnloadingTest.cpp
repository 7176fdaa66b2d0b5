// Lets the component go while its background work is still busy.

#include <gtest/gtest.h>
#include <windows.h>

#include "FolderTree.h"
#include "client/Dialogs.h"
#include "driver/Wait.h"
#include "soak/Forms.h"

namespace krx::soak {
namespace {

constexpr int kFiles = 100000;  // their reading takes a multiple of opening the dialog
constexpr int kRounds = 5;
constexpr int kMostRounds = 100;  // until one has shown a reading that outlives its dialog

bool Loaded() {
  return GetModuleHandleW(L"KRXDialogs.dll") != nullptr;
}

void CALLBACK CancelForm(HWND, UINT, UINT_PTR, DWORD) {
  if (const HWND key = ControlOnShow(L"keyCancel")) Click(key);
}

HRESULT OpenAndCancel(const client::BasicString& folder) {
  const client::Automation automation;
  client::Dialogs dialogs;
  if (!dialogs) return E_FAIL;
  const Answering answering(CancelForm, 1);
  BSTR result = nullptr;
  const HRESULT status =
      dialogs->KROpenFile(nullptr, folder, nullptr, VARIANT_TRUE, nullptr, &result);
  SysFreeString(result);
  return status;
}

TEST(Unloading, TheComponentGoesOnceTheFolderIsReadThatNobodyWaitsFor) {
  const test::FolderTree tree;
  tree.AddFiles(u"", kFiles);
  const client::BasicString folder(tree.WidePath());
  int outlived = 0;
  for (int i = 0; i < kRounds || (i < kMostRounds && outlived == 0); ++i) {
    ASSERT_EQ(OpenAndCancel(folder), S_OK);
    if (Loaded()) ++outlived;
    EXPECT_TRUE(drive::Within(drive::kPatience, [] { return !Loaded(); })) << "round " << i;
  }
  EXPECT_GT(outlived, 0) << "the reading was never on its way; the test showed nothing";
}

}  // namespace
}  // namespace krx::soak
