#pragma once

#include <windows.h>

#include <oleacc.h>  // builds on the one above

#include <atomic>
#include <memory>
#include <optional>

#include "ports/win32/Spoken.h"

namespace krx::win32 {

// Entries of the system's accessibility library, which is loaded when an assistive program asks for
// the first time.
struct AccessibilityLibrary {
  decltype(::LresultFromObject)* Wrap;
  decltype(::AccessibleObjectFromWindow)* Find;
  decltype(::CreateStdAccessibleObject)* MakeStandard;

  static const AccessibilityLibrary& Get();
  explicit operator bool() const { return Wrap && Find && MakeStandard; }
};

// Answers the interface of assistive programs for one window as long as it lives.
class AccessibleObject final : public IAccessible, public IOleWindow {
 public:
  // With one reference for the caller.
  explicit AccessibleObject(std::unique_ptr<Spoken> spoken);
  // The window goes; the object stays with those who hold it.
  void WindowGone() { spoken_.reset(); }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  // Only early bound: nobody else calls it.
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo** description) override;
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override;
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override;

  STDMETHODIMP get_accParent(IDispatch** parent) override;
  STDMETHODIMP get_accChildCount(LONG* count) override;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
  STDMETHODIMP get_accFocus(VARIANT* child) override;
  STDMETHODIMP get_accSelection(VARIANT* child) override;
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override;
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
  STDMETHODIMP accDoDefaultAction(VARIANT child) override;
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override;
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override;

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

 private:
  ~AccessibleObject();
  template <class Body>
  HRESULT Guarded(Body body);
  template <class Body>
  HRESULT For(const VARIANT& child, Body body);
  template <class Body>
  HRESULT Give(const VARIANT& child, BSTR* text, Body body);
  static HRESULT GivePart(const Spoken& spoken, std::optional<int> part, VARIANT* child);

  std::atomic<ULONG> references_ = 1;
  std::unique_ptr<Spoken> spoken_;  // none once the window is gone
};

}  // namespace krx::win32
