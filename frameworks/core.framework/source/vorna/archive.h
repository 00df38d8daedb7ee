// Archives read and written file by file, whose classes stand in
// vorna.ReadArchiveClasses and vorna.WriteArchiveClasses.
#pragma once

#include "vorna/objectbase.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ReadArchiveInterface, ObjectInterface, "vorna.ReadArchiveInterface#1", refclass::STRONG,
                         kOpen, kClose, kExtractSingleFile, kExtract);

VORNA_DECLARED_INTERFACE(WriteArchiveInterface, ObjectInterface, "vorna.WriteArchiveInterface#1", refclass::STRONG,
                         kOpen, kClose, kSetCompressionLevel, kGetCompressionLevel, kCreateDirectory,
                         kCreateFile, kWriteFile, kCloseFile, kCopyFile);

}  // namespace vorna
