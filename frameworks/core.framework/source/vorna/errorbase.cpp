#include "vorna/translationunit.h"

#include "vorna/errorbase.h"

#include "vorna/diagnostics.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ErrorInterface, &ObjectInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_OutOfMemoryErrorObject, "vorna.OutOfMemoryErrorObject");
VORNA_DEFINE_OBJECT_USE(g_FunctionNotImplementedErrorObject, "vorna.FunctionNotImplementedErrorObject");
VORNA_DEFINE_OBJECT_USE(g_UnsupportedOperationErrorObject, "vorna.UnsupportedOperationErrorObject");
VORNA_DEFINE_OBJECT_USE(g_ThreadCancelledErrorObject, "vorna.ThreadCancelledErrorObject");
VORNA_DEFINE_OBJECT_USE(g_IllegalArgumentErrorObject, "vorna.IllegalArgumentErrorObject");
VORNA_DEFINE_OBJECT_USE(g_UnsupportedArgumentErrorObject, "vorna.UnsupportedArgumentErrorObject");
VORNA_DEFINE_OBJECT_USE(g_NullptrErrorObject, "vorna.NullptrErrorObject");
VORNA_DEFINE_OBJECT_USE(g_IllegalStateErrorObject, "vorna.IllegalStateErrorObject");
VORNA_DEFINE_OBJECT_USE(g_UnknownErrorObject, "vorna.UnknownErrorObject");
VORNA_DEFINE_OBJECT_USE(g_ShutdownErrorObject, "vorna.ShutdownErrorObject");
VORNA_DEFINE_OBJECT_USE(g_UnexpectedErrorObject, "vorna.UnexpectedErrorObject");
VORNA_DEFINE_OBJECT_USE(g_ErrnoErrorObject, "vorna.ErrnoErrorObject");
VORNA_DEFINE_OBJECT_USE(g_AggregatedErrorObject, "vorna.AggregatedErrorObject");
VORNA_DEFINE_OBJECT_USE(g_SystemErrorObject, "vorna.SystemErrorObject");
VORNA_DEFINE_OBJECT_USE(g_IoErrorObject, "vorna.IoErrorObject");
VORNA_DEFINE_OBJECT_USE(g_FileFormatErrorObject, "vorna.FileFormatErrorObject");
VORNA_DEFINE_OBJECT_USE(g_UnknownFileSizeErrorObject, "vorna.UnknownFileSizeErrorObject");
VORNA_DEFINE_OBJECT_USE(g_JobErrorObject, "vorna.JobErrorObject");
VORNA_DEFINE_OBJECT_USE(g_MediaConverterErrorObject, "vorna.MediaConverterErrorObject");
VORNA_DEFINE_OBJECT_USE(g_MediaSessionWrongTypeErrorObject, "vorna.MediaSessionWrongTypeErrorObject");
VORNA_DEFINE_OBJECT_USE(g_MediaStreamEOFErrorObject, "vorna.MediaStreamEOFErrorObject");

namespace {
// The holder behind the word of an error class that is not available: a null reference.
void* const g_nullErrorReference = nullptr;
}  // namespace

ErrorWord StaticErrorWord(ObjectUseRecord& errorClass) {
  return static_cast<ErrorWord>(LookupObjectValue(errorClass, &g_nullErrorReference));
}

ErrorWord PrivateGetNullReturnError(Int reason) {
  switch (reason) {
    case 0:
    case 1:
      return StaticErrorWord(g_NullptrErrorObject);
    case 3:
    case 4:
      return StaticErrorWord(g_FunctionNotImplementedErrorObject);
    default:
      DiagnosticOutput(CRITICAL_WITH_LOCATION, "Stop: reason not supported by PrivateGetNullReturnError.",
                       __LINE__, __FILE__);
      return StaticErrorWord(g_NullptrErrorObject);
  }
}

ErrorResult RaiseError(ObjectUseRecord& errorClass, const SourceLocation& location, const String* message) {
  ErrorWord prototype = StaticErrorWord(errorClass);
  ErrorRef error{ErrorInterface(*prototype)};
  if (error) {
    Result<ErrorInterface> writable = error.MakeWritable();
    // Without memory for a private copy the class's shared word says what failed.
    if (writable.IsError()) return {prototype};
    writable.GetValue().SetLocation(location);
    if (message) writable.GetValue().SetMessage(*message);
  }
  void* reference = error.Disown();
  return {System::RaiseError(&reference)};
}

ErrorResult CreateError(const SourceLocation& location, Int number) {
  switch (number) {
    case 0: return RaiseError(g_OutOfMemoryErrorObject, location);
    case 1: return RaiseError(g_NullptrErrorObject, location);
    case 2: return RaiseError(g_IllegalArgumentErrorObject, location);
    case 3: return RaiseError(g_IllegalStateErrorObject, location);
    case 4: return RaiseError(g_FunctionNotImplementedErrorObject, location);
    default: return RaiseError(g_UnknownErrorObject, location);
  }
}

const Id* GetErrorClassId(ErrorWord word) {
  void* error = word ? *word : nullptr;
  return error ? Class::GetId(MethodTableOf(error)->cls) : nullptr;
}

Bool IsErrorOfClass(ErrorWord word, ObjectUseRecord& errorClass) {
  void* error = word ? *word : nullptr;
  void* prototype = *StaticErrorWord(errorClass);
  return error && prototype && MethodTableOf(error)->cls == MethodTableOf(prototype)->cls;
}

}  // namespace vorna
