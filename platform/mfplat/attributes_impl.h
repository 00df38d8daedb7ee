// AttributesImpl: IMFAttributes over an AttributeStore, as the base of every object
// that is also an attribute store (attributes, media types, samples). Interface is the
// RuntimeClass that gives QueryInterface, AddRef and Release.
#pragma once

#include <cstring>
#include <memory>

#include "combaseapi.h"
#include "mferror.h"
#include "mfplat/attribute_store.h"

namespace tessel::platform {

template <typename Interface>
class AttributesImpl : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE GetItem(REFGUID key, PROPVARIANT* value) override {
    auto found = store_.Find(key);
    if (!found) return MF_E_ATTRIBUTENOTFOUND;
    return value ? ToPropVariant(*found, value) : S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemType(REFGUID key, MF_ATTRIBUTE_TYPE* type) override {
    if (!type) return E_POINTER;
    auto found = store_.Find(key);
    if (!found) return MF_E_ATTRIBUTENOTFOUND;
    *type = TypeOf(*found);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE CompareItem(REFGUID key, REFPROPVARIANT value, BOOL* result) override {
    if (!result) return E_POINTER;
    auto found = store_.Find(key);
    auto theirs = FromPropVariant(value);
    *result = found && theirs && SameValue(*found, *theirs);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Compare(IMFAttributes* theirs, MF_ATTRIBUTES_MATCH_TYPE matchType,
                                    BOOL* result) override {
    if (!theirs || !result) return E_POINTER;
    *result = Matches(theirs, matchType);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetUINT32(REFGUID key, UINT32* value) override { return GetTyped(key, value); }
  HRESULT STDMETHODCALLTYPE GetUINT64(REFGUID key, UINT64* value) override { return GetTyped(key, value); }
  HRESULT STDMETHODCALLTYPE GetDouble(REFGUID key, double* value) override { return GetTyped(key, value); }
  HRESULT STDMETHODCALLTYPE GetGUID(REFGUID key, GUID* value) override { return GetTyped(key, value); }
  HRESULT STDMETHODCALLTYPE GetStringLength(REFGUID key, UINT32* length) override {
    std::u16string text;
    HRESULT hr = GetTyped(key, &text);
    if (SUCCEEDED(hr) && length) *length = static_cast<UINT32>(text.size());
    return hr;
  }
  HRESULT STDMETHODCALLTYPE GetString(REFGUID key, LPWSTR value, UINT32 capacity, UINT32* length) override {
    std::u16string text;
    HRESULT hr = GetTyped(key, &text);
    if (FAILED(hr)) return hr;
    if (!value) return E_POINTER;
    if (text.size() + 1 > capacity) return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(value, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    if (length) *length = static_cast<UINT32>(text.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAllocatedString(REFGUID key, LPWSTR* value, UINT32* length) override {
    if (!value || !length) return E_POINTER;
    std::u16string text;
    HRESULT hr = GetTyped(key, &text);
    if (FAILED(hr)) return hr;
    *value = static_cast<LPWSTR>(CoTaskMemAlloc((text.size() + 1) * sizeof(WCHAR)));
    if (!*value) return E_OUTOFMEMORY;
    std::memcpy(*value, text.c_str(), (text.size() + 1) * sizeof(WCHAR));
    *length = static_cast<UINT32>(text.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetBlobSize(REFGUID key, UINT32* size) override {
    std::vector<UINT8> blob;
    HRESULT hr = GetTyped(key, &blob);
    if (SUCCEEDED(hr) && size) *size = static_cast<UINT32>(blob.size());
    return hr;
  }
  HRESULT STDMETHODCALLTYPE GetBlob(REFGUID key, UINT8* buffer, UINT32 capacity, UINT32* size) override {
    std::vector<UINT8> blob;
    HRESULT hr = GetTyped(key, &blob);
    if (FAILED(hr)) return hr;
    if (!buffer) return E_POINTER;
    if (blob.size() > capacity) return HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER);
    if (!blob.empty()) std::memcpy(buffer, blob.data(), blob.size());
    if (size) *size = static_cast<UINT32>(blob.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetAllocatedBlob(REFGUID key, UINT8** buffer, UINT32* size) override {
    if (!buffer || !size) return E_POINTER;
    std::vector<UINT8> blob;
    HRESULT hr = GetTyped(key, &blob);
    if (FAILED(hr)) return hr;
    *buffer = static_cast<UINT8*>(CoTaskMemAlloc(blob.size()));
    if (!*buffer) return E_OUTOFMEMORY;
    if (!blob.empty()) std::memcpy(*buffer, blob.data(), blob.size());
    *size = static_cast<UINT32>(blob.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetUnknown(REFGUID key, REFIID riid, LPVOID* object) override {
    ComPtr<IUnknown> unknown;
    HRESULT hr = GetTyped(key, std::addressof(unknown));
    if (FAILED(hr)) return hr;
    if (!object) return E_POINTER;
    return unknown ? unknown->QueryInterface(riid, object) : E_NOINTERFACE;
  }
  HRESULT STDMETHODCALLTYPE SetItem(REFGUID key, REFPROPVARIANT value) override {
    auto converted = FromPropVariant(value);
    if (!converted) return MF_E_INVALIDTYPE;
    store_.Set(key, std::move(*converted));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DeleteItem(REFGUID key) override {
    store_.Erase(key);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE DeleteAllItems() override {
    store_.Clear();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetUINT32(REFGUID key, UINT32 value) override { return SetValue(key, value); }
  HRESULT STDMETHODCALLTYPE SetUINT64(REFGUID key, UINT64 value) override { return SetValue(key, value); }
  HRESULT STDMETHODCALLTYPE SetDouble(REFGUID key, double value) override { return SetValue(key, value); }
  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID key, REFGUID value) override { return SetValue(key, GUID(value)); }
  HRESULT STDMETHODCALLTYPE SetString(REFGUID key, LPCWSTR value) override {
    if (!value) return E_POINTER;
    return SetValue(key, std::u16string(value));
  }
  HRESULT STDMETHODCALLTYPE SetBlob(REFGUID key, const UINT8* buffer, UINT32 size) override {
    if (!buffer && size) return E_POINTER;
    return SetValue(key, std::vector<UINT8>(buffer, buffer + size));
  }
  HRESULT STDMETHODCALLTYPE SetUnknown(REFGUID key, IUnknown* object) override {
    return SetValue(key, ComPtr<IUnknown>(object));
  }
  HRESULT STDMETHODCALLTYPE LockStore() override {
    store_.Lock();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE UnlockStore() override {
    store_.Unlock();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) override {
    if (!count) return E_POINTER;
    *count = store_.Count();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetItemByIndex(UINT32 index, GUID* key, PROPVARIANT* value) override {
    if (!key) return E_POINTER;
    auto item = store_.At(index);
    if (!item) return E_INVALIDARG;
    *key = item->first;
    return value ? ToPropVariant(item->second, value) : S_OK;
  }
  HRESULT STDMETHODCALLTYPE CopyAllItems(IMFAttributes* destination) override {
    if (!destination) return E_POINTER;
    destination->DeleteAllItems();
    for (const auto& [key, value] : store_.Items()) {
      PROPVARIANT item;
      HRESULT hr = ToPropVariant(value, &item);
      if (SUCCEEDED(hr)) hr = destination->SetItem(key, item);
      PropVariantClear(&item);
      if (FAILED(hr)) return hr;
    }
    return S_OK;
  }

 protected:
  AttributeStore& Store() { return store_; }

  // True when every item of this store is in theirs with the same value, and the other
  // way round.
  bool SameItems(IMFAttributes* theirs) { return Matches(theirs, MF_ATTRIBUTES_MATCH_ALL_ITEMS); }

 private:
  template <typename T>
  HRESULT GetTyped(REFGUID key, T* value) {
    auto found = store_.Find(key);
    if (!found) return MF_E_ATTRIBUTENOTFOUND;
    const T* typed = std::get_if<T>(&*found);
    if (!typed) return MF_E_INVALIDTYPE;
    if (!value) return E_POINTER;
    *value = *typed;
    return S_OK;
  }

  HRESULT SetValue(REFGUID key, AttributeValue value) {
    store_.Set(key, std::move(value));
    return S_OK;
  }

  // Whether each of our items is in theirs with the same value.
  static bool Contains(const std::vector<std::pair<GUID, AttributeValue>>& items, IMFAttributes* other) {
    for (const auto& [key, value] : items) {
      PROPVARIANT theirs;
      PropVariantInit(&theirs);
      if (FAILED(other->GetItem(key, &theirs))) return false;
      auto converted = FromPropVariant(theirs);
      PropVariantClear(&theirs);
      if (!converted || !SameValue(value, *converted)) return false;
    }
    return true;
  }

  bool Matches(IMFAttributes* theirs, MF_ATTRIBUTES_MATCH_TYPE matchType) {
    auto ours = store_.Items();
    UINT32 theirCount = 0;
    theirs->GetCount(&theirCount);
    switch (matchType) {
      case MF_ATTRIBUTES_MATCH_OUR_ITEMS: return Contains(ours, theirs);
      case MF_ATTRIBUTES_MATCH_THEIR_ITEMS: return ContainsTheirs(theirs);
      case MF_ATTRIBUTES_MATCH_ALL_ITEMS: return ours.size() == theirCount && Contains(ours, theirs);
      case MF_ATTRIBUTES_MATCH_SMALLER:
        return ours.size() <= theirCount ? Contains(ours, theirs) : ContainsTheirs(theirs);
      case MF_ATTRIBUTES_MATCH_INTERSECTION: return IntersectionAgrees(ours, theirs);
    }
    return false;
  }

  bool ContainsTheirs(IMFAttributes* theirs) {
    UINT32 count = 0;
    theirs->GetCount(&count);
    for (UINT32 i = 0; i < count; ++i) {
      GUID key;
      PROPVARIANT value;
      PropVariantInit(&value);
      if (FAILED(theirs->GetItemByIndex(i, &key, &value))) return false;
      auto converted = FromPropVariant(value);
      PropVariantClear(&value);
      auto mine = store_.Find(key);
      if (!converted || !mine || !SameValue(*mine, *converted)) return false;
    }
    return true;
  }

  static bool IntersectionAgrees(const std::vector<std::pair<GUID, AttributeValue>>& items, IMFAttributes* other) {
    for (const auto& [key, value] : items) {
      PROPVARIANT theirs;
      PropVariantInit(&theirs);
      if (FAILED(other->GetItem(key, &theirs))) continue;
      auto converted = FromPropVariant(theirs);
      PropVariantClear(&theirs);
      if (!converted || !SameValue(value, *converted)) return false;
    }
    return true;
  }

  AttributeStore store_;
};

}  // namespace tessel::platform
