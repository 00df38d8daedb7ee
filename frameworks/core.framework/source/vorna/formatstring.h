// FormatString: messages with @ placeholders. The format language lives in the host
// (vorna.StringConversion#1); the module only packs its arguments: an array of value
// addresses and one of converters, in the order of the placeholders. A converter fills
// a String from a value and the FormatStatement the host made of the text between the
// braces of its placeholder (null for a plain @). "@" gives the default text form,
// "@{x}" hexadecimal.
#pragma once

#include <new>
#include <type_traits>

#include "vorna/baseref.h"
#include "vorna/string.h"

namespace vorna {

class FormatStatement;
using FormatConverter = void (*)(String& out, const void* value, const FormatStatement* statement);

class StringConversion {
 public:
  static constexpr const Char* ID = "vorna.StringConversion#1";
  static constexpr Int COUNT = 22;
  using Reserved = void (*)();
  struct Table {
    String* (*FormatString)(const Char* format, Int count, const void* const* values, const FormatConverter* converters);
    String (*FloatToString)(Float64 value, Int digits, Int exponentThreshold, Char fill, const FormatStatement* statement);
    String (*IntToString)(Int64 value, Int size, const FormatStatement* statement);
    String (*UIntToString)(UInt64 value, Int size, const FormatStatement* statement);
    const CString* (*GetStatementValue)(const FormatStatement* statement, const Char* key);
    Reserved reserved5;
    Reserved reserved6;
    Reserved reserved7;
    String (*GuidToString)(const void* guid, Int braces, Int upperCase, Int flags);
    Reserved reserved[13];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2, 5, 5, 5, 2, 0, 0, 0, 5};
  static Table _table;
  static StaticInterfaceRecord _record;

  static const CString* GetStatementValue(const FormatStatement* statement, const Char* key) {
    return statement ? _table.GetStatementValue(statement, key) : nullptr;
  }
};

// Converters of the argument types; each fills out and drops what it held.
template <typename T, typename = void>
struct FormatConverterOf;

template <>
struct FormatConverterOf<String> {
  static void Convert(String& out, const void* value, const FormatStatement*) { out = *static_cast<const String*>(value); }
};

template <>
struct FormatConverterOf<Id> {
  static void Convert(String& out, const void* value, const FormatStatement*);
};

template <>
struct FormatConverterOf<const Char*> {
  static void Convert(String& out, const void* value, const FormatStatement*);
};

template <typename T>
struct FormatConverterOf<T, std::enable_if_t<std::is_integral_v<T> && std::is_signed_v<T>>> {
  static void Convert(String& out, const void* value, const FormatStatement* statement) {
    out = StringConversion::_table.IntToString(*static_cast<const T*>(value), sizeof(T), statement);
  }
};

template <typename T>
struct FormatConverterOf<T, std::enable_if_t<std::is_integral_v<T> && std::is_unsigned_v<T> && !std::is_same_v<T, bool>>> {
  static void Convert(String& out, const void* value, const FormatStatement* statement) {
    out = StringConversion::_table.UIntToString(*static_cast<const T*>(value), sizeof(T), statement);
  }
};

template <>
struct FormatConverterOf<Float64> {
  static void Convert(String& out, const void* value, const FormatStatement* statement) {
    out = StringConversion::_table.FloatToString(*static_cast<const Float64*>(value), -1, -3, '0', statement);
  }
};

// Object references give their ToString; a null one "nullptr".
template <typename T>
struct FormatConverterOf<T, std::enable_if_t<std::is_base_of_v<ObjectInterface, T>>> {
  static void Convert(String& out, const void* value, const FormatStatement* statement);
};

void ConvertObjectForFormat(String& out, const ObjectInterface* value, const FormatStatement* statement);

template <typename T>
void FormatConverterOf<T, std::enable_if_t<std::is_base_of_v<ObjectInterface, T>>>::Convert(
    String& out, const void* value, const FormatStatement* statement) {
  ConvertObjectForFormat(out, static_cast<const ObjectInterface*>(static_cast<const T*>(value)), statement);
}

template <typename T>
using FormatArgument = std::conditional_t<std::is_array_v<T>, const Char*, T>;

// The formatted text in a block from System, or null. The caller gives it to
// DiagnosticOutputString or takes it with TakeFormattedString.
template <typename... ARGS>
String* FormatString(const Char* format, const ARGS&... args) {
  const void* values[sizeof...(ARGS) + 1] = {static_cast<const void*>(&args)...};
  FormatConverter converters[sizeof...(ARGS) + 1] = {&FormatConverterOf<std::decay_t<FormatArgument<ARGS>>>::Convert...};
  return StringConversion::_table.FormatString(format, Int(sizeof...(ARGS)), values, converters);
}

// Releases a block from FormatString.
void FreeFormattedString(String* text);

// Moves the text out of a block from FormatString and frees the block; null gives the
// empty String.
String TakeFormattedString(String* text);

// Formats into a String at once.
template <typename... ARGS>
String FormatToString(const Char* format, const ARGS&... args) {
  return TakeFormattedString(FormatString(format, args...));
}

}  // namespace vorna
