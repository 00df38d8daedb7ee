// The host's implementations of non-virtual interfaces: one table per interface id,
// copied into a module's table when the module's record is resolved.
#pragma once

#include "vorna/records.h"

namespace vorna::host {

struct Provider {
  const Char* id;
  void* const* table;
  Int count;
};

void RegisterProvider(const Char* id, const void* table, Int count);
const Provider* FindProvider(const Id& id);
void ClearProviders();

// Fills a module's table from the provider; false when the host has no provider.
Bool ResolveStaticInterface(StaticInterfaceRecord* record);

// Called by a module's install-stubs: the entries without an own stub get the host's
// common stub of their return class.
void FillCommonStubs(StaticInterfaceRecord* record, void** table, const UChar* returnClasses, Int count);

}  // namespace vorna::host
