// A component class as the host builds it: its interfaces, its components at their
// places in the object, and its combined method table. Objects lay out as the counter,
// the method table word, then the components in order.
#pragma once

#include <atomic>
#include <vector>

#include "loading/interface_registry.h"
#include "vorna/objectbase.h"

namespace vorna {

class ClassHandle {
 public:
  struct Part {
    ClassRecord* record;
    Int offset;  // from the object pointer
  };

  Id id;
  std::atomic<Int> references{1};
  ClassHandle* base = nullptr;
  std::vector<const host::InterfaceInfo*> interfaces;
  std::vector<Part> components;
  Int objectSize = sizeof(void*);  // the method table word
  MethodTableHeader* table = nullptr;
  Bool finished = false;
};

}  // namespace vorna

namespace vorna::host {

ClassHandle* AllocClass(const Id& id);
void ReleaseClass(ClassHandle* cls);
Bool AddInterface(ClassHandle* cls, const InterfaceInfo* info);

}  // namespace vorna::host
