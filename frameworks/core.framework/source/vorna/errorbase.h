// Errors. An error object is a copy-on-write object with vorna.ErrorInterface#1; an
// error class is a published object whose value is a shared prototype. Raising an
// error takes five steps: read the prototype, make a private copy, set the location,
// set the message if there is one, and hand the reference to System::RaiseError, whose
// word is the result.
#pragma once

#include "vorna/baseref.h"
#include "vorna/objectuse.h"
#include "vorna/string.h"

namespace vorna {

class ErrorInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.ErrorInterface#1";
  static constexpr Int COUNT = 12;
  static constexpr UInt32 REFCLASS = refclass::COPY_ON_WRITE;
  enum : Int {
    kGetLocation, kSetLocation, kGetStackTrace, kSetStackTrace, kGetMessage, kSetMessage,
    kGetCause, kSetCause, kGetMachine, kSetMachine, kPrivateGetCode, kPrivateSetCode
  };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  SourceLocation GetLocation() const { return Invoke<&ErrorInterface::GetLocation, kGetLocation>(); }
  void SetLocation(const SourceLocation& location) const {
    Invoke<&ErrorInterface::SetLocation, kSetLocation>(location);
  }
  String GetMessage() const { return Invoke<&ErrorInterface::GetMessage, kGetMessage>(); }
  void SetMessage(const String& message) const { Invoke<&ErrorInterface::SetMessage, kSetMessage>(message); }
  ErrorInterface GetCause() const { return Invoke<&ErrorInterface::GetCause, kGetCause>(); }
  void SetCause(const ErrorInterface& cause) const { Invoke<&ErrorInterface::SetCause, kSetCause>(cause); }
  Int PrivateGetCode() const { return Invoke<&ErrorInterface::PrivateGetCode, kPrivateGetCode>(); }
  void PrivateSetCode(Int code) const { Invoke<&ErrorInterface::PrivateSetCode, kPrivateSetCode>(code); }
};

using ErrorRef = COWRef<ErrorInterface>;

// The error an error word refers to, borrowed; null for success or a null holder.
inline ErrorInterface ErrorOf(ErrorWord word) { return ErrorInterface(word ? *word : nullptr); }

// The published error classes.
extern ObjectUseRecord g_OutOfMemoryErrorObject;
extern ObjectUseRecord g_FunctionNotImplementedErrorObject;
extern ObjectUseRecord g_UnsupportedOperationErrorObject;
extern ObjectUseRecord g_ThreadCancelledErrorObject;
extern ObjectUseRecord g_IllegalArgumentErrorObject;
extern ObjectUseRecord g_UnsupportedArgumentErrorObject;
extern ObjectUseRecord g_NullptrErrorObject;
extern ObjectUseRecord g_IllegalStateErrorObject;
extern ObjectUseRecord g_UnknownErrorObject;
extern ObjectUseRecord g_ShutdownErrorObject;
extern ObjectUseRecord g_UnexpectedErrorObject;
extern ObjectUseRecord g_ErrnoErrorObject;
extern ObjectUseRecord g_AggregatedErrorObject;
extern ObjectUseRecord g_SystemErrorObject;
extern ObjectUseRecord g_IoErrorObject;
extern ObjectUseRecord g_FileFormatErrorObject;
extern ObjectUseRecord g_UnknownFileSizeErrorObject;
extern ObjectUseRecord g_JobErrorObject;
extern ObjectUseRecord g_MediaConverterErrorObject;
extern ObjectUseRecord g_MediaSessionWrongTypeErrorObject;
extern ObjectUseRecord g_MediaStreamEOFErrorObject;

// The static error word of an error class: its value slot, free and infallible.
ErrorWord StaticErrorWord(ObjectUseRecord& errorClass);

// Raises an error of errorClass at location, with a message if one is given.
ErrorResult RaiseError(ObjectUseRecord& errorClass, const SourceLocation& location, const String* message = nullptr);

// The short form: 0 out of memory, 1 null pointer, 2 illegal argument, 3 illegal
// state, 4 function not implemented, anything else unknown.
ErrorResult CreateError(const SourceLocation& location, Int number);

// The id of the error's class, for messages and tests; empty for a null error.
const Id* GetErrorClassId(ErrorWord word);

// Is the error of the class (compared by prototype class)?
Bool IsErrorOfClass(ErrorWord word, ObjectUseRecord& errorClass);

inline constexpr SourceLocation RESULTBASE_LOCATION{"vorna/utilities/resultbase", 972, 0};

}  // namespace vorna
