// The client's side of the newer interface, as far as these tests need it: the compiler's headers
// do not describe it.

#include <stdexcept>
#include <string>

#include "access/Reader.h"

namespace krx::drive {

// Implemented elsewhere, which the compiler must believe: no part of the unnamed namespace.
struct AutomationElement : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE SetFocus() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRuntimeId(SAFEARRAY**) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindFirst(int, IUnknown*, IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindAll(int, IUnknown*, IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindFirstBuildCache(int, IUnknown*, IUnknown*, IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE FindAllBuildCache(int, IUnknown*, IUnknown*, IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE BuildUpdatedCache(IUnknown*, IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentPropertyValue(int, VARIANT*) = 0;
  // The only way to a value that every Wine has.
  virtual HRESULT STDMETHODCALLTYPE GetCurrentPropertyValueEx(int property, BOOL no_default,
                                                              VARIANT* value) = 0;
};

namespace {

constexpr CLSID kClientClass{
    0xFF48DBA4, 0x60EF, 0x4201, {0xAA, 0x87, 0x54, 0x10, 0x3E, 0xEF, 0x59, 0x4E}};
constexpr IID kClient{0x30CBE57D, 0xD9D0, 0x452A, {0xAB, 0x13, 0x7A, 0xC5, 0xAC, 0x48, 0x25, 0xEE}};

constexpr int kControlType = 30003;
constexpr int kName = 30005;
constexpr int kIsPassword = 30019;
constexpr int kIsDialog = 30174;

VARIANT Ask(AutomationElement& element, int property) {
  VARIANT value{};
  const HRESULT status = element.GetCurrentPropertyValueEx(property, FALSE, &value);
  if (FAILED(status)) throw std::runtime_error("property " + std::to_string(property));
  return value;
}

bool IsTrue(AutomationElement& element, int property) {
  VARIANT value = Ask(element, property);
  const bool is_true = value.vt == VT_BOOL && value.boolVal != VARIANT_FALSE;
  VariantClear(&value);
  return is_true;
}

}  // namespace

struct Automation::Client : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CompareElements(IUnknown*, IUnknown*, BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE CompareRuntimeIds(SAFEARRAY*, SAFEARRAY*, BOOL*) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRootElement(IUnknown**) = 0;
  virtual HRESULT STDMETHODCALLTYPE ElementFromHandle(HWND window, AutomationElement**) = 0;
};

Automation::Automation() {
  CoCreateInstance(kClientClass, nullptr, CLSCTX_INPROC_SERVER, kClient, client_.PutVoid());
}

Automation::~Automation() = default;

Automation::operator bool() const {
  return static_cast<bool>(client_);
}

Automation::Facts Automation::Of(const Window& window) const {
  com::ComPtr<AutomationElement> element;
  auto& client = static_cast<Client&>(*client_);
  const HRESULT status = client.ElementFromHandle(window.Handle(), element.Put());
  if (FAILED(status) || !element)
    throw std::runtime_error("no automation element for " + Narrow(window.Name()));
  Facts facts;
  VARIANT name = Ask(*element, kName);
  if (name.vt == VT_BSTR) facts.Name.assign(name.bstrVal, SysStringLen(name.bstrVal));
  VariantClear(&name);
  VARIANT type = Ask(*element, kControlType);
  if (type.vt == VT_I4) facts.Type = type.lVal;
  VariantClear(&type);
  facts.IsPassword = IsTrue(*element, kIsPassword);
  facts.IsDialog = IsTrue(*element, kIsDialog);
  return facts;
}

}  // namespace krx::drive
