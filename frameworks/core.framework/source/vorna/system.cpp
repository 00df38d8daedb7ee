#include "vorna/translationunit.h"

#include "vorna/system.h"

#include "vorna/refcounter.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(System, nullptr, &System::Table::RaiseError, &System::Table::RaiseErrorCopy);

void* System::AllocCounted(Int size, const SourceLocation& location) {
  char* block = static_cast<char*>(Alloc(size + Int(sizeof(UInt)), location));
  if (!block) return nullptr;
  block += sizeof(UInt);
  RefCounter::Init(block);
  return block;
}

void System::FreeCounted(void* block) { Free(static_cast<char*>(block) - sizeof(UInt)); }

}  // namespace vorna
