// Id: an identifier of two words. The first is the text (NUL-terminated, null for the
// empty Id), the second packs the hash (bits 0-50), the owned flag (bit 51) and the
// length in bytes (bits 52-63). An Id made from a literal borrows the text; an owned
// Id holds a counted copy whose counter stands in front of the text.
#pragma once

#include <type_traits>

#include "vorna/apibase.h"

namespace vorna {

class Id {
 public:
  static constexpr Int MAX_LENGTH = 4095;
  static constexpr UInt HASH_MASK = 0x7FFFFFFFFFFFFull;
  static constexpr UInt OWNED_BIT = 0x8000000000000ull;

  // h = h * 31 + c over the bytes taken unsigned, with 64-bit wrap-around.
  static constexpr UInt HashText(const Char* text, Int length) {
    UInt h = 0;
    for (Int i = 0; i < length; ++i) h = h * 31 + static_cast<UChar>(text[i]);
    return h;
  }

  static constexpr Int LengthOf(const Char* text) {
    Int n = 0;
    if (text)
      while (text[n]) ++n;
    return n;
  }

  static constexpr UInt Pack(UInt hash, Int length, Bool owned) {
    return (hash & HASH_MASK) + (UInt(length) << 52) + (owned ? OWNED_BIT : 0);
  }

  constexpr Id() = default;

  // Borrows a literal; its hash is computed where the Id is built.
  constexpr Id(const Char* literal)  // NOLINT: implicit from literals by design
      : _text(LengthOf(literal) ? literal : nullptr),
        _packed(Pack(HashText(literal, LengthOf(literal)), LengthOf(literal), false)) {}

  constexpr Id(const Id& other) : _text(other._text), _packed(other._packed) {
    if (!std::is_constant_evaluated()) AddReference();
  }
  constexpr Id(Id&& other) noexcept : _text(other._text), _packed(other._packed) { other.Clear(); }
  constexpr Id& operator=(const Id& other) {
    if (std::is_constant_evaluated()) {
      _text = other._text;
      _packed = other._packed;
    } else if (this != &other) {
      CopyFrom(other);
    }
    return *this;
  }
  constexpr Id& operator=(Id&& other) noexcept {
    if (this != &other) {
      if (!std::is_constant_evaluated()) Reset();
      _text = other._text;
      _packed = other._packed;
      other.Clear();
    }
    return *this;
  }
  constexpr ~Id() {
    if (!std::is_constant_evaluated()) Reset();
  }

  // Makes this Id own a copy of length bytes of text. Out of memory gives false and
  // leaves the Id empty; an empty text gives the empty Id and true.
  Bool Init(const Char* text, Int length);
  Bool Init(const Char* text) { return Init(text, LengthOf(text)); }

  void Reset();

  const Char* GetCString() const { return _text ? _text : ""; }
  const Char* GetPointer() const { return _text; }
  Int GetLength() const { return Int(_packed >> 52); }
  UInt GetHash() const { return _packed & HASH_MASK; }
  UInt GetPackedWord() const { return _packed; }
  Bool IsOwned() const { return (_packed & OWNED_BIT) != 0; }
  Bool IsEmpty() const { return _text == nullptr; }

  // Ids compare by hash and length first (without the owned bit), then by text.
  Bool operator==(const Id& other) const;

 private:
  void AddReference() const;
  void CopyFrom(const Id& other);
  constexpr void Clear() {
    _text = nullptr;
    _packed = 0;
  }

  const Char* _text = nullptr;
  UInt _packed = 0;
};

}  // namespace vorna
