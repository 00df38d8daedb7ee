#include "vorna/id.h"

#include <cstring>

#include "vorna/refcounter.h"
#include "vorna/system.h"

namespace vorna {

void Id::CopyFrom(const Id& other) {
  other.AddReference();
  Reset();
  _text = other._text;
  _packed = other._packed;
}

Bool Id::Init(const Char* text, Int length) {
  Reset();
  if (length <= 0) return true;
  if (length > MAX_LENGTH) return false;
  Char* copy = static_cast<Char*>(System::AllocCounted(length + 1, VORNA_SOURCE_LOCATION));
  if (!copy) return false;
  std::memcpy(copy, text, size_t(length));
  copy[length] = 0;
  _text = copy;
  _packed = Pack(HashText(copy, length), length, true);
  return true;
}

void Id::Reset() {
  if (IsOwned() && RefCounter::RemoveReference(_text)) System::FreeCounted(const_cast<Char*>(_text));
  Clear();
}

void Id::AddReference() const {
  if (IsOwned()) RefCounter::AddReference(_text);
}

Bool Id::operator==(const Id& other) const {
  if ((_packed & ~OWNED_BIT) != (other._packed & ~OWNED_BIT)) return false;
  if (_text == other._text) return true;
  return std::memcmp(GetCString(), other.GetCString(), size_t(GetLength())) == 0;
}

}  // namespace vorna
