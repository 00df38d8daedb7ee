// AttributeStore and the conversions of its values.
#include "mfplat/attribute_store.h"

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "combaseapi.h"

namespace tessel::platform {

namespace {

template <typename T>
T* CopyToTaskMemory(const T* source, size_t count) {
  auto* copy = static_cast<T*>(CoTaskMemAlloc(count * sizeof(T)));
  if (copy && count) std::memcpy(copy, source, count * sizeof(T));
  return copy;
}

}  // namespace

MF_ATTRIBUTE_TYPE TypeOf(const AttributeValue& value) {
  constexpr MF_ATTRIBUTE_TYPE kTypes[] = {MF_ATTRIBUTE_UINT32, MF_ATTRIBUTE_UINT64, MF_ATTRIBUTE_DOUBLE,
                                          MF_ATTRIBUTE_GUID,   MF_ATTRIBUTE_STRING, MF_ATTRIBUTE_BLOB,
                                          MF_ATTRIBUTE_IUNKNOWN};
  return kTypes[value.index()];
}

HRESULT ToPropVariant(const AttributeValue& value, PROPVARIANT* out) {
  PropVariantInit(out);
  if (auto* v = std::get_if<UINT32>(&value)) {
    out->ulVal = *v;
  } else if (auto* v = std::get_if<UINT64>(&value)) {
    out->uhVal.QuadPart = *v;
  } else if (auto* v = std::get_if<double>(&value)) {
    out->dblVal = *v;
  } else if (auto* v = std::get_if<GUID>(&value)) {
    if (!(out->puuid = CopyToTaskMemory(v, 1))) return E_OUTOFMEMORY;
  } else if (auto* v = std::get_if<std::u16string>(&value)) {
    if (!(out->pwszVal = CopyToTaskMemory(v->c_str(), v->size() + 1))) return E_OUTOFMEMORY;
  } else if (auto* v = std::get_if<std::vector<UINT8>>(&value)) {
    if (!(out->caub.pElems = CopyToTaskMemory(v->data(), v->size()))) return E_OUTOFMEMORY;
    out->caub.cElems = static_cast<ULONG>(v->size());
  } else if (auto* v = std::get_if<ComPtr<IUnknown>>(&value)) {
    out->punkVal = ComPtr<IUnknown>(*v).Detach();
  }
  out->vt = TypeOf(value);
  return S_OK;
}

std::optional<AttributeValue> FromPropVariant(const PROPVARIANT& value) {
  switch (value.vt) {
    case VT_UI4: return AttributeValue(UINT32(value.ulVal));
    case VT_UI8: return AttributeValue(UINT64(value.uhVal.QuadPart));
    case VT_R8: return AttributeValue(value.dblVal);
    case VT_CLSID:
      if (!value.puuid) return std::nullopt;
      return AttributeValue(*value.puuid);
    case VT_LPWSTR:
      if (!value.pwszVal) return std::nullopt;
      return AttributeValue(std::u16string(value.pwszVal));
    case VT_VECTOR | VT_UI1:
      return AttributeValue(std::vector<UINT8>(value.caub.pElems, value.caub.pElems + value.caub.cElems));
    case VT_UNKNOWN: return AttributeValue(ComPtr<IUnknown>(value.punkVal));
    default: return std::nullopt;
  }
}

bool SameValue(const AttributeValue& a, const AttributeValue& b) {
  if (a.index() != b.index()) return false;
  return std::visit(
      [&](const auto& mine) {
        using T = std::decay_t<decltype(mine)>;
        const T& theirs = std::get<T>(b);
        if constexpr (std::is_same_v<T, ComPtr<IUnknown>>) {
          return mine.Get() == theirs.Get();
        } else {
          return mine == theirs;
        }
      },
      a);
}

std::optional<AttributeValue> AttributeStore::Find(REFGUID key) const {
  std::lock_guard lock(mutex_);
  for (const auto& [k, v] : items_) {
    if (IsEqualGUID(k, key)) return v;
  }
  return std::nullopt;
}

void AttributeStore::Set(REFGUID key, AttributeValue value) {
  std::lock_guard lock(mutex_);
  for (auto& item : items_) {
    if (IsEqualGUID(item.first, key)) {
      item.second = std::move(value);
      return;
    }
  }
  items_.emplace_back(key, std::move(value));
}

void AttributeStore::Erase(REFGUID key) {
  std::lock_guard lock(mutex_);
  std::erase_if(items_, [&](const auto& item) { return IsEqualGUID(item.first, key); });
}

void AttributeStore::Clear() {
  std::lock_guard lock(mutex_);
  items_.clear();
}

UINT32 AttributeStore::Count() const {
  std::lock_guard lock(mutex_);
  return static_cast<UINT32>(items_.size());
}

std::optional<std::pair<GUID, AttributeValue>> AttributeStore::At(UINT32 index) const {
  std::lock_guard lock(mutex_);
  if (index >= items_.size()) return std::nullopt;
  return items_[index];
}

std::vector<std::pair<GUID, AttributeValue>> AttributeStore::Items() const {
  std::lock_guard lock(mutex_);
  return items_;
}

}  // namespace tessel::platform
