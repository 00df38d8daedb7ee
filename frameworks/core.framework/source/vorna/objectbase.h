// Objects and virtual interfaces. An object's first word points to its class's method
// table: word 0 the class's free function, word 1 the table's size in bytes, word 2 the
// host's class; then one stretch per interface at the same offset in every class (kept
// in the interface's record). A stretch is a head word whose first byte marks the
// interface as present, then one (function, adjustment) pair per method; the function
// gets the object pointer plus the adjustment, which is the place of the implementing
// component in the object.
//
// An interface class here is a borrowed reference: one word, the object pointer. Its
// methods dispatch through the table; on a null reference they give the null-return
// error without reaching an implementation. StrongRef, COWRef and ACOWRef (baseref.h)
// add counting.
#pragma once

#include <iterator>
#include <type_traits>
#include <utility>

#include "vorna/staticinterface.h"

namespace vorna {

class ClassHandle;
class String;
class FormatStatement;

struct MethodPair {
  void* function;
  Int adjust;
};

struct MethodTableHeader {
  void (*freeObject)(void* object);
  Int size;
  ClassHandle* cls;
};

inline constexpr Int STRETCH_HEAD = 8;

constexpr Int StretchSize(Int methodCount) { return methodCount ? STRETCH_HEAD + 16 * methodCount : 1; }

inline const MethodTableHeader* MethodTableOf(const void* object) {
  return *static_cast<const MethodTableHeader* const*>(object);
}

inline const MethodPair* MethodPairOf(const void* table, Int interfaceOffset, Int slot) {
  return reinterpret_cast<const MethodPair*>(static_cast<const char*>(table) + interfaceOffset + STRETCH_HEAD) + slot;
}

// The interface test: the offset lies inside the table and the stretch's head is set.
inline Bool HasInterface(const void* object, const InterfaceRecord& record) {
  if (!object || record.offset <= 0) return false;
  const MethodTableHeader* table = MethodTableOf(object);
  return record.offset < table->size && *(reinterpret_cast<const UChar*>(table) + record.offset) != 0;
}

template <typename R>
R NullReturnFor(Int reason) {
  if constexpr (std::is_void_v<R>) {
    return;
  } else if constexpr (IsResult<R>::value) {
    return ErrorResult{PrivateGetNullReturnError(reason)};
  } else {
    return R{};
  }
}

template <typename M>
struct MethodTraits;
template <typename R, typename C, typename... P>
struct MethodTraits<R (C::*)(P...) const> {
  using Return = R;
  using Interface = C;
  using Function = R (*)(void*, P...);
};

class ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.Object#1";
  static constexpr Int COUNT = 6;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kToString, kInitObject, kIsEqual, kCompare, kGetHashCode, kPrivateGetAdapter };
  static InterfaceRecord _record;

  ObjectInterface() = default;
  explicit ObjectInterface(void* object) : _object(object) {}

  void* GetPointer() const { return _object; }
  explicit operator bool() const { return _object != nullptr; }
  Bool operator==(std::nullptr_t) const { return _object == nullptr; }

  String ToString(const FormatStatement* statement) const;
  Result<void> InitObject() const { return Invoke<&ObjectInterface::InitObject, kInitObject>(); }
  Bool IsEqual(const ObjectInterface& other) const {
    return Invoke<&ObjectInterface::IsEqual, kIsEqual>(other);
  }
  Int Compare(const ObjectInterface& other) const { return Invoke<&ObjectInterface::Compare, kCompare>(other); }
  UInt GetHashCode() const { return Invoke<&ObjectInterface::GetHashCode, kGetHashCode>(); }

 protected:
  template <auto METHOD, Int SLOT, typename... A>
  typename MethodTraits<decltype(METHOD)>::Return Invoke(A&&... args) const {
    using Traits = MethodTraits<decltype(METHOD)>;
    using R = typename Traits::Return;
    if (!_object) return NullReturnFor<R>(0);
    // An interface the host left unresolved has no stretch in any table.
    if (Traits::Interface::_record.offset <= 0) return NullReturnFor<R>(0);
    const MethodPair* pair = MethodPairOf(MethodTableOf(_object), Traits::Interface::_record.offset, SLOT);
    if (!pair->function) return NullReturnFor<R>(3);
    auto function = reinterpret_cast<typename Traits::Function>(pair->function);
    return function(static_cast<char*>(_object) + pair->adjust, std::forward<A>(args)...);
  }

  void* _object = nullptr;
};

// The flags of a virtual interface's record: resolve, its reference class, and whether
// it has exactly one base.
constexpr UInt32 InterfaceFlags(UInt32 referenceClass, size_t baseCount) {
  return entityflags::RESOLVE | (referenceClass << entityflags::REFCLASS_SHIFT) |
         (baseCount == 1 ? entityflags::SINGLE_BASE : 0u);
}

// The base word of an interface's record: the one base's record, or the null-ended array.
constexpr const void* InterfaceBases(const InterfaceRecord* const* bases, size_t baseCount) {
  return baseCount == 1 ? static_cast<const void*>(bases[0]) : static_cast<const void*>(bases);
}

// A borrowed reference of interface I to the same object, or null when the object
// fails the interface test. No error either way.
template <typename I>
I Cast(const ObjectInterface& reference) {
  return HasInterface(reference.GetPointer(), I::_record) ? I(reference.GetPointer()) : I();
}

}  // namespace vorna

// Defines the record of a virtual interface class IFACE with its bases (records), in a
// source file that includes vorna/translationunit.h. An interface with one base holds
// that base's record itself and says so in its flags; others hold a null-ended array.
// The array is constexpr so that its element may be read while the record is constant
// initialised.
#define VORNA_DEFINE_INTERFACE(IFACE, ...)                                                         \
  static constexpr const ::vorna::InterfaceRecord* VORNA_CONCAT(IFACE, _bases)[] = {              \
      __VA_ARGS__ __VA_OPT__(, ) nullptr};                                                        \
  constinit ::vorna::InterfaceRecord IFACE::_record{                                              \
      {::vorna::UInt32(::vorna::EntityKind::INTERFACE), ::vorna::Id(IFACE::ID), nullptr, 0,        \
       ::vorna::InterfaceFlags(IFACE::REFCLASS, std::size(VORNA_CONCAT(IFACE, _bases)) - 1), nullptr, \
       nullptr},                                                                                  \
      nullptr,                                                                                    \
      0,                                                                                          \
      ::vorna::StretchSize(IFACE::COUNT),                                                         \
      0,                                                                                          \
      ::vorna::InterfaceBases(VORNA_CONCAT(IFACE, _bases), std::size(VORNA_CONCAT(IFACE, _bases)) - 1)}; \
  static const bool VORNA_CONCAT(IFACE, _linked) = (::vorna::LinkImport(&IFACE::_record, &g_translationUnit), true)

// Declares an interface class NAME on BASE whose methods this code does not call: its
// id, its reference class and its methods in slot order, as enumerators (an overload
// takes a number behind its name), so that its record and those of the interfaces
// derived from it keep their places.
#define VORNA_DECLARED_INTERFACE(NAME, BASE, TEXT, REFERENCE, ...)    \
  class NAME : public BASE {                                          \
   public:                                                            \
    static constexpr const Char* ID = TEXT;                           \
    enum : Int { __VA_ARGS__ __VA_OPT__(, ) METHOD_COUNT };           \
    static constexpr Int COUNT = METHOD_COUNT;                        \
    static constexpr UInt32 REFCLASS = REFERENCE;                     \
    static InterfaceRecord _record;                                   \
    using BASE::BASE;                                                 \
  }
