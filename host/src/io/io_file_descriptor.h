// The open file behind a file stream: the descriptor, the path for messages and the
// stream's own position, which every read and write passes to the system, so the
// descriptor's offset never matters. Owned by one stream; the destructor closes what
// is still open.
#pragma once

#include <string>

#include "vorna/errorbase.h"

namespace vorna::host {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor();

  // Opens path with the flags of open(2); for reading only a file that is no directory.
  Result<void> Open(const std::string& path, int flags);
  // Closes once; a second call does nothing.
  Result<void> Close();

  Result<Int64> GetLength() const;
  Result<Int64> GetPosition() const;
  // Any position from 0 up, also behind the end.
  Result<void> Seek(Int64 position);
  // Reads up to count bytes at the position, fewer only at the end of the file.
  Result<Int> Read(void* buffer, Int count);
  // Writes all count bytes at the position.
  Result<void> Write(const void* buffer, Int count);

 private:
  ErrorResult Closed(const Char* what) const;

  int _descriptor = -1;
  std::string _path;
  Int64 _position = 0;
};

}  // namespace vorna::host
