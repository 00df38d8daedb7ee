// Values of a saver's settings as the command line reads and shows them. A setting's type
// is the data type its description names (vorna.DataTypes:vorna.X, known here by X), and
// a value given on the command line is read as that type.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "json_writer.h"
#include "vorna/data.h"

namespace tessel::cli {

struct SettingValue {
  enum class Kind { kNone, kText, kInteger, kNumber, kBool };
  Kind kind = Kind::kNone;
  std::string text;
  int64_t integer = 0;
  double number = 0;
  bool flag = false;
};

// The X of vorna.DataTypes:vorna.X; the whole id for other types.
std::string TypeName(const vorna::Id& typeId);
// What a Data holds, for showing; kNone for a type the command line does not show.
SettingValue ValueOf(const vorna::Data& data);
// The values of a block of Ids or whole numbers, as descriptions give their choices.
std::vector<SettingValue> ChoicesOf(const vorna::Data& data);
std::string ToText(const SettingValue& value);
void WriteValue(JsonWriter& json, const SettingValue& value);

// A whole number, with k or M for thousands or millions ("8M" is 8000000).
bool ParseScaled(const std::string& text, int64_t& value);

// A Data of the type called typeName from text: Id and String take the text; Bool
// true, false, 1 or 0; Int32, Int64 and UInt32 whole numbers; BytesValue a whole number
// with k or M; Float64 a number. type is the published type to give the Data; null
// takes the host's type of that name, which BytesValue has none of here. False with a
// message when the text is no such value or the type is none of these.
bool ParseValue(const std::string& text, const std::string& typeName, const vorna::DataType* type,
                vorna::Data& value, std::string& error);

}  // namespace tessel::cli
