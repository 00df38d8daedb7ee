// The file scheme: its connection, streams and directory walk, over POSIX calls with
// 64-bit offsets. Paths are the UTF-8 system paths of file urls.
#pragma once

#include <string>

#include "vorna/ioconnection.h"

namespace vorna::host {

// A connection to the file url; nothing is opened yet.
Result<IoConnectionRef> OpenFileConnection(const Url& url);

// A stream that reads the file at path from its start.
Result<InputStreamRef> OpenFileInputStream(const std::string& path);

// A stream that writes the file at path, created or emptied.
Result<OutputStreamRef> OpenFileOutputStream(const std::string& path);

// A walk over the directory at url.
Result<IoBrowseRef> OpenFileBrowse(const Url& url, Int flags);

}  // namespace vorna::host
