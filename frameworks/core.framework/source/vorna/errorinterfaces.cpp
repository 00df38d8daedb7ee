#include "vorna/translationunit.h"

#include "vorna/errorinterfaces.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(AggregatedErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(ErrnoErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(FunctionNotImplementedErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(IllegalArgumentErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(IllegalStateErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(IoErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(FileFormatErrorInterface, &IoErrorInterface::_record);

VORNA_DEFINE_INTERFACE(JobErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(MediaConverterErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(MediaSessionWrongTypeErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(MediaStreamEOFErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(NullptrErrorInterface, &IllegalArgumentErrorInterface::_record);

VORNA_DEFINE_INTERFACE(OutOfMemoryErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(ShutdownErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(SystemErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(ThreadCancelledErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(UnexpectedErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(UnknownErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(UnknownFileSizeErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(UnsupportedArgumentErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_INTERFACE(UnsupportedOperationErrorInterface, &ErrorInterface::_record);

VORNA_DEFINE_OBJECT_USE(g_ErrorObjectClass, "vorna.ErrorObjectClass");
VORNA_DEFINE_OBJECT_USE(g_IoErrorObjectClass, "vorna.IoErrorObjectClass");

}  // namespace vorna
