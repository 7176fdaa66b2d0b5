#include "runtime/PanelSettings.h"

#include "com/Text.h"
#include "runtime/ModuleTexts.h"
#include "runtime/core/PanelChoice.h"
#include "runtime/core/PanelFile.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {

namespace {

PanelChoice& Choice() {
  static PanelChoice choice([] {
    const auto file = FileBesideModule(u"KorvelPanel.conf");
    constexpr krx::PanelSettings kDefaults = PanelChoice::kDefaults;
    return file ? ReadPanelFile(file->Name, file->Bytes, kDefaults) : kDefaults;
  });
  return choice;
}

}  // namespace

HRESULT PanelSettings::get_Keyboard(BSTR* value) {
  return Answer(value, [] { return com::Bstr(NameOf(Choice().Read().Keyboard)).Detach(); });
}

HRESULT PanelSettings::put_Keyboard(BSTR value) {
  return Guard([&] {
    Choice().SetKeyboard(com::FromBstr(value));
    return S_OK;
  });
}

HRESULT PanelSettings::get_Theme(BSTR* value) {
  return Answer(value, [] { return com::Bstr(NameOf(Choice().Read().Theme)).Detach(); });
}

HRESULT PanelSettings::put_Theme(BSTR value) {
  return Guard([&] {
    Choice().SetTheme(com::FromBstr(value));
    return S_OK;
  });
}

HRESULT PanelSettings::get_ShowCountdown(VARIANT_BOOL* value) {
  return Answer(value, [] { return Choice().Read().ShowCountdown ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT PanelSettings::put_ShowCountdown(VARIANT_BOOL value) {
  return Guard([&] {
    Choice().SetShowCountdown(value != VARIANT_FALSE);
    return S_OK;
  });
}

HRESULT PanelSettings::get_FirstAnswerDelay(double* value) {
  return Answer(value, [] { return Choice().Read().FirstAnswerDelay; });
}

HRESULT PanelSettings::put_FirstAnswerDelay(double value) {
  return Guard([&] {
    Choice().SetFirstAnswerDelay(value);
    return S_OK;
  });
}

HRESULT PanelSettings::get_LogOnNotice(BSTR* value) {
  return Answer(value, [] {
    const UsersInUse in_use;
    return com::Bstr(NoticeBeforeLogOn().Read(ProcessLanguages().Current())).Detach();
  });
}

}  // namespace krx::runtime
