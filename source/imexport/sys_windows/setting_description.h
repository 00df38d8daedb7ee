// The entries of a saver's setting description: each a dictionary of the setting's key,
// the id of its data type and its default, to which a minimum, a maximum, a unit and
// fixed choices may be added before it goes into the description.
#pragma once

#include "vorna/datadescription.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

template <typename T>
vorna::Result<vorna::DataDictionary> NewSettingEntry(const vorna::InternedId& key, const T& defaultValue) {
  vorna::DataDictionary entry;
  const vorna::DataType* type = vorna::DataTypeOf<T>();
  VORNA_RETURN_ON_ERROR(entry.Set(vorna::g_dataDescriptionIdentifier, key));
  VORNA_RETURN_ON_ERROR(entry.Set(vorna::g_dataDescriptionDatatype, type ? type->id : vorna::Id()));
  VORNA_RETURN_ON_ERROR(entry.Set(vorna::g_dataDescriptionDefaultvalue, defaultValue));
  return entry;
}

// An entry with a default and a minimum of the same value, such as 0 for a data rate.
template <typename T>
vorna::Result<void> DescribeFromMinimum(vorna::DataDescription& description, const vorna::InternedId& key,
                                        const T& minimum) {
  VORNA_ASSIGN_OR_RETURN(vorna::DataDictionary entry, NewSettingEntry(key, minimum));
  VORNA_RETURN_ON_ERROR(entry.Set(vorna::g_dataDescriptionMinvalue, minimum));
  return description.Add(entry);
}

}  // namespace tessel
