#pragma once

#include <ole2.h>

#include <utility>

namespace krx::com {

// Holds one reference of an automation object and gives it back.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  // Takes a reference of its own.
  explicit ComPtr(Interface* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~ComPtr() { Reset(); }
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  // Takes over a reference that the caller owns.
  static ComPtr Attach(Interface* object) {
    ComPtr result;
    result.object_ = object;
    return result;
  }
  // Hands the reference over to the caller.
  Interface* Detach() { return std::exchange(object_, nullptr); }
  void Reset() {
    if (Interface* const object = Detach()) object->Release();
  }

  // Where a function stores a reference that it hands over; what was held is given back first.
  Interface** Put() {
    Reset();
    return &object_;
  }
  void** PutVoid() { return reinterpret_cast<void**>(Put()); }

  // Another interface of the same object; empty when it has none.
  template <class Other>
  ComPtr<Other> As() const {
    ComPtr<Other> other;
    if (object_) object_->QueryInterface(__uuidof(Other), other.PutVoid());
    return other;
  }

  Interface* Get() const { return object_; }
  Interface* operator->() const { return object_; }
  Interface& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace krx::com
