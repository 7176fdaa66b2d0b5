// What assistive programs are told without asking.

#include <algorithm>
#include <tuple>

#include "access/AccessTest.h"

namespace krx::drive {
namespace {

using Told = std::tuple<DWORD, HWND, LONG>;  // event, window, part

std::vector<Told> told;

void CALLBACK Hear(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG part, DWORD, DWORD) {
  if (object == OBJID_CLIENT) told.emplace_back(event, window, part);
}

// Listens to all programs; the system calls while this thread handles messages.
class Listening {
 public:
  Listening()
      : hook_(SetWinEventHook(EVENT_MIN, EVENT_MAX, nullptr, &Hear, 0, 0, WINEVENT_OUTOFCONTEXT)) {
    told.clear();
  }
  ~Listening() { UnhookWinEvent(hook_); }
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;

  explicit operator bool() const { return hook_ != nullptr; }

 private:
  const HWINEVENTHOOK hook_;
};

class ReaderEvents : public AccessTest {
 protected:
  static void Await(DWORD event, const Window& window, LONG part = CHILDID_SELF) {
    const Told wanted(event, window.Handle(), part);
    const bool heard = Within(kPatience, [&] {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
      return std::find(told.begin(), told.end(), wanted) != told.end();
    });
    EXPECT_TRUE(heard) << "event " << std::hex << event << ", part " << std::dec << part;
    told.clear();
  }
};

TEST_F(ReaderEvents, TellOfTheDialogItsFocusAndWhatIsTyped) {
  const Listening listening;
  ASSERT_TRUE(listening);
  RunDialog("KRUserLogOn()");
  const Window form = Form(L"FLogOn", L"txtName");
  Await(EVENT_SYSTEM_DIALOGSTART, form);
  TypeText(L"e");
  Await(EVENT_OBJECT_VALUECHANGE, form.Child(L"txtName"));
  PressKey(L"Tab");
  Await(EVENT_OBJECT_FOCUS, form.Child(L"txtPassword"));
  PressKey(L"Esc");
  Await(EVENT_SYSTEM_DIALOGEND, form);
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(ReaderEvents, TellWhenAButtonCanBePressed) {
  const Listening listening;
  RunDialog("KRUserLogOn()");
  const Window form = Form(L"FLogOn", L"txtName");
  TypeText(L"e");
  Await(EVENT_OBJECT_STATECHANGE, form.Child(L"keyOK"));
  PressKey(L"Esc");
  EXPECT_EQ(Printed(), (Lines{"False, nobody", "end"}));
}

TEST_F(ReaderEvents, TellOfTheRowThatTheOperatorComesTo) {
  const Listening listening;
  RunUserScript("LogOn \"admin\"\r\nDialogs.KRUser\r\n");
  const Window form = Form(L"FUser", L"lvwUser");
  Await(EVENT_OBJECT_FOCUS, form.Child(L"lvwUser"), 1);
  PressKey(L"Down");
  Await(EVENT_OBJECT_SELECTION, form.Child(L"lvwUser"), 1);
  PressKey(L"Down");
  Await(EVENT_OBJECT_FOCUS, form.Child(L"lvwUser"), 2);
  Leave(form, L"keyOK");
  EXPECT_EQ(Printed(), Lines{"end"});
}

}  // namespace
}  // namespace krx::drive
