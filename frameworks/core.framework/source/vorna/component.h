// Component classes. A component is a C++ struct of plain fields that a class adds to
// its objects, with the methods it overrides. Its ClassRecord tells the host how to
// construct, destruct, initialise and copy it, which interface it adds, and how to
// write its overrides into the class's method table (initMethods). An override reaches
// the method it replaced through the component's super table, a copy of the class's
// table before the component's own overrides were written.
//
// A class is defined by an ObjectDefinitionRecord whose create function builds it:
// Class::Alloc, AddBase with the published base class, IsComplete, AddComponent,
// Finish; its insert function enters it in vorna.Classes.
#pragma once

#include <cstring>
#include <initializer_list>
#include <new>

#include "vorna/classinterface.h"
#include "vorna/diagnostics.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna/referencedata.h"

namespace vorna {

template <typename M>
struct ComponentMethodTraits;
template <typename R, typename C, typename... P>
struct ComponentMethodTraits<R (C::*)(P...)> {
  using Component = C;
};
template <typename R, typename C, typename... P>
struct ComponentMethodTraits<R (C::*)(P...) const> {
  using Component = C;
};

namespace detail {

template <auto CMETHOD, typename R, typename... P>
R Thunk(void* component, P... args) {
  using C = typename ComponentMethodTraits<decltype(CMETHOD)>::Component;
  return (static_cast<C*>(component)->*CMETHOD)(std::forward<P>(args)...);
}

template <auto CMETHOD, typename R, typename I, typename... P>
void* MakeThunk(R (I::*)(P...) const) {
  return reinterpret_cast<void*>(&Thunk<CMETHOD, R, P...>);
}

}  // namespace detail

// Writes one override of interface method IMETHOD (slot SLOT) into the class's table.
template <auto IMETHOD, Int SLOT, auto CMETHOD>
Bool WriteOverride(ClassHandle* cls, const ClassRecord* record) {
  using I = typename MethodTraits<decltype(IMETHOD)>::Interface;
  char* stretch = static_cast<char*>(Class::GetMethods(cls, I::_record.offset, I::_record.size));
  if (!stretch) return false;
  MethodPair* pair = reinterpret_cast<MethodPair*>(stretch + STRETCH_HEAD) + SLOT;
  pair->function = detail::MakeThunk<CMETHOD>(IMETHOD);
  pair->adjust = record->componentOffset;
  return true;
}

template <typename SELF>
class Component {
 public:
  // The object this component belongs to.
  void* GetObjectPointer() const {
    return const_cast<char*>(reinterpret_cast<const char*>(this)) - SELF::_classRecord.componentOffset;
  }
  ObjectInterface GetObject() const { return ObjectInterface(GetObjectPointer()); }

 protected:
  // Calls the implementation that this component's override of IMETHOD replaced.
  template <auto IMETHOD, Int SLOT, typename... A>
  typename MethodTraits<decltype(IMETHOD)>::Return Super(A&&... args) const {
    using Traits = MethodTraits<decltype(IMETHOD)>;
    using R = typename Traits::Return;
    const ClassRecord& record = SELF::_classRecord;
    const auto* table = static_cast<const MethodTableHeader*>(record.superTable);
    const InterfaceRecord& iface = Traits::Interface::_record;
    if (!table || iface.offset <= 0 || iface.offset >= table->size) return NullReturnFor<R>(3);
    const MethodPair* pair = MethodPairOf(table, iface.offset, SLOT);
    if (!pair->function) return NullReturnFor<R>(3);
    auto function = reinterpret_cast<typename Traits::Function>(pair->function);
    return function(static_cast<char*>(GetObjectPointer()) + pair->adjust, std::forward<A>(args)...);
  }
};

// The component of type C inside object, found through the object's class; null for
// a null object or a class without that component.
template <typename C>
C* GetComponent(const ObjectInterface& object) {
  void* pointer = object.GetPointer();
  if (!pointer) return nullptr;
  Int offset = Class::GetComponentOffset(MethodTableOf(pointer)->cls, &C::_classRecord);
  return offset < 0 ? nullptr : reinterpret_cast<C*>(static_cast<char*>(pointer) + offset);
}

// The default copy of a component with members and no CopyFrom of its own.
Result<void> ReportMissingCopyFrom(const ClassRecord& record);

namespace detail {

template <typename C>
void Construct(void* p) {
  new (p) C();
}
template <typename C>
void Destruct(void* p) {
  static_cast<C*>(p)->~C();
}
template <typename C>
Result<void> InitComponent(void* p) {
  if constexpr (requires(C& c) { c.Init(); })
    return static_cast<C*>(p)->Init();
  else
    return OK;
}
template <typename C>
void FreeComponent(void* p) {
  if constexpr (requires(C& c) { c.Free(); }) static_cast<C*>(p)->Free();
}
template <typename C>
Result<void> CopyComponent(void* destination, const void* source) {
  if constexpr (requires(C& c, const C& s) { c.CopyFrom(s); })
    return static_cast<C*>(destination)->CopyFrom(*static_cast<const C*>(source));
  else if constexpr (std::is_empty_v<C>)
    return OK;
  else
    return ReportMissingCopyFrom(C::_classRecord);
}
inline Result<void> DefaultSuccess(void*) { return OK; }
inline void DefaultNothing(void*) {}

}  // namespace detail

template <typename C>
constexpr ClassRecord MakeClassRecord(const InterfaceRecord* const* interfaces,
                                      Bool (*initMethods)(ClassHandle*, ClassRecord*)) {
  ClassRecord record{};
  record.kind = UInt32(EntityKind::CLASS);
  record.flags = entityflags::RESOLVE | entityflags::DEFINITION;
  record.construct = &detail::Construct<C>;
  record.destruct = &detail::Destruct<C>;
  record.init = &detail::InitComponent<C>;
  record.free = &detail::FreeComponent<C>;
  record.copyFrom = &detail::CopyComponent<C>;
  record.initMethods = initMethods;
  record.reserved0 = &detail::DefaultSuccess;
  record.reserved1 = &detail::DefaultNothing;
  record.reserved2 = &detail::DefaultSuccess;
  record.interfaces = interfaces;
  record.interfaceCount = 1;
  record.size = std::is_empty_v<C> ? 0 : Int(sizeof(C));
  record.alignment = 8;
  return record;
}

// True when every step succeeded; the steps run in order.
inline Bool AllTrue(std::initializer_list<Bool> steps) {
  for (Bool step : steps)
    if (!step) return false;
  return true;
}

// Joins the class id into the record's name buffer and gives the record its id.
void NameClassRecord(ClassRecord& record, const Char* dottedId, const Char* componentName);

// The create function of a class definition: builds the class on baseClass (null for
// none) with the component record.
Result<Data> BuildClass(ObjectDefinitionRecord& definition, ObjectUseRecord* baseClass, ClassRecord& component);

// The insert and erase functions of class definitions: vorna.Classes.
Result<void> InsertClass(ObjectDefinitionRecord& definition);
void EraseClass(ObjectDefinitionRecord& definition);

// The value of a class definition of this module, resolved on demand.
ClassHandle* GetDefinedClass(ObjectDefinitionRecord& definition);

// One instance of a class, as a counted reference.
Result<ObjectRef> CreateObjectOfClass(ClassHandle* cls, const SourceLocation& location);

// The class published under a use record's id, or null while it is not available.
ClassHandle* GetPublishedClass(ObjectUseRecord& publishedClass);

// One instance of a published class, seen through interface I; a null reference when
// the object lacks I. A class that is not available gives the null-pointer error.
template <typename I>
Result<StrongRef<I>> CreateObjectOf(ObjectUseRecord& publishedClass, const SourceLocation& location) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetPublishedClass(publishedClass), location));
  return StrongRef<I>(Cast<I>(object));
}

