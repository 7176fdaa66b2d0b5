#include "ports/win32/DialogProvider.h"

#include <ole2.h>
#include <uiautomationclient.h>
#include <uiautomationcore.h>

#include <atomic>

#include "ports/win32/Accessible.h"

namespace krx::win32 {

namespace {

// The compiler's header of the library's functions is none for C++.
constexpr LONG kRootObject = -25;    // what a program asks for that wants a provider
constexpr long kWindowType = 50032;  // the control type of windows
constexpr auto kNotAvailable = static_cast<HRESULT>(0x80040201u);

// Entries of the system's automation library, loaded when somebody asks for the first time.
struct AutomationLibrary {
  using ReturnProvider = LRESULT WINAPI(HWND, WPARAM, LPARAM, IRawElementProviderSimple*);
  using HostProvider = HRESULT WINAPI(HWND, IRawElementProviderSimple**);
  using Disconnect = HRESULT WINAPI(IRawElementProviderSimple*);

  ReturnProvider* Return;
  HostProvider* Host;
  Disconnect* Drop;

  static const AutomationLibrary& Get() {
    constexpr const wchar_t* kLibrary = L"uiautomationcore.dll";
    static const AutomationLibrary library{
        OptionalFunction<ReturnProvider>(kLibrary, "UiaReturnRawElementProvider"),
        OptionalFunction<HostProvider>(kLibrary, "UiaHostProviderFromHwnd"),
        OptionalFunction<Disconnect>(kLibrary, "UiaDisconnectProvider")};
    return library;
  }
  explicit operator bool() const { return Return && Host && Drop; }
};

}  // namespace

// Answers for one form as long as its window lives.
class DialogElement final : public IRawElementProviderSimple {
 public:
  DialogElement(HWND window, ui::Form& form) : window_(window), form_(&form) {
    ++accessible_objects;
  }
  void WindowGone() { form_ = nullptr; }
  HWND Window() const { return window_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IRawElementProviderSimple))
      return E_NOINTERFACE;
    *object = static_cast<IRawElementProviderSimple*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  // Called on the form's own thread, whoever asks.
  STDMETHODIMP get_ProviderOptions(ProviderOptions* options) override {
    if (!options) return E_POINTER;
    *options = static_cast<ProviderOptions>(ProviderOptions_ServerSideProvider |
                                            ProviderOptions_UseComThreading);
    return S_OK;
  }
  STDMETHODIMP GetPatternProvider(PATTERNID, IUnknown** pattern) override {
    if (!pattern) return E_POINTER;
    *pattern = nullptr;
    return Alive();
  }
  STDMETHODIMP GetPropertyValue(PROPERTYID property, VARIANT* value) override {
    if (!value) return E_POINTER;
    value->vt = VT_EMPTY;
    if (Alive() != S_OK) return Alive();
    if (property == UIA_ControlTypePropertyId) {
      value->vt = VT_I4;
      value->lVal = kWindowType;
    } else if (property == UIA_IsDialogPropertyId) {
      value->vt = VT_BOOL;
      value->boolVal = VARIANT_TRUE;
    } else if (property == UIA_FullDescriptionPropertyId) {
      Describe(*value);
    }
    return S_OK;
  }
  STDMETHODIMP get_HostRawElementProvider(IRawElementProviderSimple** host) override {
    if (!host) return E_POINTER;
    *host = nullptr;
    const AutomationLibrary& library = AutomationLibrary::Get();
    return Alive() == S_OK && library ? library.Host(window_, host) : kNotAvailable;
  }

 private:
  ~DialogElement() { --accessible_objects; }

  HRESULT Alive() const {
    const bool alive = form_ && IsWindow(window_);
    return alive ? S_OK : kNotAvailable;
  }
  void Describe(VARIANT& value) const {
    const String text = form_->Announcement();
    if (text.empty()) return;
    value.bstrVal = SysAllocStringLen(Wide(text), static_cast<UINT>(text.size()));
    if (value.bstrVal) value.vt = VT_BSTR;
  }

  std::atomic<ULONG> references_ = 1;
  const HWND window_;
  ui::Form* form_;  // none once the window is gone
};

LRESULT DialogProvider::Answer(HWND window, WPARAM w, LPARAM l) {
  if (static_cast<LONG>(l) != kRootObject || !AutomationLibrary::Get()) return 0;
  if (!element_) element_ = new DialogElement(window, form_);
  return AutomationLibrary::Get().Return(window, w, kRootObject, element_);
}

// The system lets go of the element, and answers for it from now on.
DialogProvider::~DialogProvider() {
  if (!element_) return;
  if (const AutomationLibrary& library = AutomationLibrary::Get()) {
    library.Return(element_->Window(), 0, 0, nullptr);
    library.Drop(element_);
  }
  element_->WindowGone();
  element_->Release();
}

}  // namespace krx::win32
