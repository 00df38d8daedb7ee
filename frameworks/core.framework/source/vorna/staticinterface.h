// Non-virtual interfaces: one flat table of function pointers per module, which callers
// jump through. The host fills the table at load. Until then every entry leads to a
// stub: the module's own stubs (return class 5) try to resolve the interface on the
// spot and otherwise give an orderly null result; the host's common stubs fill the
// other entries.
#pragma once

#include <type_traits>
#include <utility>

#include "vorna/module.h"

namespace vorna {

// Return classes of the ReturnClassTable: what the host's common stub gives back.
namespace returnclass {
inline constexpr UChar NOTHING = 0;
inline constexpr UChar FREE = 1;
inline constexpr UChar WORD = 2;
inline constexpr UChar FLOAT64 = 3;
inline constexpr UChar OWN_STUB = 5;
}  // namespace returnclass

ErrorWord PrivateGetNullReturnError(Int reason);

// Tries to make the interface usable now: through the host's resolver if the record
// has a handle, else through its fallback. Otherwise outputs why and gives false.
Bool TryResolve(StaticInterfaceRecord* record);

template <typename T>
struct IsResult : std::false_type {};
template <typename T>
struct IsResult<Result<T>> : std::true_type {};

// The null result of a method whose interface could not be resolved.
template <typename R>
R NullReturn() {
  if constexpr (std::is_void_v<R>) {
    return;
  } else if constexpr (IsResult<R>::value) {
    return ErrorResult{PrivateGetNullReturnError(2)};
  } else if constexpr (std::is_same_v<R, ErrorWord>) {
    return PrivateGetNullReturnError(2);
  } else {
    return R{};
  }
}

namespace detail {

template <typename T>
struct IsResultOut : std::false_type {};
template <typename T>
struct IsResultOut<Result<T>&> : std::true_type {};

// A method that reports through a Result out parameter gets the null error there.
template <typename FIRST, typename... REST>
void SetNullOut(FIRST&& first, REST&&...) {
  if constexpr (IsResultOut<FIRST&&>::value) first = ErrorResult{PrivateGetNullReturnError(2)};
}

template <typename IFACE, auto MEMBER, typename R, typename... A>
R OwnStub(A... args) {
  if (TryResolve(&IFACE::_record)) return (IFACE::_table.*MEMBER)(std::forward<A>(args)...);
  if constexpr (sizeof...(A) > 0) SetNullOut(args...);
  return NullReturn<R>();
}

template <typename IFACE, auto MEMBER, typename R, typename... A>
constexpr auto MakeOwnStub(R (*)(A...)) -> R (*)(A...) {
  return &OwnStub<IFACE, MEMBER, R, A...>;
}

}  // namespace detail

// Writes the module's own stubs for MEMBERS into the table, then lets the host fill
// the rest.
template <typename IFACE, auto... MEMBERS>
void InstallStubs(HostStubFiller filler, StaticInterfaceRecord* record) {
  auto& table = IFACE::_table;
  ((table.*MEMBERS = detail::MakeOwnStub<IFACE, MEMBERS>(table.*MEMBERS)), ...);
  filler(record, record->table, IFACE::RETURN_CLASSES, record->count);
}

// The table of a static interface whose methods this code does not call.
template <Int METHODS>
struct DeclaredTable {
  void* entries[METHODS];
};

// Every entry of such a table has an own stub; the longest table has 24 entries.
inline constexpr Int DECLARED_MAX_METHODS = 24;
inline constexpr UChar DECLARED_RETURN_CLASSES[DECLARED_MAX_METHODS] = {
    5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 5};

namespace detail {

// The stub of an entry whose signature this code does not know. It tries to resolve
// the interface; unresolved, it has output why and gives the null word. It cannot pass
// arguments on, so a call that resolves the interface gets the null word as well, and
// the calls after it reach the implementation through the table.
template <typename IFACE, Int SLOT>
UInt DeclaredStub() {
  (void)TryResolve(&IFACE::_record);
  return 0;
}

// The local function of a fallback: answers nothing with the null word.
inline UInt DeclaredNothing() { return 0; }

template <typename IFACE, Int... SLOTS>
void WriteDeclaredStubs(std::integer_sequence<Int, SLOTS...>) {
  ((IFACE::_table.entries[SLOTS] = reinterpret_cast<void*>(&DeclaredStub<IFACE, SLOTS>)), ...);
}

}  // namespace detail

template <typename IFACE>
void InstallDeclaredStubs(HostStubFiller filler, StaticInterfaceRecord* record) {
  static_assert(IFACE::COUNT <= DECLARED_MAX_METHODS);
  detail::WriteDeclaredStubs<IFACE>(std::make_integer_sequence<Int, IFACE::COUNT>());
  filler(record, record->table, IFACE::RETURN_CLASSES, record->count);
}

// The flag of a record whose fallback is a function rather than nullptr, told by its type,
// so that it stays a constant where a function's address is not one.
template <typename F>
constexpr UInt32 FallbackFlag() {
  return std::is_null_pointer_v<F> ? 0u : entityflags::FALLBACK;
}

// A fallback for a declared interface that works without a host: every entry answers
// with the null word.
template <typename IFACE>
void DeclaredFallback(void** table) {
  for (Int i = 0; i < IFACE::COUNT; ++i) table[i] = reinterpret_cast<void*>(&detail::DeclaredNothing);
}

// A 32-bit signature number per method, stored for the host: the interface's id hash
// mixed with the slot. Host and module compute it from the same header, so the host can
// tell a table of another shape.
constexpr UInt SignatureHash(const Char* interfaceId, Int slot) {
  return UInt32(Id::HashText(interfaceId, Id::LengthOf(interfaceId)) * 31 + UInt(slot) + 1);
}

}  // namespace vorna

