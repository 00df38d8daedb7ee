// DataDictionary: a copy-on-write map from key to Data, held by the host
// (vorna.DataDictionaryInterface#1). Keys are typed pointers, in practice to InternedId
// variables, so two keys of one name have one identity.
#pragma once

#include "vorna/cowblockref.h"
#include "vorna/dataptr.h"
#include "vorna/staticinterface.h"

namespace vorna {

class DataDictionaryInterface {
 public:
  static constexpr const Char* ID = "vorna.DataDictionaryInterface#1";
  static constexpr Int COUNT = 14;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    Result<void> (*Set)(void* block, const ConstDataPtr& key, const ForwardingDataPtr& value);
    Result<Data> (*Get)(const void* block, const ConstDataPtr& key);
    Bool (*Erase)(void* block, const ConstDataPtr& key);
    Int (*GetCount)(const void* block);
    const Data* (*GetEntry)(const void* block, Int index, const Data** key);
    void (*Reset)(void* block);
    Reserved reserved[5];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 5, 5, 2, 2, 2, 0};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class DataDictionary : public COWBlockRef<DataDictionaryInterface> {
 public:
  Result<void> Set(const ConstDataPtr& key, const ForwardingDataPtr& value);
  // The value under key; an illegal state error when it is absent, the null-reference
  // error when there is no dictionary at all.
  Result<Data> Get(const ConstDataPtr& key) const;
  Bool Erase(const ConstDataPtr& key);
  Int GetCount() const { return _block ? DataDictionaryInterface::_table.GetCount(_block) : 0; }
  // Entry index in order of insertion; null past the end.
  const Data* GetEntry(Int index, const Data** key) const {
    return _block ? DataDictionaryInterface::_table.GetEntry(_block, index, key) : nullptr;
  }

  // The value under key as T, or an illegal state error when it is absent or of a type
  // T does not accept.
  template <typename T>
  Result<T> Get(const ConstDataPtr& key) const {
    VORNA_ASSIGN_OR_RETURN(Data value, Get(key));
    return GetDataValue<T>(value);
  }

  // The value under key as T, or defaultValue in every case the other Get fails.
  template <typename T>
  T Get(const ConstDataPtr& key, const T& defaultValue) const {
    Result<T> value = Get<T>(key);
    return value.IsError() ? defaultValue : std::move(value).GetValue();
  }
};

// A dictionary as a value: a Data holds one reference to its block.
VORNA_DECLARE_DATATYPE(DataDictionary, DataDictionary);

VORNA_DECLARED_STATIC_INTERFACE(DataDictionaryIteratorInterface, "vorna.DataDictionaryIteratorInterface#1", 6);

}  // namespace vorna
