#include "runtime/FontService.h"

#include <windows.h>

#include <olectl.h>

#include "com/Text.h"

namespace krx::runtime {
namespace {

// The face in which the operator's system writes its own messages.
String MessageFace() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  if (!SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0)) {
    return Font().Name;
  }
  return com::FromWide(metrics.lfMessageFont.lfFaceName);
}

}  // namespace

HRESULT FontService::SelectFontClass(BSTR name) {
  return Guard([&] {
    current_ = &FontClassOf(com::FromBstr(name));
    return S_OK;
  });
}

HRESULT FontService::GetFont(IFontDisp** font) {
  return Guard([&] {
    com::EmptyResults(font);
    constexpr float kCurrencyUnit = 10000;  // sizes are given as currency
    const Font described = FontOf(*current_, MessageFace());
    std::wstring face = com::ToWide(described.Name);
    FONTDESC description{};
    description.cbSizeofstruct = sizeof(description);
    description.lpstrName = face.data();
    description.cySize.int64 = static_cast<LONGLONG>(described.Size * kCurrencyUnit);
    description.sWeight = described.Weight;
    description.sCharset = described.Charset;
    com::Check(OleCreateFontIndirect(&description, IID_IFontDisp, reinterpret_cast<void**>(font)));
    return S_OK;
  });
}

}  // namespace krx::runtime
