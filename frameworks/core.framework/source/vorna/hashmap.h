// HashMap<K, V>: an open hash with chains. The table is a power of two long; a bucket is
// two words, the head of its chain and its place in the list of non-empty buckets,
// which gives the iteration order: buckets in the order they were first used, each
// chain from head to tail. The mask is the table length minus 1, and -1 while there is
// no table. A node is next, full hash, key, value; keys are compared by hash, then by
// HashTraits<K>::IsEqual.
//
// The first table has the smallest power of two not below 21 / load factor + 2 buckets
// (20 with no growth), 64 at the default load factor 0.65, with threshold 41. When the
// count passes the threshold the table doubles and every node is relinked; a failed
// growth is no error, the map goes on with its old table. A failed node allocation
// gives the out-of-memory error. All memory comes from System.
//
// No internal locking: whoever shares a map guards it. Entries stay where they are
// until they are erased or the map is reset, growth only relinks them; an insert or an
// erase ends every iteration that is under way.
#pragma once

#include <new>
#include <utility>

#include "vorna/errorbase.h"
#include "vorna/hashtraits.h"

namespace vorna {

inline constexpr SourceLocation HASHMAP_TABLE_LOCATION{"vorna/hashmap", 412, 0};
inline constexpr SourceLocation HASHMAP_NODE_LOCATION{"vorna/hashmap", 1120, 0};

template <typename K, typename V, typename TRAITS = HashTraits<K>>
class HashMap {
 public:
  static constexpr Float64 DEFAULT_LOAD_FACTOR = 0.65;

  struct Entry {
    Entry* next;
    UInt hash;
    K key;
    V value;

    const K& GetKey() const { return key; }
    V& GetValue() { return value; }
    const V& GetValue() const { return value; }
  };

  struct Bucket {
    Entry* head;
    Int place;
  };

  template <typename E>
  class Iterator {
   public:
    Iterator(Bucket* const* list, Int count, Int index) : _list(list), _count(count), _index(index) {
      _entry = index < count ? list[index]->head : nullptr;
    }
    E& operator*() const { return *_entry; }
    E* operator->() const { return _entry; }
    Iterator& operator++() {
      _entry = _entry->next;
      if (!_entry && ++_index < _count) _entry = _list[_index]->head;
      return *this;
    }
    Bool operator==(const Iterator& other) const { return _entry == other._entry; }

   private:
    Bucket* const* _list;
    Int _count;
    Int _index;
    E* _entry;
  };

  explicit HashMap(Float64 loadFactor = DEFAULT_LOAD_FACTOR) : _loadFactor(loadFactor) {}
  HashMap(const HashMap&) = delete;
  HashMap& operator=(const HashMap&) = delete;
  HashMap(HashMap&& other) noexcept { TakeFrom(other); }
  HashMap& operator=(HashMap&& other) noexcept {
    if (this != &other) {
      Reset();
      TakeFrom(other);
    }
    return *this;
  }
  ~HashMap() { Reset(); }

  Int GetCount() const { return _count; }
  Bool IsEmpty() const { return _count == 0; }
  Int GetTableLength() const { return _mask + 1; }
  Int GetThreshold() const { return _threshold; }
  Float64 GetLoadFactor() const { return _loadFactor; }

  Iterator<Entry> begin() { return {_nonEmpty, _nonEmptyCount, 0}; }
  Iterator<Entry> end() { return {_nonEmpty, _nonEmptyCount, _nonEmptyCount}; }
  Iterator<const Entry> begin() const { return {_nonEmpty, _nonEmptyCount, 0}; }
  Iterator<const Entry> end() const { return {_nonEmpty, _nonEmptyCount, _nonEmptyCount}; }

  // The entry of key, or null. Q is K or a lookup type that the traits accept.
  template <typename Q>
  Entry* Find(const Q& key) {
    if (_mask < 0) return nullptr;
    const UInt hash = TRAITS::GetHashCode(key);
    return FindIn(BucketOf(hash), hash, key);
  }
  template <typename Q>
  const Entry* Find(const Q& key) const {
    return const_cast<HashMap*>(this)->Find(key);
  }

  // The entry of key: the existing one unchanged, or a new one with value. created, if
  // given, tells which.
  template <typename KK, typename VV>
  Result<Entry*> Insert(KK&& key, VV&& value, Bool* created = nullptr) {
    const UInt hash = TRAITS::GetHashCode(key);
    if (Entry* entry = _mask < 0 ? nullptr : FindIn(BucketOf(hash), hash, key)) {
      if (created) *created = false;
      return entry;
    }
    Result<Entry*> result = Add(hash, std::forward<KK>(key), std::forward<VV>(value));
    if (created) *created = !result.IsError();
    return result;
  }

  // The entry of key, holding value whether it existed or not.
  template <typename KK, typename VV>
  Result<Entry*> InsertOrAssign(KK&& key, VV&& value) {
    const UInt hash = TRAITS::GetHashCode(key);
    if (Entry* entry = _mask < 0 ? nullptr : FindIn(BucketOf(hash), hash, key)) {
      entry->value = std::forward<VV>(value);
      return entry;
    }
    return Add(hash, std::forward<KK>(key), std::forward<VV>(value));
  }

