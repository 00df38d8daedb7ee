#include "io/io_file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "io/io_errors.h"
#include "vorna/formatstring.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FILE_LOCATION{"host/io_file_descriptor", 1, 0};

// The most one system call moves, well below what a signed size can hold.
constexpr Int MAX_TRANSFER = Int(1) << 30;

}  // namespace

FileDescriptor::~FileDescriptor() {
  if (_descriptor >= 0) close(_descriptor);
}

Result<void> FileDescriptor::Open(const std::string& path, int flags) {
  _path = path;
  _descriptor = open(path.c_str(), flags | O_CLOEXEC, 0666);
  if (_descriptor < 0) return RaiseIoError(FILE_LOCATION, "Cannot open file", path, errno);
  struct stat status;
  if ((flags & O_ACCMODE) == O_RDONLY && fstat(_descriptor, &status) == 0 && S_ISDIR(status.st_mode)) {
    close(_descriptor);
    _descriptor = -1;
    return RaiseIoError(FILE_LOCATION, "Cannot open file", path, EISDIR);
  }
  return OK;
}

Result<void> FileDescriptor::Close() {
  if (_descriptor < 0) return OK;
  int result = close(_descriptor);
  _descriptor = -1;
  if (result != 0) return RaiseIoError(FILE_LOCATION, "Cannot close file", _path, errno);
  return OK;
}

ErrorResult FileDescriptor::Closed(const Char* what) const {
  return RaiseIoError(FILE_LOCATION, what, _path, "the stream is closed");
}

Result<Int64> FileDescriptor::GetLength() const {
  if (_descriptor < 0) return Closed("Cannot read the length of");
  struct stat status;
  if (fstat(_descriptor, &status) != 0) return RaiseIoError(FILE_LOCATION, "Cannot read the length of", _path, errno);
  return Int64(status.st_size);
}

Result<Int64> FileDescriptor::GetPosition() const {
  if (_descriptor < 0) return Closed("Cannot read the position in");
  return _position;
}

Result<void> FileDescriptor::Seek(Int64 position) {
  if (_descriptor < 0) return Closed("Cannot seek in");
  if (position < 0) {
    String message = FormatToString("Cannot seek to @ in @", position, _path.c_str());
    return RaiseError(g_IllegalArgumentErrorObject, FILE_LOCATION, &message);
  }
  _position = position;
  return OK;
}

Result<Int> FileDescriptor::Read(void* buffer, Int count) {
  if (_descriptor < 0) return Closed("Cannot read");
  Int done = 0;
  while (done < count) {
    ssize_t got = pread(_descriptor, static_cast<char*>(buffer) + done, size_t(std::min(count - done, MAX_TRANSFER)),
                        off_t(_position + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return RaiseIoError(FILE_LOCATION, "Cannot read", _path, errno);
    if (got == 0) break;
    done += got;
  }
  _position += done;
  return done;
}

Result<void> FileDescriptor::Write(const void* buffer, Int count) {
  if (_descriptor < 0) return Closed("Cannot write");
  Int done = 0;
  while (done < count) {
    ssize_t put = pwrite(_descriptor, static_cast<const char*>(buffer) + done,
                         size_t(std::min(count - done, MAX_TRANSFER)), off_t(_position + done));
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return RaiseIoError(FILE_LOCATION, "Cannot write", _path, errno);
    done += put;
  }
  _position += done;
  return OK;
}

}  // namespace vorna::host
