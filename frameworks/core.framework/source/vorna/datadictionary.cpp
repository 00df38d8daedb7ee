#include "vorna/translationunit.h"

#include "vorna/datadictionary.h"

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(DataDictionaryInterface, nullptr, &DataDictionaryInterface::Table::Set,
                              &DataDictionaryInterface::Table::Get);
VORNA_DEFINE_OBJECT_USE(g_dataTypeDataDictionary, "vorna.DataTypes:vorna.DataDictionary");

Result<void> DataDictionary::Set(const ConstDataPtr& key, const ForwardingDataPtr& value) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  return DataDictionaryInterface::_table.Set(block, key, value);
}

// Without a dictionary there is nothing to ask: the null-reference error.
Result<Data> DataDictionary::Get(const ConstDataPtr& key) const {
  if (!_block) return ErrorResult{PrivateGetNullReturnError(0)};
  return DataDictionaryInterface::_table.Get(_block, key);
}

Bool DataDictionary::Erase(const ConstDataPtr& key) {
  if (!_block) return false;
  void* block = MakeWritable();
  return block && DataDictionaryInterface::_table.Erase(block, key);
}

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(DataDictionaryIteratorInterface, nullptr);

}  // namespace vorna
