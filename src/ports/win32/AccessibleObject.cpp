#include "ports/win32/AccessibleObject.h"

#include <new>
#include <utility>

#include "ports/win32/Accessible.h"
#include "ports/win32/Screen.h"

namespace krx::win32 {

namespace {

BSTR Allocate(const String& text) {
  const BSTR allocated = SysAllocStringLen(Wide(text), static_cast<UINT>(text.size()));
  if (!allocated) throw std::bad_alloc();
  return allocated;
}

// The object of another of our windows.
HRESULT FindObject(HWND window, IDispatch** object) {
  return AccessibilityLibrary::Get().Find(window, static_cast<DWORD>(OBJID_CLIENT),
                                          __uuidof(IDispatch), reinterpret_cast<void**>(object));
}

HRESULT GiveNumber(long number, VARIANT* out) {
  out->vt = VT_I4;
  out->lVal = number;
  return S_OK;
}

}  // namespace

const AccessibilityLibrary& AccessibilityLibrary::Get() {
  constexpr const wchar_t* kLibrary = L"oleacc.dll";
  static const AccessibilityLibrary library{
      OptionalFunction<decltype(::LresultFromObject)>(kLibrary, "LresultFromObject"),
      OptionalFunction<decltype(::AccessibleObjectFromWindow)>(kLibrary,
                                                               "AccessibleObjectFromWindow"),
      OptionalFunction<decltype(::CreateStdAccessibleObject)>(kLibrary,
                                                              "CreateStdAccessibleObject")};
  return library;
}

AccessibleObject::AccessibleObject(std::unique_ptr<Spoken> spoken) : spoken_(std::move(spoken)) {
  ++accessible_objects;
}

AccessibleObject::~AccessibleObject() {
  --accessible_objects;
}

STDMETHODIMP AccessibleObject::QueryInterface(REFIID iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid == __uuidof(IUnknown) || iid == __uuidof(IDispatch) || iid == __uuidof(IAccessible)) {
    *object = static_cast<IAccessible*>(this);
  } else if (iid == __uuidof(IOleWindow)) {
    *object = static_cast<IOleWindow*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) AccessibleObject::AddRef() {
  return ++references_;
}

STDMETHODIMP_(ULONG) AccessibleObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP AccessibleObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}

STDMETHODIMP AccessibleObject::GetTypeInfo(UINT, LCID, ITypeInfo** description) {
  if (description) *description = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP AccessibleObject::GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) {
  return E_NOTIMPL;
}

STDMETHODIMP AccessibleObject::Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                      UINT*) {
  return E_NOTIMPL;
}

