// The memory scheme: named blobs of bytes that tests and tools register through the
// host's public header (RegisterMemoryBlob), read as memory://NAME.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "vorna/ioconnection.h"

namespace vorna::host {

// The bytes of a blob. Whoever holds one keeps the bytes alive: a stream still reads
// them after the blob was unregistered or replaced.
using MemoryBlob = std::shared_ptr<const std::vector<UChar>>;

// The blob registered under name, or null. Safe from any thread.
MemoryBlob FindMemoryBlob(const std::string& name);

// A connection to the memory url.
Result<IoConnectionRef> OpenMemoryConnection(const Url& url);

// A stream that reads blob from its start; name is for messages.
Result<InputStreamRef> OpenMemoryInputStream(MemoryBlob blob, const std::string& name);

}  // namespace vorna::host
