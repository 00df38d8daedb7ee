// vorna.StringInterface#1 and vorna.CStringInterface#1 as the host serves them.
#include <cstring>
#include <map>
#include <mutex>
#include <new>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "types/host_strings.h"
#include "types/string_coders.h"
#include "types/text_codec.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna/refcounter.h"
#include "vorna/string.h"

namespace vorna::host {

namespace {

constexpr SourceLocation STRING_LOCATION{"host/strings", 1, 0};

template <typename BLOCK>
void* NewBlock(const SourceLocation& location) {
  void* block = System::AllocCounted(sizeof(BLOCK), location);
  return block ? new (block) BLOCK() : nullptr;
}

template <typename BLOCK>
void FreeBlock(void* block) {
  static_cast<BLOCK*>(block)->~BLOCK();
  System::FreeCounted(block);
}

void* StringAlloc(const SourceLocation& location) { return NewBlock<StringBlock>(location); }

void* StringClone(const void* source, const SourceLocation& location) {
  void* block = NewBlock<StringBlock>(location);
  if (!block) return nullptr;
  const auto& chars = AsString(source)->chars;
  if (!AsString(block)->chars.Append(chars.GetData(), chars.GetCount())) {
    FreeBlock<StringBlock>(block);
    return nullptr;
  }
  return block;
}

std::mutex g_literalMutex;
std::map<const Char*, void*> g_literals;

// Literal strings live until the host stops; the host holds one reference of each.
const void* FromLiteral(const Char* text, Int length, Int) {
  std::lock_guard lock(g_literalMutex);
  void*& block = g_literals[text];
  if (!block) {
    block = StringAlloc(STRING_LOCATION);
    if (block && !DecodeUtf8(text, length, AsString(block)->chars)) {
      FreeBlock<StringBlock>(block);
      block = nullptr;
    }
  }
  return block;
}

ErrorResult UnsupportedCoder(CoderKind kind) {
  String message = FormatToString("The string coding @ is not supported.", NameOfCoder(kind));
  return RaiseError(g_UnsupportedOperationErrorObject, STRING_LOCATION, &message);
}

// Bytes to code points: UTF-8 (the system code page is UTF-8 here), 8-bit as Latin-1,
// UTF-16 as little-endian pairs.
Result<void> Decode(CoderKind kind, const Char* text, Int length, BaseArray<Utf32Char>& chars) {
  Bool ok = true;
  switch (kind) {
    case CoderKind::UTF8:
    case CoderKind::SYSTEM_CODE_PAGE:
      ok = DecodeUtf8(text, length, chars);
      break;
    case CoderKind::BIT8:
      for (Int i = 0; i < length && ok; ++i) ok = chars.Append(Utf32Char(UChar(text[i]))) != nullptr;
      break;
    case CoderKind::UTF16: {
      BaseArray<Utf16Char> units;
      for (Int i = 0; i + 1 < length && ok; i += 2)
        ok = units.Append(Utf16Char(UChar(text[i]) | (UChar(text[i + 1]) << 8))) != nullptr;
      ok = ok && DecodeUtf16(units.GetData(), units.GetCount(), chars);
      break;
    }
    default:
      return UnsupportedCoder(kind);
  }
  return ok ? OK : Result<void>(CreateError(STRING_LOCATION, 0));
}

Result<void> SetCString(void* block, const Char* text, Int length, const void* decoding) {
  auto& chars = AsString(block)->chars;
  chars.Flush();
  if (!text) return OK;
  if (length < 0) length = Int(std::strlen(text));
  return Decode(KindOfCoder(decoding), text, length, chars);
}

Int Utf16Length(const Utf16Char* text) {
  Int n = 0;
  while (text[n]) ++n;
  return n;
}

Result<void> SetUtf16(void* block, const Utf16Char* text, Int length) {
  auto& chars = AsString(block)->chars;
  chars.Flush();
  if (!text) return OK;
  if (length < 0) length = Utf16Length(text);
  if (!DecodeUtf16(text, length, chars)) return CreateError(STRING_LOCATION, 0);
  return OK;
}

Result<BaseArray<Utf16Char>> GetUtf16(const void* block) {
  BaseArray<Utf16Char> out;
  const auto& chars = AsString(block)->chars;
  if (!EncodeUtf16(chars.GetData(), chars.GetCount(), out) || !out.Append(Utf16Char(0)))
    return CreateError(STRING_LOCATION, 0);
  return out;
}

Bool Append(void* block, const void* other) {
  if (block == other) {
    BaseArray<Utf32Char> copy;
    const auto& chars = AsString(block)->chars;
    return copy.Append(chars.GetData(), chars.GetCount()) && AsString(block)->chars.Append(copy.GetData(), copy.GetCount());
  }
  const auto& chars = AsString(other)->chars;
  return AsString(block)->chars.Append(chars.GetData(), chars.GetCount());
}

Bool AppendCString(void* block, const Char* text, Int length) { return DecodeUtf8(text, length, AsString(block)->chars); }

// Code points to bytes, the reverse of Decode; 8-bit writes "?" for what Latin-1 lacks.
Result<void> Encode(CoderKind kind, const BaseArray<Utf32Char>& chars, BaseArray<Char>& bytes) {
  Bool ok = true;
  switch (kind) {
    case CoderKind::UTF8:
    case CoderKind::SYSTEM_CODE_PAGE:
      ok = EncodeUtf8(chars.GetData(), chars.GetCount(), bytes);
      break;
    case CoderKind::BIT8:
      for (Utf32Char c : chars) ok = ok && bytes.Append(Char(c < 256 ? c : '?')) != nullptr;
      break;
    case CoderKind::UTF16: {
      BaseArray<Utf16Char> units;
      ok = EncodeUtf16(chars.GetData(), chars.GetCount(), units);
      for (Utf16Char u : units) ok = ok && bytes.Append(Char(u & 0xFF)) && bytes.Append(Char(u >> 8));
      break;
    }
    default:
      return UnsupportedCoder(kind);
  }
  return ok ? OK : Result<void>(CreateError(STRING_LOCATION, 0));
}

Result<void*> GetCString(const void* block, const void* encoding) {
  BaseArray<Char> bytes;
  VORNA_RETURN_ON_ERROR(Encode(KindOfCoder(encoding), AsString(block)->chars, bytes));
  void* result = NewCStringBlock(bytes.GetData(), bytes.GetCount());
  if (!result) return CreateError(STRING_LOCATION, 0);
  return result;
}

Int GetLength(const void* block) { return AsString(block)->chars.GetCount(); }

Int Compare(const void* a, const void* b) {
  const auto& x = AsString(a)->chars;
  const auto& y = AsString(b)->chars;
  for (Int i = 0; i < x.GetCount() && i < y.GetCount(); ++i)
    if (x[i] != y[i]) return x[i] < y[i] ? -1 : 1;
  return x.GetCount() < y.GetCount() ? -1 : x.GetCount() > y.GetCount() ? 1 : 0;
}

StringInterface::Table MakeStringTable() {
  StringInterface::Table table{};
  table.Free = &FreeBlock<StringBlock>;
  table.Alloc = &StringAlloc;
  table.Clone = &StringClone;
  table.FromLiteral = &FromLiteral;
  table.SetCString = &SetCString;
  table.SetUtf16 = &SetUtf16;
  table.GetUtf16 = &GetUtf16;
  table.Append = &Append;
  table.GetCString = &GetCString;
  table.GetLength = &GetLength;
  table.Compare = &Compare;
  table.AppendCString = &AppendCString;
  return table;
}

CStringBlock* AsCString(void* block) { return static_cast<CStringBlock*>(block); }
const CStringBlock* AsCString(const void* block) { return static_cast<const CStringBlock*>(block); }

Bool CStringSet(void* block, const Char* text, Int length) {
  auto& bytes = AsCString(block)->bytes;
  bytes.Flush();
  return bytes.EnsureCapacity(length + 1) && bytes.Append(text, length) && bytes.Append(Char(0)) &&
         bytes.SetCount(length);
}

const Char* CStringPointer(const void* block) {
  const auto& bytes = AsCString(block)->bytes;
  return bytes.GetCapacity() > bytes.GetCount() ? bytes.GetData() : "";
}

Int CStringLength(const void* block) { return AsCString(block)->bytes.GetCount(); }

void* CStringAlloc(const SourceLocation& location) { return NewBlock<CStringBlock>(location); }

void* CStringClone(const void* source, const SourceLocation& location) {
  void* block = CStringAlloc(location);
  if (block && !CStringSet(block, CStringPointer(source), CStringLength(source))) {
    FreeBlock<CStringBlock>(block);
    return nullptr;
  }
  return block;
}

Bool CStringErase(void* block, Int start, Int count) {
  auto& bytes = AsCString(block)->bytes;
  Int length = bytes.GetCount();
  if (start < 0 || count < 0 || start > length) return false;
  count = std::min(count, length - start);
  std::memmove(bytes.GetData() + start, bytes.GetData() + start + count, size_t(length - start - count + 1));
  return bytes.SetCount(length - count);
}

CStringInterface::Table MakeCStringTable() {
  CStringInterface::Table table{};
  table.Free = &FreeBlock<CStringBlock>;
  table.Alloc = &CStringAlloc;
  table.Clone = &CStringClone;
  table.Set = &CStringSet;
  table.GetPointer = &CStringPointer;
  table.GetLength = &CStringLength;
  table.Erase = &CStringErase;
  return table;
}

const StringInterface::Table g_stringTable = MakeStringTable();
const CStringInterface::Table g_cstringTable = MakeCStringTable();

}  // namespace

void* NewCStringBlock(const Char* text, Int length) {
  void* block = CStringAlloc(STRING_LOCATION);
  if (block && !CStringSet(block, text, length)) {
    FreeBlock<CStringBlock>(block);
    return nullptr;
  }
  return block;
}

void ReleaseLiteralStrings() {
  std::lock_guard lock(g_literalMutex);
  for (auto& [text, block] : g_literals)
    if (block && RefCounter::RemoveReference(block)) FreeBlock<StringBlock>(block);
  g_literals.clear();
}

void RegisterStringProviders() {
  RegisterProvider(StringInterface::ID, &g_stringTable, StringInterface::COUNT);
  RegisterProvider(CStringInterface::ID, &g_cstringTable, CStringInterface::COUNT);
  RegisterStringConversionProvider();
}

}  // namespace vorna::host
