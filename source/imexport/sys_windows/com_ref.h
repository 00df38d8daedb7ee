// ComRef: owns one reference on a platform COM object for the length of a step and
// releases it on every path out of the step.
#pragma once

#include <utility>

namespace tessel {

template <typename T>
class ComRef {
 public:
  ComRef() = default;
  // Takes a new reference on object.
  explicit ComRef(T* object) : _object(object) {
    if (_object) _object->AddRef();
  }
  ComRef(const ComRef& other) : ComRef(other._object) {}
  ComRef(ComRef&& other) noexcept : _object(std::exchange(other._object, nullptr)) {}
  ComRef& operator=(ComRef other) noexcept {
    std::swap(_object, other._object);
    return *this;
  }
  ~ComRef() { Reset(); }

  T* Get() const { return _object; }
  T* operator->() const { return _object; }
  explicit operator bool() const { return _object != nullptr; }
  // Releases what is held and gives the slot for an out parameter.
  T** Receive() {
    Reset();
    return &_object;
  }
  void Reset() {
    if (_object) std::exchange(_object, nullptr)->Release();
  }

 private:
  T* _object = nullptr;
};

}  // namespace tessel