  // Removes the entry of key; false if there was none.
  template <typename Q>
  Bool Erase(const Q& key) {
    if (_mask < 0) return false;
    const UInt hash = TRAITS::GetHashCode(key);
    Bucket& bucket = BucketOf(hash);
    for (Entry** link = &bucket.head; *link; link = &(*link)->next) {
      Entry* entry = *link;
      if (entry->hash != hash || !TRAITS::IsEqual(entry->key, key)) continue;
      *link = entry->next;
      FreeEntry(entry);
      --_count;
      if (!bucket.head) Unlist(bucket);
      return true;
    }
    return false;
  }

  // Frees every entry with its key and value and gives up the table: the empty state.
  void Reset() {
    for (Int i = 0; i < _nonEmptyCount; ++i) {
      for (Entry* entry = _nonEmpty[i]->head; entry;) {
        Entry* next = entry->next;
        FreeEntry(entry);
        entry = next;
      }
    }
    if (_table) System::Free(_table);
    _table = nullptr;
    _nonEmpty = nullptr;
    _nonEmptyCount = 0;
    _mask = -1;
    _count = 0;
    _threshold = 0;
  }

 private:
  Bucket& BucketOf(UInt hash) { return _table[Int(hash & UInt(_mask))]; }

  template <typename Q>
  Entry* FindIn(Bucket& bucket, UInt hash, const Q& key) {
    for (Entry* entry = bucket.head; entry; entry = entry->next)
      if (entry->hash == hash && TRAITS::IsEqual(entry->key, key)) return entry;
    return nullptr;
  }

  // The node is made first, so that a map without memory for it doesn't grow.
  template <typename KK, typename VV>
  Result<Entry*> Add(UInt hash, KK&& key, VV&& value) {
    void* block = System::Alloc(sizeof(Entry), HASHMAP_NODE_LOCATION);
    if (!block) return CreateError(HASHMAP_NODE_LOCATION, 0);
    if (_mask < 0) {
      if (!Rebuild(FirstLength())) {
        System::Free(block);
        return CreateError(HASHMAP_NODE_LOCATION, 0);
      }
    } else if (_count >= _threshold) {
      Rebuild(2 * (_mask + 1));  // on failure the old table serves on
    }
    Entry* entry = new (block) Entry{nullptr, hash, K(std::forward<KK>(key)), V(std::forward<VV>(value))};
    Link(entry);
    ++_count;
    return entry;
  }

  Int FirstLength() const {
    const Float64 least = _loadFactor > 0.0 ? 21.0 / _loadFactor + 2.0 : 20.0;
    Int length = 1;
    while (Float64(length) < least) length *= 2;
    return length;
  }

  Int ThresholdFor(Int length) const {
    return _loadFactor > 0.0 ? Int(Float64(length) * _loadFactor) : MAXVALUE_INT;
  }

  // A table of length buckets with its non-empty list behind it, all nodes relinked;
  // false, with the map unchanged, when there is no memory for it.
  Bool Rebuild(Int length) {
    void* block = System::AllocClear(length * Int(sizeof(Bucket) + sizeof(Bucket*)), HASHMAP_TABLE_LOCATION);
    if (!block) return false;
    Bucket** previous = _nonEmpty;
    const Int previousCount = _nonEmptyCount;
    Bucket* previousTable = _table;
    _table = static_cast<Bucket*>(block);
    _nonEmpty = reinterpret_cast<Bucket**>(_table + length);
    _nonEmptyCount = 0;
    _mask = length - 1;
    _threshold = ThresholdFor(length);
    for (Int i = 0; i < previousCount; ++i) {
      for (Entry* entry = previous[i]->head; entry;) {
        Entry* next = entry->next;
        Link(entry);
        entry = next;
      }
    }
    if (previousTable) System::Free(previousTable);
    return true;
  }

  // Appends entry to the tail of its chain; a bucket's first entry lists the bucket.
  void Link(Entry* entry) {
    entry->next = nullptr;
    Bucket& bucket = BucketOf(entry->hash);
    Entry** link = &bucket.head;
    while (*link) link = &(*link)->next;
    if (link == &bucket.head) {
      bucket.place = _nonEmptyCount;
      _nonEmpty[_nonEmptyCount++] = &bucket;
    }
    *link = entry;
  }

  // Takes an emptied bucket out of the list, keeping the order of the others.
  void Unlist(Bucket& bucket) {
    for (Int i = bucket.place + 1; i < _nonEmptyCount; ++i) {
      _nonEmpty[i - 1] = _nonEmpty[i];
      _nonEmpty[i - 1]->place = i - 1;
    }
    --_nonEmptyCount;
  }

  static void FreeEntry(Entry* entry) {
    entry->~Entry();
    System::Free(entry);
  }

  void TakeFrom(HashMap& other) {
    _table = std::exchange(other._table, nullptr);
    _mask = std::exchange(other._mask, -1);
    _nonEmpty = std::exchange(other._nonEmpty, nullptr);
    _nonEmptyCount = std::exchange(other._nonEmptyCount, 0);
    _count = std::exchange(other._count, 0);
    _threshold = std::exchange(other._threshold, 0);
    _loadFactor = other._loadFactor;
  }

  Bucket* _table = nullptr;
  Int _mask = -1;
  Bucket** _nonEmpty = nullptr;
  Int _nonEmptyCount = 0;
  Int _count = 0;
  Int _threshold = 0;
  Float64 _loadFactor = DEFAULT_LOAD_FACTOR;
};

}  // namespace vorna
