// Result<T>: the error word first, then the value. The error word is 0 on success;
// otherwise it is the address of a holder of an error reference, either the value slot
// of a published error object (free, cannot fail) or a word that System::RaiseError
// hands out. A word carries no count of its own: a caller returns it upward unchanged
// or drops it.
#pragma once

#include <utility>

#include "vorna/apibase.h"

namespace vorna {

// Address of a word that holds a pointer to an error object.
using ErrorWord = void* const*;

// A failure in flight: converts into any Result.
struct ErrorResult {
  ErrorWord word;
};

template <typename T>
class Result {
 public:
  Result() = default;
  Result(const T& value) : _value(value) {}             // NOLINT
  Result(T&& value) : _value(std::move(value)) {}       // NOLINT
  Result(ErrorResult error) : _error(error.word) {}     // NOLINT

  Bool IsError() const { return _error != nullptr; }
  ErrorWord GetError() const { return _error; }
  ErrorResult GetErrorResult() const { return {_error}; }
  const T& GetValue() const& { return _value; }
  T& GetValue() & { return _value; }
  T&& GetValue() && { return std::move(_value); }

 private:
  ErrorWord _error = nullptr;
  T _value{};
};

template <>
class Result<void> {
 public:
  Result() = default;
  Result(ErrorResult error) : _error(error.word) {}  // NOLINT
  Bool IsError() const { return _error != nullptr; }
  ErrorWord GetError() const { return _error; }
  ErrorResult GetErrorResult() const { return {_error}; }

 private:
  ErrorWord _error = nullptr;
};

inline constexpr Result<void> OK{};

#define VORNA_CONCAT_INNER(a, b) a##b
#define VORNA_CONCAT(a, b) VORNA_CONCAT_INNER(a, b)

// Returns the error of a Result upward unchanged.
#define VORNA_RETURN_ON_ERROR(expr)                          \
  do {                                                       \
    auto&& vornaResult_ = (expr);                            \
    if (vornaResult_.IsError()) return vornaResult_.GetErrorResult(); \
  } while (0)

// Declares or assigns lhs from the value of a Result, or returns its error.
#define VORNA_ASSIGN_OR_RETURN(lhs, expr)                                        \
  auto VORNA_CONCAT(vornaResult_, __LINE__) = (expr);                            \
  if (VORNA_CONCAT(vornaResult_, __LINE__).IsError())                            \
    return VORNA_CONCAT(vornaResult_, __LINE__).GetErrorResult();               \
  lhs = std::move(VORNA_CONCAT(vornaResult_, __LINE__)).GetValue()

}  // namespace vorna
