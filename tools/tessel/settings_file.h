// Export settings kept in a JSON file (convert --settings FILE), so that a later export
// uses them again: one object with a member per key of the settings, in their order,
// each {"type": T, "value": V}. T is the value's data type as `tessel describe` names
// it (Int32, Float64, BytesValue, Bool, Id, String, ...; an array of bytes is
// vorna.ParametricTypes:Array<vorna.Char>), V a JSON number, boolean or string, and
// the bytes of an array as base64. Reading a file back gives the same keys with values
// of the same types.
#pragma once

#include <string>

#include "failure.h"
#include "saver_catalogue.h"
#include "vorna/datadictionary.h"

namespace tessel::cli {

// Sets the file's settings into settings. Each key must be one that saver describes or
// that its system options write, with a value of that setting's type; anything else in
// the file is a usage failure that names it. A file that does not exist sets nothing.
bool ReadSettingsFile(const std::string& path, const SaverInfo& saver, vorna::DataDictionary& settings,
                      Failure& failure);
// Writes every key of settings into the file, replacing it whole only once the new one
// is written.
bool WriteSettingsFile(const std::string& path, const vorna::DataDictionary& settings, Failure& failure);

}  // namespace tessel::cli
