// The platform's COM classes and owning pointers, by their short names: a class derives
// from RuntimeClass with its list of interfaces and writes only its own methods; ComPtr
// owns one reference.
#pragma once

#include "wrl/client.h"
#include "wrl/implements.h"

namespace tessel::platform {

using Microsoft::WRL::ChainInterfaces;
using Microsoft::WRL::ClassicCom;
using Microsoft::WRL::ComPtr;
using Microsoft::WRL::Make;
using Microsoft::WRL::RuntimeClass;
using Microsoft::WRL::RuntimeClassFlags;

}  // namespace tessel::platform
