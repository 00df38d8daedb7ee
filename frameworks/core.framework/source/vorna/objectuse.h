// Published objects that live elsewhere: an ObjectUseRecord per use. A value is looked
// up at each use: the value slot; if it is 0 and the record has a handle, the host's
// resolver is asked and the slot read again; if still 0, the caller's static null value.
#pragma once

#include <atomic>

#include "vorna/module.h"

namespace vorna {

// The address of the value, or staticNull when the object is not available.
const void* LookupObjectValue(ObjectUseRecord& record, const void* staticNull);

constexpr ObjectUseRecord MakeObjectUseRecord(const Char* id) {
  ObjectUseRecord record{};
  record.kind = UInt32(EntityKind::OBJECT);
  record.id = Id(id);
  record.flags = entityflags::RESOLVE;
  return record;
}

}  // namespace vorna

// Defines an ObjectUseRecord variable for the published object ID in a source file that
// includes vorna/translationunit.h.
#define VORNA_DEFINE_OBJECT_USE(VAR, ID)                                       \
  constinit ::vorna::ObjectUseRecord VAR = ::vorna::MakeObjectUseRecord(ID);   \
  static const bool VORNA_CONCAT(VAR, _linked) = (::vorna::LinkImport(&VAR, &g_translationUnit), true)

// Defines VAR, the use of the component class ID declared by the header FILE, in a
// source file that includes vorna/translationunit.h: the file builds on that class by
// reference, and the host can tell which files need it.
#define VORNA_DEFINE_CLASS_USE(VAR, FILE, ID)                                                                  \
  constinit ::vorna::EntityUse VAR{nullptr, {0, 0}, nullptr, FILE, ::vorna::EntityUse::CLASS, ID};            \
  static const bool VORNA_CONCAT(VAR, _linked) = (::vorna::LinkUse(&VAR, &g_translationUnit), true)
