#include "automation/Fonts.h"

#include <ocidl.h>
#include <ole2.h>

#include "com/Errors.h"
#include "com/Text.h"

namespace krx::automation {

namespace {

constexpr float kCurrencyUnitsPerPoint = 10000.0f;

template <class Value>
Value Read(IFont& font, HRESULT (STDMETHODCALLTYPE IFont::*getter)(Value*)) {
  Value value{};
  com::CheckCall((font.*getter)(&value), &font, IID_IFont);
  return value;
}

}  // namespace

Font ReadFont(const com::ComPtr<IUnknown>& object) {
  if (!object) throw ObjectNotSet();
  const auto font = object.As<IFont>();
  if (!font) throw TypeMismatch();
  com::Bstr name;
  com::CheckCall(font->get_Name(name.Put()), font.Get(), IID_IFont);
  const auto points = static_cast<float>(Read(*font, &IFont::get_Size).int64);
  return {.Name = name.Text(),
          .Size = points / kCurrencyUnitsPerPoint,
          .Weight = Read(*font, &IFont::get_Weight),
          .Italic = Read(*font, &IFont::get_Italic) != FALSE,
          .Underline = Read(*font, &IFont::get_Underline) != FALSE,
          .Strikethrough = Read(*font, &IFont::get_Strikethrough) != FALSE,
          .Charset = Read(*font, &IFont::get_Charset)};
}

}  // namespace krx::automation
