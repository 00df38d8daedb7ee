#include "vorna/data.h"

#include "vorna/system.h"

namespace vorna {

void* Data::Reserve(const DataType* type) {
  Reset();
  if (type->IsInline()) {
    _payload = 0;
    _type = type;
    return &_payload;
  }
  void* block = System::Alloc(type->size, VORNA_SOURCE_LOCATION);
  if (!block) return nullptr;
  _payload = reinterpret_cast<UInt>(block);
  _type = type;
  return block;
}

Bool Data::Init(const DataType* type) {
  void* value = Reserve(type);
  if (!value) return false;
  type->construct(value);
  return true;
}

Bool Data::SetValue(const DataType* type, const void* value) {
  void* target = Reserve(type);
  if (!target) return false;
  if (type->copyInto(target, value)) return true;
  // A failed copy leaves the target unconstructed: give the room back without destruct.
  if (!type->IsInline()) System::Free(target);
  _type = nullptr;
  _payload = 0;
  return false;
}

Bool Data::MoveValue(const DataType* type, void* value) {
  void* target = Reserve(type);
  if (!target) return false;
  type->moveInto(target, value);
  return true;
}

void Data::Reset() {
  if (!_type) return;
  void* value = GetAddress();
  _type->destruct(value);
  if (!_type->IsInline()) System::Free(value);
  _type = nullptr;
  _payload = 0;
}

}  // namespace vorna
