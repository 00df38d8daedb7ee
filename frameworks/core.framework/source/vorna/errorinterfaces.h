// The interfaces of the error classes: each error class adds one on vorna.ErrorInterface#1
// (the null-pointer error's on the illegal-argument one, the file format error's on the
// io error's), and the component classes that errors are made of. Code tells errors
// apart by their class; none of these adds a method that this code calls.
#pragma once

#include "vorna/errorbase.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(AggregatedErrorInterface, ErrorInterface, "vorna.AggregatedErrorInterface#1", refclass::COPY_ON_WRITE,
                         kAddError, kAddError2, kGetCount, kGetError);

VORNA_DECLARED_INTERFACE(ErrnoErrorInterface, ErrorInterface, "vorna.ErrnoErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(FunctionNotImplementedErrorInterface, ErrorInterface, "vorna.FunctionNotImplementedErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(IllegalArgumentErrorInterface, ErrorInterface, "vorna.IllegalArgumentErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(IllegalStateErrorInterface, ErrorInterface, "vorna.IllegalStateErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(IoErrorInterface, ErrorInterface, "vorna.IoErrorInterface#1", refclass::COPY_ON_WRITE,
                         kSetUrl, kGetUrl);

VORNA_DECLARED_INTERFACE(FileFormatErrorInterface, IoErrorInterface, "vorna.FileFormatErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(JobErrorInterface, ErrorInterface, "vorna.JobErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(MediaConverterErrorInterface, ErrorInterface, "vorna.MediaConverterErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(MediaSessionWrongTypeErrorInterface, ErrorInterface, "vorna.MediaSessionWrongTypeErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(MediaStreamEOFErrorInterface, ErrorInterface, "vorna.MediaStreamEOFErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(NullptrErrorInterface, IllegalArgumentErrorInterface, "vorna.NullptrErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(OutOfMemoryErrorInterface, ErrorInterface, "vorna.OutOfMemoryErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(ShutdownErrorInterface, ErrorInterface, "vorna.ShutdownErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(SystemErrorInterface, ErrorInterface, "vorna.SystemErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(ThreadCancelledErrorInterface, ErrorInterface, "vorna.ThreadCancelledErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(UnexpectedErrorInterface, ErrorInterface, "vorna.UnexpectedErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(UnknownErrorInterface, ErrorInterface, "vorna.UnknownErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(UnknownFileSizeErrorInterface, ErrorInterface, "vorna.UnknownFileSizeErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(UnsupportedArgumentErrorInterface, ErrorInterface, "vorna.UnsupportedArgumentErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(UnsupportedOperationErrorInterface, ErrorInterface, "vorna.UnsupportedOperationErrorInterface#1", refclass::COPY_ON_WRITE);

extern ObjectUseRecord g_ErrorObjectClass;
extern ObjectUseRecord g_IoErrorObjectClass;

}  // namespace vorna
