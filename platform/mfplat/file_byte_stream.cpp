// MFCreateFile: an IMFByteStream over a file. Reads are synchronous under a lock;
// BeginRead runs the read as a job on the platform's work-queue thread and calls the
// callback there.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <mutex>
#include <new>

#include "com.h"
#include "mfapi.h"
#include "mferror.h"
#include "mfplat/errno_status.h"
#include "mfplat/wide_path.h"
#include "mfplat/work_queue.h"

namespace tessel::platform {

namespace {

// The count of one asynchronous read, carried by its result object.
class ReadOutcome final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IUnknown> {
 public:
  std::atomic<ULONG> bytesRead{0};
};

class FileByteStream final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFByteStream> {
 public:
  FileByteStream(int fd, DWORD capabilities) : fd_(fd), capabilities_(capabilities) {}
  ~FileByteStream() { CloseFile(); }

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) override {
    if (!capabilities) return E_POINTER;
    *capabilities = capabilities_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetLength(QWORD* length) override {
    if (!length) return E_POINTER;
    std::lock_guard lock(mutex_);
    struct stat info;
    if (fd_ < 0 || fstat(fd_, &info) != 0) return E_FAIL;
    *length = static_cast<QWORD>(info.st_size);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetLength(QWORD length) override {
    std::lock_guard lock(mutex_);
    if (!(capabilities_ & MFBYTESTREAM_IS_WRITABLE)) return E_ACCESSDENIED;
    return fd_ >= 0 && ftruncate(fd_, static_cast<off_t>(length)) == 0 ? S_OK : StatusFromErrno(errno);
  }
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* position) override {
    if (!position) return E_POINTER;
    std::lock_guard lock(mutex_);
    *position = position_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD position) override {
    std::lock_guard lock(mutex_);
    position_ = position;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE IsEndOfStream(BOOL* endOfStream) override {
    if (!endOfStream) return E_POINTER;
    QWORD length = 0;
    HRESULT hr = GetLength(&length);
    if (FAILED(hr)) return hr;
    std::lock_guard lock(mutex_);
    *endOfStream = position_ >= length;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Read(BYTE* buffer, ULONG count, ULONG* read) override {
    if (!buffer || !read) return E_INVALIDARG;
    std::lock_guard lock(mutex_);
    return ReadLocked(buffer, count, read);
  }
  HRESULT STDMETHODCALLTYPE BeginRead(BYTE* buffer, ULONG count, IMFAsyncCallback* callback,
                                      IUnknown* state) override {
    if (!buffer || !callback) return E_INVALIDARG;
    auto outcome = Make<ReadOutcome>();
    if (!outcome) return E_OUTOFMEMORY;
    ComPtr<IMFAsyncResult> result;
    HRESULT hr = MFCreateAsyncResult(outcome.Get(), callback, state, &result);
    if (FAILED(hr)) return hr;
    ComPtr<FileByteStream> self(this);
    return PostToWorkQueue([self, outcome, result, buffer, count, callback] {
      ULONG read = 0;
      result->SetStatus(self->Read(buffer, count, &read));
      outcome->bytesRead = read;
      callback->Invoke(result.Get());
    });
  }
  HRESULT STDMETHODCALLTYPE EndRead(IMFAsyncResult* result, ULONG* read) override {
    if (!result || !read) return E_INVALIDARG;
    ComPtr<IUnknown> object;
    HRESULT hr = result->GetObject(&object);
    if (FAILED(hr)) return hr;
    *read = static_cast<ReadOutcome*>(object.Get())->bytesRead.load();
    return result->GetStatus();
  }
  HRESULT STDMETHODCALLTYPE Write(const BYTE* buffer, ULONG count, ULONG* written) override {
    if (!buffer || !written) return E_INVALIDARG;
    std::lock_guard lock(mutex_);
    if (fd_ < 0 || !(capabilities_ & MFBYTESTREAM_IS_WRITABLE)) return E_ACCESSDENIED;
    ssize_t done = pwrite(fd_, buffer, count, static_cast<off_t>(position_));
    if (done < 0) return StatusFromErrno(errno);
    position_ += static_cast<QWORD>(done);
    *written = static_cast<ULONG>(done);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE*, ULONG, IMFAsyncCallback*, IUnknown*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EndWrite(IMFAsyncResult*, ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD /*flags*/,
                                 QWORD* position) override {
    std::lock_guard lock(mutex_);
    LONGLONG base = origin == msoCurrent ? static_cast<LONGLONG>(position_) : 0;
    if (base + offset < 0) return E_INVALIDARG;
    position_ = static_cast<QWORD>(base + offset);
    if (position) *position = position_;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE Flush() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Close() override {
    std::lock_guard lock(mutex_);
    CloseFile();
    return S_OK;
  }

 private:
  HRESULT ReadLocked(BYTE* buffer, ULONG count, ULONG* read) {
    *read = 0;
    if (fd_ < 0) return E_FAIL;
    ssize_t done;
    do {
      done = pread(fd_, buffer, count, static_cast<off_t>(position_));
    } while (done < 0 && errno == EINTR);
    if (done < 0) return StatusFromErrno(errno);
    position_ += static_cast<QWORD>(done);
    *read = static_cast<ULONG>(done);
    return S_OK;
  }

  void CloseFile() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }

  std::mutex mutex_;
  int fd_;
  DWORD capabilities_;
  QWORD position_ = 0;
};

int OpenFlags(MF_FILE_ACCESSMODE access, MF_FILE_OPENMODE open) {
  int flags = access == MF_ACCESSMODE_READ ? O_RDONLY : access == MF_ACCESSMODE_WRITE ? O_WRONLY : O_RDWR;
  switch (open) {
    case MF_OPENMODE_FAIL_IF_NOT_EXIST: break;
    case MF_OPENMODE_FAIL_IF_EXIST: flags |= O_CREAT | O_EXCL; break;
    case MF_OPENMODE_RESET_IF_EXIST:
    case MF_OPENMODE_DELETE_IF_EXIST: flags |= O_CREAT | O_TRUNC; break;
    case MF_OPENMODE_APPEND_IF_EXIST: flags |= O_CREAT; break;
  }
  return flags | O_CLOEXEC;
}

}  // namespace

}  // namespace tessel::platform

extern "C" HRESULT WINAPI MFCreateFile(MF_FILE_ACCESSMODE accessMode, MF_FILE_OPENMODE openMode,
                                       MF_FILE_FLAGS /*flags*/, LPCWSTR path, IMFByteStream** stream) {
  using namespace tessel::platform;
  if (!path || !stream) return E_POINTER;
  *stream = nullptr;
  int fd = ::open(Utf8FromWide(path).c_str(), OpenFlags(accessMode, openMode), 0644);
  if (fd < 0) return StatusFromErrno(errno);
  struct stat info;
  if (fstat(fd, &info) != 0 || S_ISDIR(info.st_mode)) {
    ::close(fd);
    return HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED);
  }
  DWORD capabilities = MFBYTESTREAM_IS_SEEKABLE;
  if (accessMode & MF_ACCESSMODE_READ) capabilities |= MFBYTESTREAM_IS_READABLE;
  if (accessMode & MF_ACCESSMODE_WRITE) capabilities |= MFBYTESTREAM_IS_WRITABLE;
  *stream = new (std::nothrow) FileByteStream(fd, capabilities);
  if (!*stream) {
    ::close(fd);
    return E_OUTOFMEMORY;
  }
  return S_OK;
}
