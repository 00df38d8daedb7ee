// The byte stream bridge: an IMFByteStream over the host's input streams.
#include "vorna/translationunit.h"

#include "win_mfstream.h"

#include <mfapi.h>

#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

#include "vorna/ioconnection.h"
#include "vorna/job.h"
#include "vorna/system.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;

namespace {

// What one BeginRead asked for, handed to the platform as the result's object; it lives
// as long as the result object and comes back in the read job and in EndRead.
class AsyncReadState final : public IUnknown {
 public:
  // A new state with one reference; null without memory.
  static AsyncReadState* Create(BYTE* buffer, ULONG byteCount, QWORD position) {
    void* block = System::Alloc(sizeof(AsyncReadState), VORNA_SOURCE_LOCATION);
    if (!block) return nullptr;
    auto* state = new (block) AsyncReadState(buffer, byteCount, position);
    state->AddRef();
    return state;
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** ppv) override {
    if (!ppv) return E_POINTER;
    if (riid != IID_IUnknown) {
      *ppv = nullptr;
      return E_NOINTERFACE;
    }
    *ppv = static_cast<IUnknown*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return _refCount.fetch_add(1, std::memory_order_relaxed) + 1; }
  ULONG STDMETHODCALLTYPE Release() override {
    UINT32 count = _refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (count == 0) {
      this->~AsyncReadState();
      System::Free(this);
    }
    return count;
  }

  // The state behind the object of a result that BeginRead made, with a reference;
  // null with the failing status in hr.
  static AsyncReadState* FromResult(IMFAsyncResult* result, HRESULT* hr) {
    IUnknown* object = nullptr;
    *hr = result->GetObject(&object);
    return FAILED(*hr) ? nullptr : static_cast<AsyncReadState*>(object);
  }

  BYTE* _buffer;
  UINT32 _byteCount;
  UINT32 _bytesRead = 0;
  QWORD _position;

 private:
  AsyncReadState(BYTE* buffer, ULONG byteCount, QWORD position)
      : _buffer(buffer), _byteCount(byteCount), _position(position) {}
  virtual ~AsyncReadState() = default;

  std::atomic<UINT32> _refCount{0};
};

}  // namespace

MFStream::~MFStream() {
  if (_pendingResult) _pendingResult->Release();
}

Result<void> MFStream::Init(const Url& url) {
  VORNA_ASSIGN_OR_RETURN(_stream, OpenInputStream(url, 0));
  return OK;
}

template <typename FN>
HRESULT MFStream::Locked(FN&& step) {
  HRESULT hr = E_FAIL;
  Result<void> locked = LockServices::Synchronized(_lock, [&]() -> Result<void> {
    hr = step();
    return OK;
  });
  return locked.IsError() ? E_FAIL : hr;
}

HRESULT MFStream::QueryInterface(REFIID riid, void** ppv) {
  if (!ppv) return E_POINTER;
  if (riid != IID_IMFByteStream && riid != IID_IUnknown) {
    *ppv = nullptr;
    return E_NOINTERFACE;
  }
  *ppv = static_cast<IMFByteStream*>(this);
  AddRef();
  return S_OK;
}

ULONG MFStream::AddRef() { return _refCount.fetch_add(1, std::memory_order_relaxed) + 1; }

ULONG MFStream::Release() {
  UINT32 count = _refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
  if (count == 0) delete this;
  return count;
}

HRESULT MFStream::GetCapabilities(DWORD* pdwCapabilities) {
  if (!pdwCapabilities) return E_INVALIDARG;
  *pdwCapabilities = MFBYTESTREAM_IS_READABLE;
  if (_stream && _stream.SeekSupported()) *pdwCapabilities |= MFBYTESTREAM_IS_SEEKABLE;
  return S_OK;
}

HRESULT MFStream::GetLength(QWORD* pqwLength) {
  if (!pqwLength) return E_INVALIDARG;
  return Locked([&] {
    Result<Int64> length = _stream.GetStreamLength();
    if (length.IsError()) return E_FAIL;
    *pqwLength = QWORD(length.GetValue());
    return S_OK;
  });
}

HRESULT MFStream::SetLength(QWORD) { return E_NOTIMPL; }

HRESULT MFStream::GetCurrentPosition(QWORD* pqwPosition) {
  if (!pqwPosition) return E_INVALIDARG;
  return Locked([&] {
    Result<Int64> position = _stream.GetPosition();
    *pqwPosition = QWORD(position.GetValue());
    return position.IsError() ? E_FAIL : S_OK;
  });
}

void MFStream::RecordMove() {
  if (_pendingResult) _positionMoved = true;
}

HRESULT MFStream::SetCurrentPosition(QWORD qwPosition) {
  return Locked([&] {
    RecordMove();
    return _stream.Seek(Int64(qwPosition)).IsError() ? E_FAIL : S_OK;
  });
}

HRESULT MFStream::IsEndOfStream(BOOL* pfEndOfStream) {
  if (!pfEndOfStream) return E_INVALIDARG;
  Result<Int64> position;
  Result<Int64> length;
  HRESULT hr = Locked([&] {
    position = _stream.GetPosition();
    length = _stream.GetStreamLength();
    return position.IsError() || length.IsError() ? E_FAIL : S_OK;
  });
  *pfEndOfStream = FAILED(hr) || position.GetValue() >= length.GetValue();
  return hr;
}

