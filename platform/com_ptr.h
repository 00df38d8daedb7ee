// ComPtr: owns one reference on a COM-style object and releases it when it goes.
#pragma once

#include <utility>

namespace tessel::platform {

template <typename T>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes a new reference on object.
  explicit ComPtr(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() { Reset(); }

  // Takes over a reference the caller already holds.
  static ComPtr Adopt(T* object) {
    ComPtr result;
    result.object_ = object;
    return result;
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  explicit operator bool() const { return object_ != nullptr; }
  // Releases what is held and gives the slot for an out parameter.
  T** Receive() {
    Reset();
    return &object_;
  }
  // Hands the reference to the caller.
  T* Detach() { return std::exchange(object_, nullptr); }
  void Reset() {
    if (object_) std::exchange(object_, nullptr)->Release();
  }

 private:
  T* object_ = nullptr;
};

}  // namespace tessel::platform
