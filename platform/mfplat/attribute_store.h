// AttributeStore: the keyed values behind IMFAttributes, in the order they were first
// set. All members lock; LockStore/UnlockStore hold the lock across several calls of
// one thread.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "com.h"
#include "mfobjects.h"

namespace tessel::platform {

using AttributeValue =
    std::variant<UINT32, UINT64, double, GUID, std::u16string, std::vector<UINT8>, ComPtr<IUnknown>>;

// The attribute type of a value and the conversions to and from PROPVARIANT.
MF_ATTRIBUTE_TYPE TypeOf(const AttributeValue& value);
HRESULT ToPropVariant(const AttributeValue& value, PROPVARIANT* out);
std::optional<AttributeValue> FromPropVariant(const PROPVARIANT& value);
bool SameValue(const AttributeValue& a, const AttributeValue& b);

class AttributeStore {
 public:
  std::optional<AttributeValue> Find(REFGUID key) const;
  void Set(REFGUID key, AttributeValue value);
  void Erase(REFGUID key);
  void Clear();
  UINT32 Count() const;
  std::optional<std::pair<GUID, AttributeValue>> At(UINT32 index) const;
  std::vector<std::pair<GUID, AttributeValue>> Items() const;
  void Lock() { mutex_.lock(); }
  void Unlock() { mutex_.unlock(); }

 private:
  mutable std::recursive_mutex mutex_;
  std::vector<std::pair<GUID, AttributeValue>> items_;
};

}  // namespace tessel::platform
