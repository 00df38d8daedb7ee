// MFStream: a read-only IMFByteStream over a host input stream, so that the platform's
// source reader can read from any place the host can open. The platform calls it from
// its own threads and a host worker runs its asynchronous reads; _lock serialises every
// use of the host stream's position and is held for one host call sequence only.
#pragma once

#include <mfidl.h>

#include <atomic>

#include "vorna/iostreams.h"
#include "vorna/lockservices.h"
#include "vorna/url.h"

namespace tessel {

class MFStream : public IMFByteStream {
 public:
  MFStream() = default;
  MFStream(const MFStream&) = delete;
  MFStream& operator=(const MFStream&) = delete;

  // Opens the host stream of url. On an error _stream stays null and the caller must
  // not give the object to the platform.
  vorna::Result<void> Init(const vorna::Url& url);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* pdwCapabilities) override;
  HRESULT STDMETHODCALLTYPE GetLength(QWORD* pqwLength) override;
  HRESULT STDMETHODCALLTYPE SetLength(QWORD qwLength) override;
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* pqwPosition) override;
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD qwPosition) override;
  HRESULT STDMETHODCALLTYPE IsEndOfStream(BOOL* pfEndOfStream) override;
  HRESULT STDMETHODCALLTYPE Read(BYTE* pb, ULONG cb, ULONG* pcbRead) override;
  HRESULT STDMETHODCALLTYPE BeginRead(BYTE* pb, ULONG cb, IMFAsyncCallback* pCallback, IUnknown* punkState) override;
  HRESULT STDMETHODCALLTYPE EndRead(IMFAsyncResult* pResult, ULONG* pcbRead) override;
  HRESULT STDMETHODCALLTYPE Write(const BYTE* pb, ULONG cb, ULONG* pcbWritten) override;
  HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE* pb, ULONG cb, IMFAsyncCallback* pCallback,
                                       IUnknown* punkState) override;
  HRESULT STDMETHODCALLTYPE EndWrite(IMFAsyncResult* pResult, ULONG* pcbWritten) override;
  HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN SeekOrigin, LONGLONG llSeekOffset, DWORD dwSeekFlags,
                                 QWORD* pqwCurrentPosition) override;
  HRESULT STDMETHODCALLTYPE Flush() override;
  HRESULT STDMETHODCALLTYPE Close() override;

 private:
  // The wanted position of a read at the current position.
  static constexpr QWORD CURRENT_POSITION = ~QWORD(0);

  virtual ~MFStream();

  // Runs step() while holding _lock and gives the status it leaves; E_FAIL when the
  // lock service itself fails.
  template <typename FN>
  HRESULT Locked(FN&& step);
  // Under _lock, before every reposition: a move while a read is under way is noted.
  void RecordMove();
  // The read body of Read and of the read job, under _lock. At a given position it
  // reads there only when the position moved since the read was issued, and then puts
  // the position back. pcbRead may be null.
  HRESULT ReadBody(QWORD position, BYTE* pb, ULONG cb, ULONG* pcbRead);
  vorna::Result<ULONG> ReadAt(QWORD position, BYTE* pb, ULONG cb);
  // The read job of BeginRead, on a host worker.
  void RunReadJob();

  std::atomic<UINT32> _refCount{0};
  vorna::StrongRef<vorna::InputStreamInterface> _stream;
  vorna::LockWord _lock;
  bool _closed = false;
  IMFAsyncResult* _pendingResult = nullptr;
  bool _positionMoved = false;
};

}  // namespace tessel
