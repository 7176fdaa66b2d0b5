#include "ports/win32/Finger.h"

#include "ports/win32/System.h"

namespace krx::win32 {

namespace {

// How the system signs mouse messages that it makes of touches and strokes of a pen.
constexpr ULONG_PTR kSignature = 0xFF515700;
constexpr ULONG_PTR kSignatureMask = 0xFFFFFF00;

using SourceOfMessage = BOOL WINAPI(INPUT_MESSAGE_SOURCE*);

}  // namespace

bool EnteredByFinger() {
  const auto signature = static_cast<ULONG_PTR>(GetMessageExtraInfo());
  if ((signature & kSignatureMask) == kSignature) return true;
  static SourceOfMessage* const ask =
      OptionalFunction<SourceOfMessage>(L"user32.dll", "GetCurrentInputMessageSource");
  INPUT_MESSAGE_SOURCE source{};
  if (!ask || !ask(&source)) return false;
  return source.deviceType == IMDT_TOUCH || source.deviceType == IMDT_PEN;
}

}  // namespace krx::win32