// No error of a handler or of the model leaves for a program that only looked.
template <class Body>
HRESULT AccessibleObject::Guarded(Body body) {
  if (!spoken_) return CO_E_OBJNOTCONNECTED;
  try {
    return body(*spoken_);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

template <class Body>
HRESULT AccessibleObject::For(const VARIANT& child, Body body) {
  return Guarded([&](Spoken& spoken) -> HRESULT {
    if (child.vt != VT_I4 || child.lVal < 0 || child.lVal > spoken.Count()) return E_INVALIDARG;
    const int part = static_cast<int>(child.lVal);
    if (part != Spoken::kSelf && spoken.WindowOf(part)) return E_INVALIDARG;
    return body(spoken, part);
  });
}

template <class Body>
HRESULT AccessibleObject::Give(const VARIANT& child, BSTR* text, Body body) {
  if (!text) return E_POINTER;
  *text = nullptr;
  return For(child, [&](const Spoken& spoken, int part) -> HRESULT {
    const String given = body(spoken, part);
    if (given.empty()) return S_FALSE;
    *text = Allocate(given);
    return S_OK;
  });
}

// A window by its own object, all else by its number.
HRESULT AccessibleObject::GivePart(const Spoken& spoken, std::optional<int> part, VARIANT* child) {
  child->vt = VT_EMPTY;
  if (!part) return S_FALSE;
  const HWND window = *part == Spoken::kSelf ? nullptr : spoken.WindowOf(*part);
  if (!window) return GiveNumber(*part, child);
  IDispatch* found = nullptr;
  const HRESULT result = FindObject(window, &found);
  if (FAILED(result)) return result;
  child->vt = VT_DISPATCH;
  child->pdispVal = found;
  return S_OK;
}

// A control's parent is its form; a form's is what the system tells of its frame.
STDMETHODIMP AccessibleObject::get_accParent(IDispatch** parent) {
  if (!parent) return E_POINTER;
  *parent = nullptr;
  return Guarded([&](const Spoken& spoken) -> HRESULT {
    const HWND above = GetAncestor(spoken.Window(), GA_PARENT);
    if (above && above != GetDesktopWindow()) return FindObject(above, parent);
    return AccessibilityLibrary::Get().MakeStandard(
        spoken.Window(), OBJID_WINDOW, __uuidof(IDispatch), reinterpret_cast<void**>(parent));
  });
}

STDMETHODIMP AccessibleObject::get_accChildCount(LONG* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return Guarded([&](const Spoken& spoken) {
    *count = spoken.Count();
    return S_OK;
  });
}

// Only windows have objects of their own.
STDMETHODIMP AccessibleObject::get_accChild(VARIANT child, IDispatch** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  return Guarded([&](const Spoken& spoken) -> HRESULT {
    if (child.vt != VT_I4 || child.lVal <= 0 || child.lVal > spoken.Count()) return E_INVALIDARG;
    const HWND window = spoken.WindowOf(static_cast<int>(child.lVal));
    return window ? FindObject(window, object) : S_FALSE;
  });
}

STDMETHODIMP AccessibleObject::get_accName(VARIANT child, BSTR* name) {
  return Give(child, name, [](const Spoken& spoken, int part) { return spoken.Name(part); });
}

STDMETHODIMP AccessibleObject::get_accValue(VARIANT child, BSTR* value) {
  if (!value) return E_POINTER;
  *value = nullptr;
  return For(child, [&](const Spoken& spoken, int part) -> HRESULT {
    if (spoken.IsSecret()) return E_ACCESSDENIED;
    const auto given = spoken.Value(part);
    if (!given) return S_FALSE;
    *value = Allocate(*given);
    return S_OK;
  });
}

STDMETHODIMP AccessibleObject::get_accDescription(VARIANT child, BSTR* description) {
  return Give(child, description,
              [](const Spoken& spoken, int part) { return spoken.Description(part); });
}

STDMETHODIMP AccessibleObject::get_accRole(VARIANT child, VARIANT* role) {
  if (!role) return E_POINTER;
  role->vt = VT_EMPTY;
  return For(child,
             [&](const Spoken& spoken, int part) { return GiveNumber(spoken.Role(part), role); });
}

STDMETHODIMP AccessibleObject::get_accState(VARIANT child, VARIANT* state) {
  if (!state) return E_POINTER;
  state->vt = VT_EMPTY;
  return For(child,
             [&](const Spoken& spoken, int part) { return GiveNumber(spoken.State(part), state); });
}

STDMETHODIMP AccessibleObject::get_accHelp(VARIANT child, BSTR* help) {
  return Give(child, help, [](const Spoken&, int) { return String(); });
}

STDMETHODIMP AccessibleObject::get_accHelpTopic(BSTR* file, VARIANT, LONG* topic) {
  if (!file || !topic) return E_POINTER;
  *file = nullptr;
  *topic = 0;
  return spoken_ ? S_FALSE : CO_E_OBJNOTCONNECTED;
}

STDMETHODIMP AccessibleObject::get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) {
  return Give(child, shortcut,
              [](const Spoken& spoken, int part) { return spoken.Shortcut(part); });
}

STDMETHODIMP AccessibleObject::get_accFocus(VARIANT* child) {
  if (!child) return E_POINTER;
  child->vt = VT_EMPTY;
  return Guarded(
      [&](const Spoken& spoken) { return GivePart(spoken, spoken.FocusedPart(), child); });
}

STDMETHODIMP AccessibleObject::get_accSelection(VARIANT* child) {
  if (!child) return E_POINTER;
  child->vt = VT_EMPTY;
  return Guarded(
      [&](const Spoken& spoken) { return GivePart(spoken, spoken.SelectedPart(), child); });
}

STDMETHODIMP AccessibleObject::get_accDefaultAction(VARIANT child, BSTR* action) {
  return Give(child, action, [](const Spoken& spoken, int part) { return spoken.Action(part); });
}

STDMETHODIMP AccessibleObject::accSelect(LONG flags, VARIANT child) {
  return For(child, [&](Spoken& spoken, int part) -> HRESULT {
    bool done = false;
    if ((flags & (SELFLAG_TAKESELECTION | SELFLAG_ADDSELECTION)) != 0) done = spoken.Select(part);
    if ((flags & SELFLAG_TAKEFOCUS) != 0) done = spoken.Focus(part) || done;
    return done ? S_OK : DISP_E_MEMBERNOTFOUND;
  });
}

STDMETHODIMP AccessibleObject::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                           VARIANT child) {
  if (!left || !top || !width || !height) return E_POINTER;
  *left = *top = *width = *height = 0;
  return For(child, [&](const Spoken& spoken, int part) {
    const RECT place = spoken.Place(part);
    *left = place.left;
    *top = place.top;
    *width = place.right - place.left;
    *height = place.bottom - place.top;
    return S_OK;
  });
}

// Children are reached by their numbers.
STDMETHODIMP AccessibleObject::accNavigate(LONG, VARIANT, VARIANT* end) {
  if (!end) return E_POINTER;
  end->vt = VT_EMPTY;
  return spoken_ ? E_NOTIMPL : CO_E_OBJNOTCONNECTED;
}

STDMETHODIMP AccessibleObject::accHitTest(LONG left, LONG top, VARIANT* child) {
  if (!child) return E_POINTER;
  child->vt = VT_EMPTY;
  return Guarded([&](const Spoken& spoken) {
    const DpiScope scope;
    const POINT point{left, top};
    const RECT place = spoken.Place(Spoken::kSelf);
    if (!PtInRect(&place, point)) return S_FALSE;
    return GivePart(spoken, spoken.PartAt(point), child);
  });
}

STDMETHODIMP AccessibleObject::accDoDefaultAction(VARIANT child) {
  return For(child, [](Spoken& spoken, int part) -> HRESULT {
    return spoken.Act(part) ? S_OK : DISP_E_MEMBERNOTFOUND;
  });
}

STDMETHODIMP AccessibleObject::put_accName(VARIANT, BSTR) {
  return spoken_ ? DISP_E_MEMBERNOTFOUND : CO_E_OBJNOTCONNECTED;
}

STDMETHODIMP AccessibleObject::put_accValue(VARIANT child, BSTR value) {
  return For(child, [&](Spoken& spoken, int) -> HRESULT {
    return spoken.SetValue(value ? value : L"") ? S_OK : DISP_E_MEMBERNOTFOUND;
  });
}

STDMETHODIMP AccessibleObject::GetWindow(HWND* window) {
  if (!window) return E_POINTER;
  *window = nullptr;
  return Guarded([&](const Spoken& spoken) {
    *window = spoken.Window();
    return S_OK;
  });
}

}  // namespace krx::win32
