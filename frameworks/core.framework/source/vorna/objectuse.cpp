#include "vorna/objectuse.h"

namespace vorna {

const void* LookupObjectValue(ObjectUseRecord& record, const void* staticNull) {
  std::atomic_ref<const void*> slot(record.valueSlot);
  const void* value = slot.load(std::memory_order_acquire);
  if (!value && record.handle && g_coreFrameworkModule.initializer) {
    Result<void> out;
    g_coreFrameworkModule.initializer(out, record.handle, &record.id);
    value = slot.load(std::memory_order_acquire);
  }
  return value ? value : staticNull;
}

}  // namespace vorna
