// Counted references to objects. The counter stands in front of the object; the last
// reference gives the object to System::ReleaseObject with its class's free function.
// StrongRef is for objects held as they are; COWRef and ACOWRef are copy on write: a
// block is written in place only while it is held exclusively, otherwise the writer
// switches to a private copy first.
#pragma once

#include <atomic>

#include "vorna/classinterface.h"
#include "vorna/objectbase.h"
#include "vorna/refcounter.h"
#include "vorna/system.h"

namespace vorna {

inline void AddObjectReference(void* object) {
  if (object) RefCounter::AddReference(object);
}

inline void RemoveObjectReference(void* object) {
  if (object && RefCounter::RemoveReference(object)) System::ReleaseObject(object, MethodTableOf(object)->freeObject);
}

template <typename I>
class StrongRef : public I {
 public:
  StrongRef() = default;
  StrongRef(std::nullptr_t) {}  // NOLINT
  // Takes over one reference that the caller owns.
  static StrongRef Adopt(void* object) {
    StrongRef reference;
    reference._object = object;
    return reference;
  }
  // Adds a reference to a borrowed one.
  explicit StrongRef(const ObjectInterface& borrowed) : I(borrowed.GetPointer()) { AddObjectReference(this->_object); }
  StrongRef(const StrongRef& other) : I(other._object) { AddObjectReference(this->_object); }
  StrongRef(StrongRef&& other) noexcept : I(other._object) { other._object = nullptr; }
  StrongRef& operator=(const StrongRef& other) {
    AddObjectReference(other._object);
    RemoveObjectReference(this->_object);
    this->_object = other._object;
    return *this;
  }
  StrongRef& operator=(StrongRef&& other) noexcept {
    if (this != &other) {
      RemoveObjectReference(this->_object);
      this->_object = other._object;
      other._object = nullptr;
    }
    return *this;
  }
  ~StrongRef() { RemoveObjectReference(this->_object); }

  void Reset() {
    RemoveObjectReference(this->_object);
    this->_object = nullptr;
  }
  // Gives up the reference without releasing it.
  void* Disown() {
    void* object = this->_object;
    this->_object = nullptr;
    return object;
  }
};

// Location that a clone made for writing carries.
inline constexpr SourceLocation COW_CLONE_LOCATION{"vorna/baseref", 687, 0};

template <typename I>
class COWRef : public StrongRef<I> {
 public:
  using StrongRef<I>::StrongRef;
  COWRef() = default;
  COWRef(StrongRef<I>&& other) : StrongRef<I>(std::move(other)) {}  // NOLINT

  static COWRef Adopt(void* object) { return COWRef(StrongRef<I>::Adopt(object)); }

  // Makes the block private: in place while exclusive, else through a clone. Gives the
  // writable reference, or a null one (and the reference unchanged) when the copy fails.
  Result<I> MakeWritable() {
    void* object = this->_object;
    if (!object) return ErrorResult{PrivateGetNullReturnError(1)};
    if (RefCounter::IsExclusive(object)) return I(object);
    Result<void*> copy = Class::CloneObject(object, COW_CLONE_LOCATION);
    if (copy.IsError()) return copy.GetErrorResult();
    RemoveObjectReference(object);
    this->_object = copy.GetValue();
    return I(this->_object);
  }
};

// A copy-on-write reference that several threads may read and replace at once. The
// pointer word carries a lock in its lowest bit (objects are aligned to 8), held only
// for the instant of taking a reference or swapping the pointer, so a reader never adds
// a reference to an object that a writer has just released.
template <typename I>
class ACOWRef {
 public:
  ACOWRef() = default;
  explicit ACOWRef(COWRef<I> value) : _word(reinterpret_cast<UInt>(value.Disown())) {}
  ACOWRef(const ACOWRef&) = delete;
  ACOWRef& operator=(const ACOWRef&) = delete;
  ~ACOWRef() { RemoveObjectReference(reinterpret_cast<void*>(_word.load())); }

  // A counted reference to the current value.
  COWRef<I> Load() const {
    UInt word = Lock();
    void* object = reinterpret_cast<void*>(word);
    AddObjectReference(object);
    _word.store(word);
    return COWRef<I>::Adopt(object);
  }

  // Puts value in; the previous value loses this reference's count.
  void Store(COWRef<I> value) {
    void* object = value.Disown();
    UInt old = Lock();
    _word.store(reinterpret_cast<UInt>(object));
    RemoveObjectReference(reinterpret_cast<void*>(old));
  }

 private:
  static constexpr UInt LOCK_BIT = 1;

  // Sets the lock bit and gives the pointer without it.
  UInt Lock() const {
    UInt word = _word.load();
    for (;;) {
      word &= ~LOCK_BIT;
      if (_word.compare_exchange_weak(word, word | LOCK_BIT)) return word;
    }
  }

  mutable std::atomic<UInt> _word{0};
};

using ObjectRef = StrongRef<ObjectInterface>;

}  // namespace vorna
