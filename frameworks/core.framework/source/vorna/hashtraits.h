// HashTraits<K>: how a HashMap hashes and compares its keys. GetHashCode gives the full
// hash that a node keeps; IsEqual is asked only when two hashes agree. A traits class
// may take lookup keys of other types (a C string for a CString key) as long as equal
// keys give equal hashes.
#pragma once

#include <cstring>
#include <type_traits>

#include "vorna/basearray.h"
#include "vorna/id.h"
#include "vorna/objectbase.h"
#include "vorna/string.h"

namespace vorna {

// The host's hash of a 32-bit number.
constexpr UInt32 HashUInt32(UInt32 x) {
  x = x ^ (x >> 20) ^ (x >> 12);
  return x ^ (x >> 7) ^ (x >> 4);
}

// Wider numbers fold their upper half in first.
constexpr UInt32 HashUInt64(UInt64 x) { return HashUInt32(UInt32(x ^ (x >> 32))); }

// The multiplier of Id over the bytes of a C string; null counts as the empty text.
inline UInt HashCString(const Char* text) { return Id::HashText(text, Id::LengthOf(text)); }

inline Bool EqualCStrings(const Char* a, const Char* b) { return std::strcmp(a ? a : "", b ? b : "") == 0; }

template <typename K, typename = void>
struct HashTraits;

template <typename K>
struct HashTraits<K, std::enable_if_t<std::is_integral_v<K> || std::is_enum_v<K>>> {
  static UInt GetHashCode(K key) {
    if constexpr (sizeof(K) <= 4) return HashUInt32(UInt32(key));
    else return HashUInt64(UInt64(key));
  }
  static Bool IsEqual(K a, K b) { return a == b; }
};

template <typename T>
struct HashTraits<T*> {
  static UInt GetHashCode(const T* key) { return HashUInt64(UInt64(reinterpret_cast<UInt>(key))); }
  static Bool IsEqual(const T* a, const T* b) { return a == b; }
};

template <>
struct HashTraits<const Char*> {
  static UInt GetHashCode(const Char* key) { return HashCString(key); }
  static Bool IsEqual(const Char* a, const Char* b) { return EqualCStrings(a, b); }
};

template <>
struct HashTraits<CString> {
  static UInt GetHashCode(const CString& key) { return HashCString(key.GetCString()); }
  static UInt GetHashCode(const Char* key) { return HashCString(key); }
  static Bool IsEqual(const CString& a, const CString& b) { return EqualCStrings(a.GetCString(), b.GetCString()); }
  static Bool IsEqual(const CString& a, const Char* b) { return EqualCStrings(a.GetCString(), b); }
};

template <>
struct HashTraits<Id> {
  static UInt GetHashCode(const Id& key) { return key.GetHash(); }
  static Bool IsEqual(const Id& a, const Id& b) { return a == b; }
};

// Arrays: h = h * 31 + the element's hash, from 0.
template <typename T>
UInt HashElements(const T* data, Int count) {
  UInt h = 0;
  for (Int i = 0; i < count; ++i) h = h * 31 + HashTraits<std::remove_const_t<T>>::GetHashCode(data[i]);
  return h;
}

template <typename T>
Bool EqualElements(const T* a, Int countA, const T* b, Int countB) {
  if (countA != countB) return false;
  for (Int i = 0; i < countA; ++i)
    if (!HashTraits<std::remove_const_t<T>>::IsEqual(a[i], b[i])) return false;
  return true;
}

template <typename T>
struct HashTraits<BaseArray<T>> {
  static UInt GetHashCode(const BaseArray<T>& key) { return HashElements(key.GetData(), key.GetCount()); }
  static Bool IsEqual(const BaseArray<T>& a, const BaseArray<T>& b) {
    return EqualElements(a.GetData(), a.GetCount(), b.GetData(), b.GetCount());
  }
};

template <typename T>
struct HashTraits<Block<T>> {
  static UInt GetHashCode(const Block<T>& key) { return HashElements(key.data, key.count); }
  static Bool IsEqual(const Block<T>& a, const Block<T>& b) { return EqualElements(a.data, a.count, b.data, b.count); }
};

// Object references ask the object: GetHashCode, then IsEqual.
template <typename R>
struct HashTraits<R, std::enable_if_t<std::is_base_of_v<ObjectInterface, R>>> {
  static UInt GetHashCode(const R& key) { return key.GetHashCode(); }
  static Bool IsEqual(const R& a, const R& b) { return a.IsEqual(b); }
};

}  // namespace vorna
