#include "access/Reader.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace krx::drive {

namespace {

void Check(HRESULT status, const char* what) {
  if (SUCCEEDED(status)) return;
  std::array<char, 128> text{};
  std::snprintf(text.data(), text.size(), "%s: 0x%08lX", what, static_cast<unsigned long>(status));
  throw std::runtime_error(text.data());
}

std::wstring Taken(BSTR text) {
  std::wstring taken(text ? text : L"", SysStringLen(text));
  SysFreeString(text);
  return taken;
}

VARIANT Number(long number) {
  VARIANT variant{};
  variant.vt = VT_I4;
  variant.lVal = number;
  return variant;
}

com::ComPtr<IAccessible> AsObject(IDispatch* object) {
  return com::ComPtr<IDispatch>::Attach(object).As<IAccessible>();
}

using TextOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);

std::wstring Ask(const Element& element, TextOf question, const char* what) {
  BSTR text = nullptr;
  Check((element.Object().*question)(element.Part(), &text), what);
  return Taken(text);
}

using NumberOf = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);

long Ask(const Element& element, NumberOf question, const char* what) {
  VARIANT number{};
  Check((element.Object().*question)(element.Part(), &number), what);
  if (number.vt != VT_I4) throw std::runtime_error(std::string(what) + " is no number");
  return number.lVal;
}

struct Word {
  long Number;
  const char* Text;
};

template <std::size_t Count>
std::string WordFor(long number, const Word (&words)[Count]) {
  for (const Word& word : words)
    if (word.Number == number) return word.Text;
  return std::to_string(number);
}

}  // namespace

Element::Element(const Window& window) {
  Check(AccessibleObjectFromWindow(window.Handle(), static_cast<DWORD>(OBJID_CLIENT),
                                   __uuidof(IAccessible), object_.PutVoid()),
        "the window's object");
}

VARIANT Element::Part() const {
  return Number(part_);
}

std::wstring Element::Name() const {
  return Ask(*this, &IAccessible::get_accName, "name");
}

std::wstring Element::Value() const {
  return Ask(*this, &IAccessible::get_accValue, "value");
}

std::wstring Element::Description() const {
  return Ask(*this, &IAccessible::get_accDescription, "description");
}

std::wstring Element::Shortcut() const {
  return Ask(*this, &IAccessible::get_accKeyboardShortcut, "shortcut");
}

std::wstring Element::Action() const {
  return Ask(*this, &IAccessible::get_accDefaultAction, "action");
}

long Element::Role() const {
  return Ask(*this, &IAccessible::get_accRole, "role");
}

long Element::State() const {
  return Ask(*this, &IAccessible::get_accState, "state");
}

RECT Element::Place() const {
  RECT place{};
  LONG width = 0;
  LONG height = 0;
  Check(object_->accLocation(&place.left, &place.top, &width, &height, Part()), "place");
  place.right = place.left + width;
  place.bottom = place.top + height;
  return place;
}

Window Element::TheWindow() const {
  HWND window = nullptr;
  Check(WindowFromAccessibleObject(object_.Get(), &window), "the object's window");
  return Window(window);
}

long Element::Count() const {
  LONG count = 0;
  Check(object_->get_accChildCount(&count), "number of children");
  return count;
}

Element Element::Inside(long number) const {
  IDispatch* child = nullptr;
  Check(object_->get_accChild(Number(number), &child), "child");
  if (!child) return Element(object_, number);
  return Element(AsObject(child), CHILDID_SELF);
}

Element Element::Parent() const {
  IDispatch* parent = nullptr;
  Check(object_->get_accParent(&parent), "parent");
  return Element(AsObject(parent), CHILDID_SELF);
}

long Element::Selected() const {
  VARIANT selected{};
  Check(object_->get_accSelection(&selected), "selection");
  return selected.vt == VT_I4 ? selected.lVal : 0;
}

void Element::Press() const {
  Check(object_->accDoDefaultAction(Part()), "press");
}

void Element::PressToEnd() const {
  const HRESULT status = object_->accDoDefaultAction(Part());
  if (status != HRESULT_FROM_WIN32(RPC_S_CALL_FAILED)) Check(status, "press");
}

void Element::Select(long flags) const {
  Check(object_->accSelect(flags, Part()), "select");
}

void Element::SetValue(const std::wstring& text) const {
  const BSTR value = SysAllocString(text.c_str());
  const HRESULT status = object_->put_accValue(Part(), value);
  SysFreeString(value);
  Check(status, "new value");
}

Heading HeadingOf(const Window& form, const std::wstring& control) {
  struct Com {
    Com() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~Com() { CoUninitialize(); }
  } const com;
  const Window field = form.Child(control);
  const Element dialog(form);
  for (long i = 2; i <= dialog.Count(); ++i) {
    const Element inside = dialog.Inside(i);
    if (inside.IsPart() || !(inside.TheWindow() == field)) continue;
    const Element label = dialog.Inside(i - 1);
    if (!label.IsPart() || label.Role() != ROLE_SYSTEM_STATICTEXT) break;
    const RECT place = label.Place();
    return {label.Name(),
            label.Shortcut(),
            {(place.left + place.right) / 2, (place.top + place.bottom) / 2}};
  }
  throw std::runtime_error("no label stands before " + Narrow(control));
}

std::string RoleWord(long role) {
  static constexpr Word kWords[] = {
      {ROLE_SYSTEM_DIALOG, "dialog"},      {ROLE_SYSTEM_STATICTEXT, "text"},
      {ROLE_SYSTEM_PUSHBUTTON, "button"},  {ROLE_SYSTEM_TEXT, "editable text"},
      {ROLE_SYSTEM_COMBOBOX, "combo box"}, {ROLE_SYSTEM_LIST, "list"},
      {ROLE_SYSTEM_LISTITEM, "list item"}, {ROLE_SYSTEM_GROUPING, "grouping"},
      {ROLE_SYSTEM_GRAPHIC, "graphic"},
  };
  return WordFor(role, kWords);
}

std::string TypeWord(long type) {
  static constexpr Word kWords[] = {
      {50000, "Button"}, {50003, "ComboBox"}, {50004, "Edit"},   {50006, "Image"}, {50008, "List"},
      {50020, "Text"},   {50026, "Group"},    {50032, "Window"}, {50033, "Pane"},
  };
  return WordFor(type, kWords);
}

std::string StateWords(long state) {
  static constexpr Word kWords[] = {
      {STATE_SYSTEM_UNAVAILABLE, "unavailable"}, {STATE_SYSTEM_FOCUSABLE, "focusable"},
      {STATE_SYSTEM_FOCUSED, "focused"},         {STATE_SYSTEM_PROTECTED, "protected"},
      {STATE_SYSTEM_READONLY, "read-only"},      {STATE_SYSTEM_COLLAPSED, "collapsed"},
      {STATE_SYSTEM_EXPANDED, "expanded"},
  };
  std::string words;
  for (const Word& word : kWords) {
    if ((state & word.Number) == 0) continue;
    if (!words.empty()) words += ", ";
    words += word.Text;
  }
  return words;
}

}  // namespace krx::drive
