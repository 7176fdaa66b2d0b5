// Objects that an assistive program inside the client's own process keeps longer than a dialog.

#include <gtest/gtest.h>

#include "access/Reader.h"
#include "client/Dialogs.h"
#include "soak/Forms.h"

namespace krx::drive {
namespace {

std::vector<Element> kept;

void CALLBACK KeepAndAnswer(HWND, UINT, UINT_PTR, DWORD) {
  const HWND form = soak::FormOnShow();
  const HWND key = soak::ControlOnShow(L"keyButton(0)");
  if (!form || !key || !kept.empty()) return;
  for (const HWND window : {form, key}) {
    kept.emplace_back(Window(window));
    EXPECT_NE(kept.back().Name(), L"");
  }
  soak::Click(key);
}

// The component, loaded whoever else uses it.
class Component {
 public:
  Component() : module_(LoadLibraryW(L"KRXDialogs.dll")) {}
  ~Component() { FreeLibrary(module_); }
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;

  HRESULT CanUnload() const {
    using Function = HRESULT WINAPI();
    const auto entry = reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(module_, "DllCanUnloadNow")));
    return entry ? entry() : E_FAIL;
  }

 private:
  const HMODULE module_;
};

TEST(ReaderLifetime, KeptObjectsKeepTheComponentAndAnswerThatNothingIsBehindThem) {
  const Component component;
  {
    const client::Automation automation;
    client::Dialogs dialogs;
    ASSERT_TRUE(dialogs);
    const soak::Answering answering(KeepAndAnswer, 1);
    long result = 0;
    ASSERT_EQ(dialogs.MsgBox(L"text", 0, L"title", result), S_OK);
    EXPECT_EQ(result, 1);
  }
  ASSERT_EQ(kept.size(), 2u);
  EXPECT_EQ(component.CanUnload(), S_FALSE);
  for (const Element& element : kept) {
    BSTR name = nullptr;
    VARIANT role{};
    EXPECT_EQ(element.Object().get_accName(element.Part(), &name), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(element.Object().get_accRole(element.Part(), &role), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(element.Object().accDoDefaultAction(element.Part()), CO_E_OBJNOTCONNECTED);
  }
  kept.clear();
  EXPECT_EQ(component.CanUnload(), S_OK);
}

}  // namespace
}  // namespace krx::drive
