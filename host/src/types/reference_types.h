// The DataTypes the host publishes: the reference kinds, and the type of published
// DataTypes, whose value is the DataType record itself.
#pragma once

#include "vorna/datatype.h"

namespace vorna::host {

void PublishDataType(const DataType& type);
void PublishReferenceTypes();

}  // namespace vorna::host
