#pragma once

#include <functional>
#include <utility>

namespace krx::ui {

// What of a component changed; a peer brings exactly this over to its window.
enum class Aspect {
  Bounds,
  Visible,
  Enabled,
  Text,
  Font,
  Colors,
  Picture,
  TabStop,
  Locked,
  Selection,
  Items,
  MoreItems,  // came behind the others, which are as they were
  Columns,    // titles and widths of a list's columns, height of its rows
  Scroll,     // the row at the top of a list
  RowInView,  // a row of a list is to be in sight
  Timing,
  Caption,
};

// Whoever owns properties is told of every change of a value.
class PropertyOwner {
 public:
  virtual void Changed(Aspect aspect) = 0;

 protected:
  ~PropertyOwner() = default;
};

// A value that is read by calling it (`Text()`) and written by assignment (`Text = ...`); the owner
// hears of a write only when it changes the value.
template <class T>
class Property {
 public:
  Property(PropertyOwner& owner, Aspect aspect, T initial = T())
      : owner_(owner), aspect_(aspect), value_(std::move(initial)) {}
  Property(const Property&) = delete;
  Property& operator=(const Property&) = delete;

  Property& operator=(T value) {
    if (Adopt(std::move(value))) owner_.Changed(aspect_);
    return *this;
  }
  const T& operator()() const { return value_; }

  // Takes a value over without telling the owner; for values that come from the window itself.
  bool Adopt(T value) {
    if (value_ == value) return false;
    value_ = std::move(value);
    return true;
  }

 private:
  PropertyOwner& owner_;
  Aspect aspect_;
  T value_;
};

// A value that is written and read by operations of its owner, in the way of a Property.
template <class Owner, auto Set, auto Get = nullptr>
class Accessor {
 public:
  explicit Accessor(Owner& owner) : owner_(owner) {}
  template <class Value>
  Accessor& operator=(Value&& value) {
    (owner_.*Set)(std::forward<Value>(value));
    return *this;
  }
  decltype(auto) operator()() const { return (owner_.*Get)(); }

 private:
  Owner& owner_;
};

// One handler, bound by assignment and raised by a call; without a handler nothing happens. A
// handler may bind another one or end the form while it runs.
template <class... Args>
class Event {
 public:
  template <class Handler>
  Event& operator=(Handler handler) {
    handler_ = std::move(handler);
    return *this;
  }
  void operator()(Args... args) const {
    if (!handler_) return;
    const auto handler = handler_;
    handler(std::forward<Args>(args)...);
  }

 private:
  std::function<void(Args...)> handler_;
};

}  // namespace krx::ui
