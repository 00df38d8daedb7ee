// DataDescription: what an object's settings are, as a copy-on-write host list of
// entries (vorna.DataDescriptionInterface#1), each a DataDictionary of
// vorna.datadescriptionprops.* keys (identifier, data type, default, minimum, enum...).
// Objects describe themselves through vorna.DataDescriptionObjectInterface#1.
#pragma once

#include "vorna/datadictionary.h"
#include "vorna/objectbase.h"

namespace vorna {

class DataDescriptionInterface {
 public:
  static constexpr const Char* ID = "vorna.DataDescriptionInterface#1";
  static constexpr Int COUNT = 12;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    Result<void> (*Add)(void* block, const DataDictionary& entry);
    Int (*GetCount)(const void* block);
    const DataDictionary* (*GetEntry)(const void* block, Int index);
    Reserved reserved[6];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 5, 2, 2};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class DataDescription : public COWBlockRef<DataDescriptionInterface> {
 public:
  Result<void> Add(const DataDictionary& entry);
  Int GetCount() const { return _block ? DataDescriptionInterface::_table.GetCount(_block) : 0; }
  const DataDictionary* GetEntry(Int index) const {
    return _block ? DataDescriptionInterface::_table.GetEntry(_block, index) : nullptr;
  }
};

class DataDescriptionObjectInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.DataDescriptionObjectInterface#1";
  static constexpr Int COUNT = 1;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kGetObjectDescription };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  // Adds the object's settings to description; settings, if given, are the values so far.
  Result<void> GetObjectDescription(DataDescription& description, const DataDictionary* settings) const {
    return Invoke<&DataDescriptionObjectInterface::GetObjectDescription, kGetObjectDescription>(description, settings);
  }
};

extern ObjectUseRecord g_DataDescriptionObjectClass;

}  // namespace vorna
