#include "vorna/translationunit.h"

#include "vorna/datadescription.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(DataDescriptionInterface, nullptr, &DataDescriptionInterface::Table::Add);
VORNA_DEFINE_INTERFACE(DataDescriptionObjectInterface, &ObjectInterface::_record);

Result<void> DataDescription::Add(const DataDictionary& entry) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  return DataDescriptionInterface::_table.Add(block, entry);
}

VORNA_DEFINE_OBJECT_USE(g_DataDescriptionObjectClass, "vorna.DataDescriptionObjectClass");

}  // namespace vorna
