#include "vorna/translationunit.h"

#include "vorna/ioservices.h"

namespace vorna {

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(IoMemoryInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(IoTextParserInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(FileUtilities, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(UrlFileCacheInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(UrlFileCacheEntryInterface, nullptr);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(NetworkProtocolJSONInterface, nullptr);

}  // namespace vorna