constexpr ObjectDefinitionRecord MakeDefinitionRecord(ObjectCreateFunction create, ObjectRecordFunction insert,
                                                      ObjectEndFunction erase) {
  ObjectDefinitionRecord record{};
  record.kind = UInt32(EntityKind::OBJECT);
  record.flags = entityflags::RESOLVE | entityflags::DEFINITION;
  record.create = create;
  record.insert = insert;
  record.erase = erase;
  return record;
}

}  // namespace vorna

// One override in the list of VORNA_COMPONENT_CLASS: interface method I::M by Self::M.
#define VORNA_OVERRIDE(I, M) ::vorna::WriteOverride<&I::M, I::k##M, &Self::M>(cls, record)

// Defines the component class of C, whose full id is DOTTED_ID joined with
// COMPONENT_NAME, on the published base class BASE_USE (an ObjectUseRecord, or nullptr),
// adding interface IFACE; the variadic arguments are its VORNA_OVERRIDEs. Defines
// C::_classRecord and the class's definition record CLASS_VAR.
#define VORNA_COMPONENT_CLASS(C, CLASS_VAR, DOTTED_ID, COMPONENT_NAME, BASE_USE, IFACE, ...)                 \
  static constinit const ::vorna::InterfaceRecord* const VORNA_CONCAT(C, _interfaces)[] = {IFACE, nullptr};   \
  static ::vorna::Bool VORNA_CONCAT(C, _initMethods)(::vorna::ClassHandle * cls, ::vorna::ClassRecord * record) { \
    using Self [[maybe_unused]] = C;                                                                         \
    (void)cls;                                                                                               \
    (void)record;                                                                                            \
    return ::vorna::AllTrue({true __VA_OPT__(, ) __VA_ARGS__});                                               \
  }                                                                                                          \
  constinit ::vorna::ClassRecord C::_classRecord =                                                           \
      ::vorna::MakeClassRecord<C>(VORNA_CONCAT(C, _interfaces), &VORNA_CONCAT(C, _initMethods));             \
  static ::vorna::Result<::vorna::Data> VORNA_CONCAT(C, _create)(::vorna::ObjectDefinitionRecord & d) {      \
    return ::vorna::BuildClass(d, BASE_USE, C::_classRecord);                                                \
  }                                                                                                          \
  constinit ::vorna::ObjectDefinitionRecord CLASS_VAR = ::vorna::MakeDefinitionRecord(                       \
      &VORNA_CONCAT(C, _create), &::vorna::InsertClass, &::vorna::EraseClass);                               \
  static const bool VORNA_CONCAT(C, _linked) = [] {                                                          \
    ::vorna::NameClassRecord(C::_classRecord, DOTTED_ID, COMPONENT_NAME);                                    \
    ::vorna::LinkDefinition(&C::_classRecord, &g_translationUnit);                                           \
    CLASS_VAR.id = C::_classRecord.id;                                                                       \
    ::vorna::LinkDefinition(&CLASS_VAR, &g_translationUnit);                                                 \
    return true;                                                                                             \
  }()
