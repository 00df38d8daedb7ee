// The virtual interfaces the host knows, by id. Each gets its stretch's place in every
// method table when first seen; a module's InterfaceRecord of the same id receives that
// place.
#pragma once

#include <vector>

#include "vorna/records.h"

namespace vorna::host {

// Method tables begin with three words: free function, size, class.
inline constexpr Int METHOD_TABLE_HEADER = 24;

struct InterfaceInfo {
  Id id;
  Int offset;
  Int size;
  std::vector<const InterfaceInfo*> bases;
};

// Registers the interface of record (and its bases) if new, writes its offset into
// the record and gives the host's entry; null for an interface this host does not
// serve, and when the record contradicts a known interface of the same id.
const InterfaceInfo* ResolveInterface(InterfaceRecord* record);

}  // namespace vorna::host
