// Microsoft::WRL::ComPtr: owns one reference on a COM object and releases it when it
// goes. The one owning pointer of the platform, the module and the tests.
#pragma once

#include <cstddef>
#include <type_traits>
#include <utility>

#include "combaseapi.h"
#include "unknwn.h"

namespace Microsoft::WRL {

template <typename T>
class ComPtr;

namespace Details {

// What &pointer gives: the pointer itself where a ComPtr* is wanted (As), or its slot,
// emptied first, where an out parameter T** is wanted.
template <typename T>
class ComPtrRef {
 public:
  explicit ComPtrRef(ComPtr<T>* pointer) noexcept : pointer_(pointer) {}
  operator ComPtr<T>*() const noexcept { return pointer_; }
  operator T**() const noexcept { return pointer_->ReleaseAndGetAddressOf(); }
  T* operator*() const noexcept { return pointer_->Get(); }
  T** ReleaseAndGetAddressOf() const noexcept { return pointer_->ReleaseAndGetAddressOf(); }

 private:
  ComPtr<T>* pointer_;
};

}  // namespace Details

template <typename T>
class ComPtr {
 public:
  using InterfaceType = T;

  ComPtr() noexcept = default;
  ComPtr(std::nullptr_t) noexcept {}
  // Takes a new reference on object.
  ComPtr(T* object) noexcept : ptr_(object) { InternalAddRef(); }
  ComPtr(const ComPtr& other) noexcept : ComPtr(other.ptr_) {}
  template <typename U, typename = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  ComPtr(const ComPtr<U>& other) noexcept : ComPtr(other.Get()) {}
  ComPtr(ComPtr&& other) noexcept : ptr_(std::exchange(other.ptr_, nullptr)) {}
  ~ComPtr() { InternalRelease(); }

  ComPtr& operator=(ComPtr other) noexcept {
    Swap(other);
    return *this;
  }
  ComPtr& operator=(std::nullptr_t) noexcept {
    InternalRelease();
    return *this;
  }

  T* Get() const noexcept { return ptr_; }
  T* operator->() const noexcept { return ptr_; }
  explicit operator bool() const noexcept { return ptr_ != nullptr; }

  // The slot itself, for a call that reads it; what it holds stays.
  T* const* GetAddressOf() const noexcept { return &ptr_; }
  T** GetAddressOf() noexcept { return &ptr_; }
  // Releases what is held and gives the slot for an out parameter.
  T** ReleaseAndGetAddressOf() noexcept {
    InternalRelease();
    return &ptr_;
  }
  Details::ComPtrRef<T> operator&() noexcept { return Details::ComPtrRef<T>(this); }

  // Takes over a reference the caller holds, releasing what was held.
  void Attach(T* object) noexcept {
    InternalRelease();
    ptr_ = object;
  }
  // Hands the reference to the caller.
  T* Detach() noexcept { return std::exchange(ptr_, nullptr); }
  // Releases what is held; the count the object was left with.
  unsigned long Reset() noexcept { return InternalRelease(); }
  void Swap(ComPtr& other) noexcept { std::swap(ptr_, other.ptr_); }

  // A new reference for the caller's out parameter.
  HRESULT CopyTo(T** out) const noexcept {
    if (!out) return E_POINTER;
    InternalAddRef();
    *out = ptr_;
    return S_OK;
  }
  // Asks the object for another of its interfaces.
  template <typename U>
  HRESULT As(ComPtr<U>* out) const noexcept {
    if (!out) return E_POINTER;
    if (!ptr_) return E_POINTER;
    return ptr_->QueryInterface(__uuidof(U), reinterpret_cast<void**>(out->ReleaseAndGetAddressOf()));
  }
  template <typename U>
  HRESULT As(Details::ComPtrRef<U> out) const noexcept {
    return As(static_cast<ComPtr<U>*>(out));
  }

 private:
  void InternalAddRef() const noexcept {
    if (ptr_) ptr_->AddRef();
  }
  unsigned long InternalRelease() noexcept {
    T* held = std::exchange(ptr_, nullptr);
    return held ? held->Release() : 0;
  }

  T* ptr_ = nullptr;
};

template <typename T, typename U>
bool operator==(const ComPtr<T>& a, const ComPtr<U>& b) noexcept {
  return a.Get() == b.Get();
}
template <typename T>
bool operator==(const ComPtr<T>& a, std::nullptr_t) noexcept {
  return a.Get() == nullptr;
}

}  // namespace Microsoft::WRL

template <typename T>
void** IID_PPV_ARGS_Helper(Microsoft::WRL::Details::ComPtrRef<T> pp) {
  return reinterpret_cast<void**>(pp.ReleaseAndGetAddressOf());
}
