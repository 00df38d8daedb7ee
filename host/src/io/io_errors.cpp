#include "io/io_errors.h"

#include <cstring>

namespace vorna::host {

ErrorResult RaiseIoError(const SourceLocation& location, const Char* what, const std::string& path, int errorNumber) {
  Char buffer[256];
  return RaiseIoError(location, what, path, strerror_r(errorNumber, buffer, sizeof(buffer)));
}

ErrorResult RaiseIoError(const SourceLocation& location, const Char* what, const std::string& path,
                         const Char* reason) {
  std::string text = std::string(what) + " " + path + ": " + reason;
  String message;
  (void)message.SetCString(text.c_str(), Int(text.size()));
  return RaiseError(g_IoErrorObject, location, &message);
}

}  // namespace vorna::host
