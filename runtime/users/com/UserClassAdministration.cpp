#include "runtime/users/com/UserClassAdministration.h"

#include "com/Text.h"
#include "runtime/users/administration/ClassDirectory.h"
#include "runtime/users/com/Arrays.h"
#include "runtime/users/com/ProcessUsers.h"

namespace krx::runtime {

HRESULT UserClassAdministration::GetUserClassInfo(BSTR class_name, BSTR* display_text,
                                                  VARIANT* level, LONG* result) {
  return Guard([&] {
    com::EmptyResults(display_text, level, result);
    const std::optional<UserClass> found =
        ClassDirectory(ProcessUsers()).Find(com::FromBstr(class_name));
    *display_text = com::Bstr(found ? found->DisplayText : String()).Detach();
    level->vt = VT_I4;
    level->lVal = found ? found->Level : 0;
    *result = found ? 0 : 1;
    return S_OK;
  });
}

HRESULT UserClassAdministration::GetUserClasses(VARIANT* names, VARIANT* levels, LONG* result) {
  return Guard([&] {
    com::EmptyResults(names, levels, result);
    const host::UserClasses classes = ClassDirectory(ProcessUsers()).GetUserClasses();
    com::Variant all_names = ArrayOf(classes.Names);
    *levels = ArrayOf(classes.Levels).Detach();
    *names = all_names.Detach();
    return S_OK;
  });
}

}  // namespace krx::runtime
