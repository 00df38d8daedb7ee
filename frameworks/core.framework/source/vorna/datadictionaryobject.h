// vorna.DataDictionaryObjectInterface#1: an object that keeps properties under keys.
// Streams, formats, converters and file formats answer and set their properties
// through it; a class answers the keys it knows and forwards the rest to its base.
#pragma once

#include "vorna/datadictionary.h"
#include "vorna/objectbase.h"

namespace vorna {

class DataDictionaryObjectInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.DataDictionaryObjectInterface#1";
  static constexpr Int COUNT = 6;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kSetData, kGetData, kEraseData, kReset, kIsEmpty, kInitIterator };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  Result<void> SetData(const ConstDataPtr& key, const ForwardingDataPtr& value) const {
    return Invoke<&DataDictionaryObjectInterface::SetData, kSetData>(key, value);
  }
  Result<Data> GetData(const ConstDataPtr& key) const {
    return Invoke<&DataDictionaryObjectInterface::GetData, kGetData>(key);
  }
  Result<void> EraseData(const ConstDataPtr& key) const {
    return Invoke<&DataDictionaryObjectInterface::EraseData, kEraseData>(key);
  }
  void Reset() const { Invoke<&DataDictionaryObjectInterface::Reset, kReset>(); }
  Bool IsEmpty() const { return Invoke<&DataDictionaryObjectInterface::IsEmpty, kIsEmpty>(); }

  // The property under key as T; an illegal state error when absent or of another type.
  template <typename T>
  Result<T> Get(const ConstDataPtr& key) const {
    VORNA_ASSIGN_OR_RETURN(Data value, GetData(key));
    return GetDataValue<T>(value);
  }

  // The value under key as T, or defaultValue when it is absent or of another type.
  template <typename T>
  T Get(const ConstDataPtr& key, const T& defaultValue) const {
    Result<T> value = Get<T>(key);
    return value.IsError() ? defaultValue : std::move(value).GetValue();
  }
};

extern ObjectUseRecord g_DataDictionaryObjectClass;

VORNA_DECLARED_INTERFACE(DataDictionaryReferenceObjectInterface, DataDictionaryObjectInterface, "vorna.DataDictionaryReferenceObjectInterface#1", refclass::STRONG,
                         kInit, kInit2, kGetDataContainer);

extern ObjectUseRecord g_DataDictionaryObjectEmptyClass;
extern ObjectUseRecord g_DataDictionaryObjectLockedClass;
extern ObjectUseRecord g_DataDictionaryObjectReferenceClass;
extern ObjectUseRecord g_DataDictionaryObjectSyncedClass;

}  // namespace vorna
