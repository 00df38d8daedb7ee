// OutputFile.
#include "mfreadwrite/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "mfplat/errno_status.h"
#include "platform_counters.h"

namespace tessel::platform {

namespace {

constexpr int kIoBufferBytes = 64 * 1024;

// Takes bytes from the disk space the control door left, if it set a limit.
bool TakeDiskSpace(int64_t bytes) {
  auto& space = GetCounters().sinkDiskSpace;
  int64_t left = space.load();
  do {
    if (left < 0) return true;
    if (left < bytes) return false;
  } while (!space.compare_exchange_weak(left, left - bytes));
  return true;
}

}  // namespace

HRESULT OutputFile::Create(const std::string& path, std::unique_ptr<OutputFile>* file) {
  int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  // Creating a file, the system names a missing folder on the way "path not found".
  if (fd < 0) return errno == ENOENT ? HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND) : StatusFromErrno(errno);
  std::unique_ptr<OutputFile> made(new (std::nothrow) OutputFile(fd, path));
  if (!made) {
    ::close(fd);
    return E_OUTOFMEMORY;
  }
  auto* buffer = static_cast<uint8_t*>(av_malloc(kIoBufferBytes));
  if (!buffer) return E_OUTOFMEMORY;
  made->io_.reset(avio_alloc_context(buffer, kIoBufferBytes, 1, made.get(), nullptr, &Write, &Seek));
  if (!made->io_) {
    av_free(buffer);
    return E_OUTOFMEMORY;
  }
  *file = std::move(made);
  return S_OK;
}

OutputFile::~OutputFile() {
  if (io_) avio_flush(io_.get());
  ::close(fd_);
}

int OutputFile::Write(void* opaque, uint8_t* data, int size) {
  auto* file = static_cast<OutputFile*>(opaque);
  if (!TakeDiskSpace(size)) return AVERROR(ENOSPC);
  int written = 0;
  while (written < size) {
    ssize_t done = ::write(file->fd_, data + written, size_t(size - written));
    if (done < 0 && errno == EINTR) continue;
    if (done <= 0) return AVERROR(done < 0 ? errno : EIO);
    written += int(done);
  }
  return written;
}

int64_t OutputFile::Seek(void* opaque, int64_t offset, int whence) {
  auto* file = static_cast<OutputFile*>(opaque);
  if (whence & AVSEEK_SIZE) {
    struct stat info;
    return fstat(file->fd_, &info) == 0 ? int64_t(info.st_size) : AVERROR(errno);
  }
  off_t position = ::lseek(file->fd_, off_t(offset), whence & ~AVSEEK_FORCE);
  return position < 0 ? AVERROR(errno) : int64_t(position);
}

}  // namespace tessel::platform