// Defines, in a source file that includes vorna/translationunit.h, the table and
// record of a static interface class IFACE (which declares
// `static Table _table; static StaticInterfaceRecord _record;`, `ID`, `COUNT` and
// `RETURN_CLASSES`) in one source file. The variadic arguments are the table members
// that have an own stub.
#define VORNA_DEFINE_STATIC_INTERFACE(IFACE, FALLBACK_FUNCTION, ...) \
  VORNA_DEFINE_STATIC_INTERFACE_RECORD(IFACE, FALLBACK_FUNCTION, (&::vorna::InstallStubs<IFACE __VA_OPT__(, ) __VA_ARGS__>))

// The same for a class made by VORNA_DECLARED_STATIC_INTERFACE: every entry has an own
// stub. FALLBACK_FUNCTION is null, or DeclaredFallback<IFACE> for an interface that
// answers without a host.
#define VORNA_DEFINE_DECLARED_STATIC_INTERFACE(IFACE, FALLBACK_FUNCTION) \
  VORNA_DEFINE_STATIC_INTERFACE_RECORD(IFACE, FALLBACK_FUNCTION, &::vorna::InstallDeclaredStubs<IFACE>)

#define VORNA_DEFINE_STATIC_INTERFACE_RECORD(IFACE, FALLBACK_FUNCTION, INSTALL_STUBS)                   \
  static_assert(sizeof(IFACE::Table) == IFACE::COUNT * sizeof(void*));                              \
  constinit IFACE::Table IFACE::_table{};                                                           \
  static constinit void* VORNA_CONCAT(IFACE, _second)[IFACE::COUNT]{};                              \
  static constinit ::vorna::UInt VORNA_CONCAT(IFACE, _hashes)[IFACE::COUNT]{};                      \
  constinit ::vorna::StaticInterfaceRecord IFACE::_record{                                          \
      {::vorna::UInt32(::vorna::EntityKind::STATIC_INTERFACE), ::vorna::Id(IFACE::ID), nullptr, 0,            \
       ::vorna::entityflags::RESOLVE | ::vorna::FallbackFlag<decltype(FALLBACK_FUNCTION)>(), nullptr,   \
       nullptr},                                                                                    \
      nullptr,                                                                                      \
      nullptr,                                                                                      \
      VORNA_CONCAT(IFACE, _second),                                                                 \
      VORNA_CONCAT(IFACE, _hashes),                                                                 \
      IFACE::COUNT,                                                                                 \
      INSTALL_STUBS,                                                                                \
      0,                                                                                            \
      FALLBACK_FUNCTION,                                                                                   \
      {0, 0}};                                                                                      \
  static const bool VORNA_CONCAT(IFACE, _linked) = [] {                                             \
    IFACE::_record.table = reinterpret_cast<void**>(&IFACE::_table);                                \
    for (::vorna::Int i = 0; i < IFACE::COUNT; ++i)                                                 \
      VORNA_CONCAT(IFACE, _hashes)[i] = ::vorna::SignatureHash(IFACE::ID, i);                       \
    ::vorna::LinkImport(&IFACE::_record, &g_translationUnit);                                                           \
    return true;                                                                                    \
  }()

// Declares a static interface NAME whose methods this code does not call: its id and its
// number of methods, so that its record and table exist with the host's shape. An entry
// is known by its place alone.
#define VORNA_DECLARED_STATIC_INTERFACE(NAME, TEXT, METHODS)                    \
  class NAME {                                                                  \
   public:                                                                      \
    static constexpr const Char* ID = TEXT;                                     \
    static constexpr Int COUNT = METHODS;                                       \
    using Table = ::vorna::DeclaredTable<METHODS>;                              \
    static constexpr const UChar* RETURN_CLASSES = ::vorna::DECLARED_RETURN_CLASSES; \
    static Table _table;                                                        \
    static StaticInterfaceRecord _record;                                       \
  }
