// Delegate<R(A...)>: a callable of eight words.
//
//   words 0-4  room for a functor in place
//   word 5     address of the functor: the delegate's own first word when it lies in place
//   word 6     invoke function: (address for R unless R is void, functor address, arguments...)
//   word 7     manager function, null for functors that are copied bytewise
//
// The manager has the form manager(destination, source, operation), both delegates:
// 0 gives the functor's size, 1 destroys the functor of destination, 2 copies the
// functor of source into destination (1 on success, 0 out of memory), 3 moves it. A
// functor goes in place when it fits in five words with at most word alignment and
// moves without throwing; a larger one lies in a block from System. Moving copies words
// 5 to 7, lets the manager move the functor (or copies the words of a bytewise one),
// points word 5 at the new place when the functor lies in place, and clears words 5 to
// 7 of the source. A delegate whose word 6 is null is empty.
//
// A delegate is a plain value: it has no locking, and calling one from several threads
// at once is as safe as calling its functor so.
#pragma once

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "vorna/errorbase.h"
#include "vorna/system.h"

namespace vorna {

inline constexpr SourceLocation DELEGATE_LOCATION{"vorna/delegate", 286, 0};

class DelegateBase {
 public:
  using Manager = Int (*)(DelegateBase* destination, DelegateBase* source, Int operation);
  using GenericFunction = void (*)();
  enum : Int { GET_SIZE = 0, DESTROY = 1, COPY = 2, MOVE = 3 };
  static constexpr Int IN_PLACE_SIZE = 5 * Int(sizeof(void*));

  Bool IsEmpty() const { return _invoke == nullptr; }
  explicit operator bool() const { return _invoke != nullptr; }
  const void* GetFunctor() const { return _functor; }
  Bool IsInPlace() const { return _functor == _storage; }
  Manager GetManager() const { return _manager; }

  // Gives the functor up: the delegate is empty afterwards.
  void Reset() {
    if (_manager) _manager(this, nullptr, DESTROY);
    _functor = nullptr;
    _invoke = nullptr;
    _manager = nullptr;
  }

 protected:
  DelegateBase() = default;
  DelegateBase(const DelegateBase&) = delete;
  DelegateBase& operator=(const DelegateBase&) = delete;
  ~DelegateBase() { Reset(); }

  template <typename F>
  friend struct DelegateFunctorManager;

  template <typename F>
  static constexpr Bool FITS_IN_PLACE = sizeof(F) <= size_t(IN_PLACE_SIZE) && alignof(F) <= alignof(void*) &&
                                        std::is_nothrow_move_constructible_v<F>;

  void* InPlace() { return _storage; }

  // Copies the functor of source, which must not be this; false, with this empty, when
  // the copy can't be allocated.
  Bool CopyFrom(const DelegateBase& source) {
    Reset();
    if (source.IsEmpty()) return true;
    if (source._manager) {
      if (!source._manager(this, const_cast<DelegateBase*>(&source), COPY)) return false;
    } else {
      _functor = source.IsInPlace() ? CopyStorage(source) : source._functor;
    }
    _invoke = source._invoke;
    _manager = source._manager;
    return true;
  }

  void MoveFrom(DelegateBase& source) {
    Reset();
    _functor = source._functor;
    _invoke = source._invoke;
    _manager = source._manager;
    if (_manager) _manager(this, &source, MOVE);
    else if (source.IsInPlace()) _functor = CopyStorage(source);
    source._functor = nullptr;
    source._invoke = nullptr;
    source._manager = nullptr;
  }

  void* CopyStorage(const DelegateBase& source) {
    std::memcpy(_storage, source._storage, sizeof(_storage));
    return _storage;
  }

  void* _storage[5] = {};
  void* _functor = nullptr;
  GenericFunction _invoke = nullptr;
  Manager _manager = nullptr;
};

// The manager of functors of type F.
template <typename F>
struct DelegateFunctorManager {
  static constexpr Bool IN_PLACE = DelegateBase::FITS_IN_PLACE<F>;

  static Int Manage(DelegateBase* destination, DelegateBase* source, Int operation) {
    switch (operation) {
      case DelegateBase::GET_SIZE: return Int(sizeof(F));
      case DelegateBase::DESTROY: Destroy(destination); return 0;
      case DelegateBase::COPY: return Copy(destination, *static_cast<const F*>(source->_functor));
      case DelegateBase::MOVE: Move(destination, source); return 0;
      default: return 0;
    }
  }