Result<ULONG> MFStream::ReadAt(QWORD position, BYTE* pb, ULONG cb) {
  Int64 returnTo = -1;
  if (_positionMoved && position != CURRENT_POSITION) {
    VORNA_ASSIGN_OR_RETURN(returnTo, _stream.GetPosition());
    VORNA_RETURN_ON_ERROR(_stream.Seek(Int64(position)));
  }
  VORNA_ASSIGN_OR_RETURN(Int read, _stream.ReadEOS(pb, Int(cb)));
  if (returnTo >= 0) VORNA_RETURN_ON_ERROR(_stream.Seek(returnTo));
  return ULONG(read);
}

// A failure anywhere reports 0 bytes, even when the bytes were read and only the way
// back to the moved position failed.
HRESULT MFStream::ReadBody(QWORD position, BYTE* pb, ULONG cb, ULONG* pcbRead) {
  Result<ULONG> read = ReadAt(position, pb, cb);
  if (pcbRead) *pcbRead = read.GetValue();
  return read.IsError() ? E_FAIL : S_OK;
}

HRESULT MFStream::Read(BYTE* pb, ULONG cb, ULONG* pcbRead) {
  return Locked([&] { return ReadBody(CURRENT_POSITION, pb, cb, pcbRead); });
}

HRESULT MFStream::BeginRead(BYTE* pb, ULONG cb, IMFAsyncCallback* pCallback, IUnknown* punkState) {
  if (!pCallback || !pb) return E_INVALIDARG;
  QWORD position = 0;
  if (CheckHResult(GetCurrentPosition(&position)).IsError()) return E_FAIL;
  AsyncReadState* state = AsyncReadState::Create(pb, cb, position);
  if (!state) return E_OUTOFMEMORY;
  if (_pendingResult) std::exchange(_pendingResult, nullptr)->Release();
  HRESULT hr = MFCreateAsyncResult(state, pCallback, punkState, &_pendingResult);
  if (SUCCEEDED(hr) && EnqueueClosureJob([this] { RunReadJob(); }).IsError()) hr = E_FAIL;
  state->Release();
  return hr;
}

// Nothing of this stream is touched after MFInvokeCallback: from then on the caller may
// end the read and let the stream go. Until the callback has run, _pendingResult
// stays as BeginRead left it.
void MFStream::RunReadJob() {
  IMFAsyncResult* result = _pendingResult;
  HRESULT outcome = S_OK;
  AsyncReadState* state = AsyncReadState::FromResult(result, &outcome);
  if (state) {
    ULONG read = 0;
    outcome = Locked([&] {
      return ReadBody(state->_position, state->_buffer + state->_bytesRead, state->_byteCount - state->_bytesRead,
                      &read);
    });
    state->_bytesRead += read;
  }
  (void)result->SetStatus(outcome);
  (void)MFInvokeCallback(result);
  if (state) state->Release();
}

// A null result is refused as well: it can't be the one the callback received.
HRESULT MFStream::EndRead(IMFAsyncResult* pResult, ULONG* pcbRead) {
  if (!pcbRead || !pResult) return E_INVALIDARG;
  HRESULT hr = S_OK;
  AsyncReadState* state = AsyncReadState::FromResult(pResult, &hr);
  *pcbRead = state ? state->_bytesRead : 0;
  if (_pendingResult) std::exchange(_pendingResult, nullptr)->Release();
  (void)Locked([&] {
    _positionMoved = false;
    return S_OK;
  });
  if (state) state->Release();
  return hr;
}

HRESULT MFStream::Write(const BYTE*, ULONG, ULONG*) { return E_NOTIMPL; }

HRESULT MFStream::BeginWrite(const BYTE*, ULONG, IMFAsyncCallback*, IUnknown*) { return E_NOTIMPL; }

HRESULT MFStream::EndWrite(IMFAsyncResult*, ULONG*) { return E_NOTIMPL; }

// The flags are ignored: there is no pending I/O that a seek could cancel, as a read
// under way keeps its own position. Any origin but msoCurrent is the beginning; the
// origin is read as its number, since a caller may pass a value the enumeration lacks.
HRESULT MFStream::Seek(MFBYTESTREAM_SEEK_ORIGIN SeekOrigin, LONGLONG llSeekOffset, DWORD,
                       QWORD* pqwCurrentPosition) {
  std::underlying_type_t<MFBYTESTREAM_SEEK_ORIGIN> origin;
  std::memcpy(&origin, &SeekOrigin, sizeof(origin));
  return Locked([&] {
    RecordMove();
    Int64 target = llSeekOffset;
    if (origin == msoCurrent) {
      Result<Int64> position = _stream.GetPosition();
      if (position.IsError()) return E_FAIL;
      target += position.GetValue();
    }
    if (_stream.Seek(target).IsError()) return E_FAIL;
    if (pqwCurrentPosition) *pqwCurrentPosition = QWORD(target);
    return S_OK;
  });
}

HRESULT MFStream::Flush() { return E_NOTIMPL; }

HRESULT MFStream::Close() {
  if (_closed) return S_OK;
  return Locked([&] {
    HRESULT hr = _stream.Close().IsError() ? E_FAIL : S_OK;
    _closed = true;
    _stream = InputStreamRef();
    return hr;
  });
}

}  // namespace tessel
