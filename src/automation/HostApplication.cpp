#include "automation/HostApplication.h"

#include "automation/LateMember.h"
#include "com/Errors.h"
#include "com/Text.h"
#include "com/Variant.h"

namespace krx::automation {

String HostApplication::EXEName() {
  // The member holds the object: the call may make the client replace this application.
  const LateMember member(application_, L"EXEName");
  com::Variant text = com::Variant::Copy(member.Read().Get());
  if (FAILED(text.Convert(VT_BSTR, LOCALE_USER_DEFAULT))) throw TypeMismatch();
  return com::FromBstr(text.Get().bstrVal);
}

}  // namespace krx::automation
