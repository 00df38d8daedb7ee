// vorna.DataDictionaryObjectClass: an object with a dictionary of properties, the base
// of streams, formats and converters.
#include "vorna/translationunit.h"

#include "classes/dictionary_objects.h"
#include "vorna/component.h"
#include "vorna/datadictionaryobject.h"

namespace vorna::host {

namespace {

class DataDictionaryObjectComponent : public Component<DataDictionaryObjectComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> SetData(const ConstDataPtr& key, const ForwardingDataPtr& value) { return _properties.Set(key, value); }
  Result<Data> GetData(const ConstDataPtr& key) const { return _properties.Get(key); }
  Result<void> EraseData(const ConstDataPtr& key) {
    _properties.Erase(key);
    return OK;
  }
  void Reset() { _properties.Reset(); }
  Bool IsEmpty() const { return _properties.GetCount() == 0; }

  // Copies share the dictionary until one of them writes.
  Result<void> CopyFrom(const DataDictionaryObjectComponent& source) {
    _properties = source._properties;
    return OK;
  }

  DataDictionary _properties;
};

}  // namespace

VORNA_COMPONENT_CLASS(DataDictionaryObjectComponent, g_dataDictionaryObjectClass, "vorna.DataDictionaryObjectClass", "",
                      nullptr, &DataDictionaryObjectInterface::_record,
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, SetData),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, EraseData),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, Reset),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, IsEmpty));

Result<void> CopyProperties(const ObjectInterface& from, const ObjectInterface& to) {
  auto* source = GetComponent<DataDictionaryObjectComponent>(from);
  auto* target = GetComponent<DataDictionaryObjectComponent>(to);
  if (!source || !target) return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION);
  target->_properties = source->_properties;
  return OK;
}

}  // namespace vorna::host
