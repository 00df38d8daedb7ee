// Services around io beyond urls and streams: blocks of memory as files, text
// parsing, file utilities, the cache of downloaded files and its entries, and JSON over
// a network protocol.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

VORNA_DECLARED_STATIC_INTERFACE(IoMemoryInterface, "vorna.IoMemoryInterface#1", 11);

VORNA_DECLARED_STATIC_INTERFACE(IoTextParserInterface, "vorna.IoTextParserInterface#1", 24);

VORNA_DECLARED_STATIC_INTERFACE(FileUtilities, "vorna.FileUtilities#1", 4);

VORNA_DECLARED_STATIC_INTERFACE(UrlFileCacheInterface, "vorna.UrlFileCacheInterface#1", 3);

VORNA_DECLARED_STATIC_INTERFACE(UrlFileCacheEntryInterface, "vorna.UrlFileCacheEntryInterface#1", 3);

VORNA_DECLARED_STATIC_INTERFACE(NetworkProtocolJSONInterface, "vorna.NetworkProtocolJSONInterface#1", 5);

}  // namespace vorna