  // Makes a copy of functor in destination's word 5; 0 when out of memory.
  template <typename G>
  static Int Copy(DelegateBase* destination, G&& functor) {
    void* place = IN_PLACE ? destination->InPlace() : System::Alloc(Int(sizeof(F)), DELEGATE_LOCATION);
    if (!place) return 0;
    destination->_functor = new (place) F(std::forward<G>(functor));
    return 1;
  }

  static void Destroy(DelegateBase* delegate) {
    F* functor = static_cast<F*>(delegate->_functor);
    functor->~F();
    if (!IN_PLACE) System::Free(functor);
  }

  // Word 5 is already copied; a functor in place follows into destination's room.
  static void Move(DelegateBase* destination, DelegateBase* source) {
    if constexpr (IN_PLACE) {
      F* functor = static_cast<F*>(source->_functor);
      destination->_functor = new (destination->InPlace()) F(std::move(*functor));
      functor->~F();
    }
  }
};

template <typename SIGNATURE>
class Delegate;

template <typename R, typename... A>
class Delegate<R(A...)> : public DelegateBase {
 public:
  using Invoke = std::conditional_t<std::is_void_v<R>, void (*)(void* functor, A... args),
                                    void (*)(void* result, void* functor, A... args)>;

  Delegate() = default;
  Delegate(std::nullptr_t) {}  // NOLINT

  // Takes a functor; a large functor that can't be allocated leaves the delegate empty.
  template <typename F, typename = std::enable_if_t<!std::is_base_of_v<DelegateBase, std::decay_t<F>> &&
                                                    std::is_invocable_r_v<R, std::decay_t<F>&, A...>>>
  Delegate(F&& functor) {  // NOLINT
    (void)Set(std::forward<F>(functor));
  }

  // A copy that can't be allocated is empty; CopyFrom tells.
  Delegate(const Delegate& other) : DelegateBase() { (void)DelegateBase::CopyFrom(other); }
  Delegate(Delegate&& other) noexcept : DelegateBase() { MoveFrom(other); }
  Delegate& operator=(const Delegate& other) {
    if (this != &other) (void)DelegateBase::CopyFrom(other);
    return *this;
  }
  Delegate& operator=(Delegate&& other) noexcept {
    if (this != &other) MoveFrom(other);
    return *this;
  }

  // Replaces the functor; the out-of-memory error when a large one can't be allocated.
  template <typename F>
  Result<void> Set(F&& functor) {
    using Functor = std::decay_t<F>;
    Reset();
    if constexpr (FITS_IN_PLACE<Functor> && std::is_trivially_copyable_v<Functor>) {
      _functor = new (InPlace()) Functor(std::forward<F>(functor));
    } else {
      if (!DelegateFunctorManager<Functor>::Copy(this, std::forward<F>(functor)))
        return CreateError(DELEGATE_LOCATION, 0);
      _manager = &DelegateFunctorManager<Functor>::Manage;
    }
    _invoke = reinterpret_cast<GenericFunction>(InvokeOf<Functor>());
    return OK;
  }

  Result<void> CopyFrom(const Delegate& other) {
    if (this == &other || DelegateBase::CopyFrom(other)) return OK;
    return CreateError(DELEGATE_LOCATION, 0);
  }

  // Calls the functor. An empty delegate gives the null-return error for a Result, a
  // value-initialised R otherwise.
  R operator()(A... args) const {
    Invoke invoke = reinterpret_cast<Invoke>(_invoke);
    if constexpr (std::is_void_v<R>) {
      if (invoke) invoke(_functor, std::forward<A>(args)...);
    } else {
      if (!invoke) return NullReturnFor<R>(0);
      alignas(R) unsigned char room[sizeof(R)];
      invoke(room, _functor, std::forward<A>(args)...);
      R* result = std::launder(reinterpret_cast<R*>(room));
      R value(std::move(*result));
      result->~R();
      return value;
    }
  }

 private:
  template <typename F>
  static Invoke InvokeOf() {
    if constexpr (std::is_void_v<R>) return &Call<F>;
    else return &CallInto<F>;
  }

  template <typename F>
  static void Call(void* functor, A... args) {
    (*static_cast<F*>(functor))(std::forward<A>(args)...);
  }

  // Constructs the result at the address the caller gives.
  template <typename F>
  static void CallInto(void* result, void* functor, A... args) {
    new (result) R((*static_cast<F*>(functor))(std::forward<A>(args)...));
  }
};

static_assert(sizeof(Delegate<void()>) == 64);
static_assert(sizeof(Delegate<Result<void>(Int, void*)>) == 64);

}  // namespace vorna
