// MFStream over host streams: the synchronous byte stream methods, the asynchronous
// reads through the host's job pool, and a platform source reader reading a whole
// movie through it.
#include <gtest/gtest.h>

#include <mfapi.h>
#include <mfreadwrite.h>
#include <wrl/implements.h>

#include <algorithm>
#include <future>
#include <string>
#include <vector>

#include "fixtures.h"
#include "host_environment.h"
#include "vorna/job.h"
#include "win_mfstream.h"

namespace tessel {

using namespace Microsoft::WRL;
namespace {

constexpr const char* kPatternBlob = "mfstream/pattern.bin";
constexpr ULONG kPatternSize = 1000;

std::vector<vorna::UChar> Pattern(size_t size) {
  std::vector<vorna::UChar> bytes(size);
  for (size_t i = 0; i < size; ++i) bytes[i] = vorna::UChar(i * 7 + i / 251);
  return bytes;
}

vorna::Url MakeUrl(const std::string& text) {
  vorna::Url url;
  EXPECT_FALSE(url.Set(text.c_str()).IsError());
  return url;
}

// A new stream with the caller's reference; opened on url unless it is empty.
ComPtr<MFStream> OpenStream(const std::string& url) {
  ComPtr<MFStream> stream(new MFStream);
  if (!url.empty()) {
    EXPECT_FALSE(stream->Init(MakeUrl(url)).IsError()) << url;
  }
  return stream;
}

// A stream without bytes behind it says it is readable but not seekable, and every
// read fails with no bytes.
void ExpectNothingToRead(MFStream* stream) {
  DWORD capabilities = 0;
  EXPECT_EQ(stream->GetCapabilities(&capabilities), S_OK);
  EXPECT_EQ(capabilities, MFBYTESTREAM_IS_READABLE);
  BYTE buffer[8];
  ULONG count = 77;
  EXPECT_EQ(stream->Read(buffer, 8, &count), E_FAIL);
  EXPECT_EQ(count, 0u);
}

QWORD PositionOf(MFStream* stream) {
  QWORD position = ~QWORD(0);
  EXPECT_EQ(stream->GetCurrentPosition(&position), S_OK);
  return position;
}

// Keeps the result its Invoke receives and lets the test wait for it; the test ends the
// read itself, so that it can act between the callback and EndRead. Counted like any
// COM object, as the platform may drop its references after the test has gone on.
class ResultCatcher final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFAsyncCallback> {
 public:
  HRESULT STDMETHODCALLTYPE GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(IMFAsyncResult* result) override {
    _invoked.set_value(ComPtr<IMFAsyncResult>(result));
    return S_OK;
  }

  ComPtr<IMFAsyncResult> Wait() { return _future.get(); }

 private:
  std::promise<ComPtr<IMFAsyncResult>> _invoked;
  std::future<ComPtr<IMFAsyncResult>> _future = _invoked.get_future();
};

// What one asynchronous read delivered.
struct AsyncOutcome {
  HRESULT status;
  HRESULT endRead;
  ULONG count;
};

using CatcherRef = ComPtr<ResultCatcher>;

CatcherRef NewCatcher() { return Make<ResultCatcher>(); }

AsyncOutcome EndCaughtRead(MFStream* stream, const CatcherRef& catcher) {
  ComPtr<IMFAsyncResult> result = catcher->Wait();
  AsyncOutcome outcome{result->GetStatus(), E_FAIL, ~ULONG(0)};
  outcome.endRead = stream->EndRead(result.Get(), &outcome.count);
  return outcome;
}

// Begins a read of count bytes into buffer and waits for its end.
AsyncOutcome ReadAsync(MFStream* stream, BYTE* buffer, ULONG count) {
  CatcherRef catcher = NewCatcher();
  HRESULT begun = stream->BeginRead(buffer, count, catcher.Get(), nullptr);
  EXPECT_EQ(begun, S_OK);
  return SUCCEEDED(begun) ? EndCaughtRead(stream, catcher) : AsyncOutcome{begun, begun, 0};
}

class MFStreamTest : public ::testing::Test {
 protected:
  void SetUp() override {
    _bytes = Pattern(kPatternSize);
    vorna::host::RegisterMemoryBlob(kPatternBlob, _bytes);
    vorna::host::RegisterMemoryBlob("mfstream/empty.bin", {});
    _stream = OpenStream(std::string("memory://") + kPatternBlob);
  }
  void TearDown() override {
    vorna::host::UnregisterMemoryBlob(kPatternBlob);
    vorna::host::UnregisterMemoryBlob("mfstream/empty.bin");
  }

  std::vector<vorna::UChar> Slice(size_t from, size_t count) const {
    return {_bytes.begin() + from, _bytes.begin() + from + count};
  }

  std::vector<vorna::UChar> _bytes;
  ComPtr<MFStream> _stream;
};

TEST_F(MFStreamTest, InterfacesAndReferences) {
  void* object = nullptr;
  EXPECT_EQ(_stream->QueryInterface(IID_IMFByteStream, &object), S_OK);
  EXPECT_EQ(object, static_cast<IMFByteStream*>(_stream.Get()));
  EXPECT_EQ(_stream->QueryInterface(IID_IUnknown, &object), S_OK);
  EXPECT_EQ(object, static_cast<IUnknown*>(_stream.Get()));
  EXPECT_EQ(_stream->Release(), 2u) << "each accepted query added one reference";
  EXPECT_EQ(_stream->Release(), 1u);

  object = &object;
  EXPECT_EQ(_stream->QueryInterface(IID_IMFAsyncCallback, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(_stream->QueryInterface(IID_IMFByteStream, nullptr), E_POINTER);
  EXPECT_EQ(_stream->AddRef(), 2u);
  EXPECT_EQ(_stream->Release(), 1u);
}

TEST_F(MFStreamTest, WritingMethodsAndNullOutputsAreRefused) {
  BYTE byte = 0;
  ULONG count = 0;
  CatcherRef catcher = NewCatcher();
  EXPECT_EQ(_stream->SetLength(10), E_NOTIMPL);
  EXPECT_EQ(_stream->Write(&byte, 1, &count), E_NOTIMPL);
  EXPECT_EQ(_stream->BeginWrite(&byte, 1, catcher.Get(), nullptr), E_NOTIMPL);
  EXPECT_EQ(_stream->EndWrite(nullptr, &count), E_NOTIMPL);
  EXPECT_EQ(_stream->Flush(), E_NOTIMPL);

  EXPECT_EQ(_stream->GetCapabilities(nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->GetLength(nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->GetCurrentPosition(nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->IsEndOfStream(nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->BeginRead(nullptr, 1, catcher.Get(), nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->BeginRead(&byte, 1, nullptr, nullptr), E_INVALIDARG);
  EXPECT_EQ(_stream->EndRead(nullptr, nullptr), E_INVALIDARG);
  EXPECT_EQ(PositionOf(_stream.Get()), 0u) << "nothing was read";
}

TEST_F(MFStreamTest, LengthCapabilitiesAndPosition) {
  QWORD length = 0;
  EXPECT_EQ(_stream->GetLength(&length), S_OK);
  EXPECT_EQ(length, kPatternSize);
  DWORD capabilities = 0;
  EXPECT_EQ(_stream->GetCapabilities(&capabilities), S_OK);
  EXPECT_EQ(capabilities, MFBYTESTREAM_IS_READABLE | MFBYTESTREAM_IS_SEEKABLE);
  EXPECT_EQ(_stream->SetCurrentPosition(640), S_OK);
  EXPECT_EQ(PositionOf(_stream.Get()), 640u);
}

TEST_F(MFStreamTest, FailedInitLeavesAStreamThatAnswersWithFailures) {
  ComPtr<MFStream> stream = OpenStream("");
  EXPECT_TRUE(stream->Init(MakeUrl("memory://mfstream/missing.bin")).IsError());

  ExpectNothingToRead(stream.Get());
  QWORD length = 77;
  EXPECT_EQ(stream->GetLength(&length), E_FAIL);
  EXPECT_EQ(length, 77u) << "a failed length is not stored";
  QWORD position = 77;
  EXPECT_EQ(stream->GetCurrentPosition(&position), E_FAIL);
  EXPECT_EQ(position, 0u) << "a failed position is stored as reported";
  EXPECT_EQ(stream->SetCurrentPosition(1), E_FAIL);
  BYTE buffer[4];
  CatcherRef catcher = NewCatcher();
  EXPECT_EQ(stream->BeginRead(buffer, 4, catcher.Get(), nullptr), E_FAIL);
}

TEST_F(MFStreamTest, SeekOrigins) {
  QWORD position = 0;
  EXPECT_EQ(_stream->Seek(msoBegin, 500, 0, &position), S_OK);
  EXPECT_EQ(position, 500u);
  EXPECT_EQ(_stream->Seek(msoCurrent, -120, 0, &position), S_OK);
  EXPECT_EQ(position, 380u);
  EXPECT_EQ(PositionOf(_stream.Get()), 380u);
  EXPECT_EQ(_stream->Seek(msoCurrent, 20, MFBYTESTREAM_SEEK_FLAG_CANCEL_PENDING_IO, &position), S_OK);
  EXPECT_EQ(position, 400u) << "the flags change nothing";

  EXPECT_EQ(_stream->Seek(static_cast<MFBYTESTREAM_SEEK_ORIGIN>(2), 30, 0, &position), S_OK);
  EXPECT_EQ(position, 30u) << "an unknown origin is the beginning";

  EXPECT_EQ(_stream->Seek(msoCurrent, 5, 0, nullptr), S_OK);
  EXPECT_EQ(PositionOf(_stream.Get()), 35u);
  BYTE byte = 0;
  EXPECT_EQ(_stream->Read(&byte, 1, nullptr), S_OK);
  EXPECT_EQ(byte, _bytes[35]);
}

TEST_F(MFStreamTest, ReadsUpToTheEndInOneCall) {
  std::vector<BYTE> buffer(300, 0xEE);
  ULONG count = 0;
  EXPECT_EQ(_stream->Read(buffer.data(), 300, &count), S_OK);
  EXPECT_EQ(count, 300u);
  EXPECT_EQ(buffer, Slice(0, 300));

  ASSERT_EQ(_stream->SetCurrentPosition(kPatternSize - 50), S_OK);
  EXPECT_EQ(_stream->Read(buffer.data(), 300, &count), S_OK);
  EXPECT_EQ(count, 50u) << "a short count shows the end";
  EXPECT_EQ(std::vector<BYTE>(buffer.begin(), buffer.begin() + 50), Slice(kPatternSize - 50, 50));
  EXPECT_EQ(_stream->Read(buffer.data(), 300, &count), S_OK);
  EXPECT_EQ(count, 0u);

  ASSERT_EQ(_stream->SetCurrentPosition(10), S_OK);
  EXPECT_EQ(_stream->Read(buffer.data(), 5, nullptr), S_OK);
  EXPECT_EQ(PositionOf(_stream.Get()), 15u) << "read with the count discarded";
}

TEST_F(MFStreamTest, EndOfStream) {
  BOOL end = TRUE;
  EXPECT_EQ(_stream->IsEndOfStream(&end), S_OK);
  EXPECT_FALSE(end);
  ASSERT_EQ(_stream->SetCurrentPosition(kPatternSize), S_OK);
  EXPECT_EQ(_stream->IsEndOfStream(&end), S_OK);
  EXPECT_TRUE(end);
  ASSERT_EQ(_stream->SetCurrentPosition(kPatternSize + 10), S_OK);
  EXPECT_EQ(_stream->IsEndOfStream(&end), S_OK);
  EXPECT_TRUE(end) << "behind the end";

  ComPtr<MFStream> empty = OpenStream("memory://mfstream/empty.bin");
  end = FALSE;
  EXPECT_EQ(empty->IsEndOfStream(&end), S_OK);
  EXPECT_TRUE(end);
}

TEST_F(MFStreamTest, ClosedStream) {
  EXPECT_EQ(_stream->Close(), S_OK);
  EXPECT_EQ(_stream->Close(), S_OK);

  BOOL end = FALSE;
  EXPECT_EQ(_stream->IsEndOfStream(&end), E_FAIL);
  EXPECT_TRUE(end);
  ExpectNothingToRead(_stream.Get());
  EXPECT_EQ(_stream->Seek(msoBegin, 0, 0, nullptr), E_FAIL);
}

// Asynchronous reads. The pool gets one worker; a test that has to act before a read
// job runs keeps that worker busy until it lets the job go.
class MFStreamAsyncTest : public MFStreamTest {
 protected:
  void SetUp() override {
    MFStreamTest::SetUp();
    vorna::host::SetJobThreadCount(1);
  }
  void TearDown() override {
    ReleaseWorker();
    vorna::host::SetJobThreadCount(0);
    MFStreamTest::TearDown();
  }

  void OccupyWorker() {
    std::future<void> running = _started.get_future();
    std::shared_future<void> release = _release.get_future().share();
    ASSERT_FALSE(vorna::EnqueueClosureJob([this, release] {
                   _started.set_value();
                   release.wait();
                 }).IsError());
    running.wait();
    _occupied = true;
  }
  void ReleaseWorker() {
    if (_occupied) _release.set_value();
    _occupied = false;
  }

  std::promise<void> _started;
  std::promise<void> _release;
  bool _occupied = false;
};

TEST_F(MFStreamAsyncTest, ReadsAtThePositionAndMovesOn) {
  ASSERT_EQ(_stream->SetCurrentPosition(100), S_OK);
  std::vector<BYTE> buffer(200, 0xEE);
  AsyncOutcome outcome = ReadAsync(_stream.Get(), buffer.data(), 200);
  EXPECT_EQ(outcome.status, S_OK);
  EXPECT_EQ(outcome.endRead, S_OK);
  EXPECT_EQ(outcome.count, 200u);
  EXPECT_EQ(buffer, Slice(100, 200));
  EXPECT_EQ(PositionOf(_stream.Get()), 300u);
}

TEST_F(MFStreamAsyncTest, ShortAndEmptyReads) {
  struct Case {
    QWORD from;
    ULONG asked;
    ULONG read;
  };
  const Case cases[] = {{kPatternSize - 10, 64, 10}, {kPatternSize, 64, 0}, {0, 0, 0}};
  std::vector<BYTE> buffer(64, 0xEE);
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.asked << " bytes asked at " << c.from);
    ASSERT_EQ(_stream->SetCurrentPosition(c.from), S_OK);
    AsyncOutcome outcome = ReadAsync(_stream.Get(), buffer.data(), c.asked);
    EXPECT_EQ(outcome.status, S_OK);
    EXPECT_EQ(outcome.endRead, S_OK);
    EXPECT_EQ(outcome.count, c.read);
    EXPECT_EQ(PositionOf(_stream.Get()), c.from + c.read);
  }
}

TEST_F(MFStreamAsyncTest, AMoveBeforeTheJobRunsIsUndoneAfterTheRead) {
  OccupyWorker();
  ASSERT_EQ(_stream->SetCurrentPosition(100), S_OK);
  std::vector<BYTE> buffer(50, 0xEE);
  CatcherRef catcher = NewCatcher();
  ASSERT_EQ(_stream->BeginRead(buffer.data(), 50, catcher.Get(), nullptr), S_OK);
  ASSERT_EQ(_stream->SetCurrentPosition(700), S_OK);

  std::vector<BYTE> direct(20, 0xEE);
  ULONG count = 0;
  EXPECT_EQ(_stream->Read(direct.data(), 20, &count), S_OK);
  EXPECT_EQ(direct, Slice(700, 20)) << "a synchronous read takes the current position";

  ReleaseWorker();
  AsyncOutcome outcome = EndCaughtRead(_stream.Get(), catcher);
  EXPECT_EQ(outcome.status, S_OK);
  EXPECT_EQ(outcome.count, 50u);
  EXPECT_EQ(buffer, Slice(100, 50)) << "the read takes the position it was asked at";
  EXPECT_EQ(PositionOf(_stream.Get()), 720u) << "and puts the moved position back";
}

TEST_F(MFStreamAsyncTest, AMoveAfterTheJobRanStaysAndLaterReadsFollowIt) {
  std::vector<BYTE> buffer(50, 0xEE);
  CatcherRef catcher = NewCatcher();
  ASSERT_EQ(_stream->BeginRead(buffer.data(), 50, catcher.Get(), nullptr), S_OK);
  ComPtr<IMFAsyncResult> result = catcher->Wait();
  QWORD position = 0;
  ASSERT_EQ(_stream->Seek(msoBegin, 400, 0, &position), S_OK);
  ULONG count = 0;
  EXPECT_EQ(_stream->EndRead(result.Get(), &count), S_OK);
  EXPECT_EQ(count, 50u);
  EXPECT_EQ(PositionOf(_stream.Get()), 400u);

  EXPECT_EQ(ReadAsync(_stream.Get(), buffer.data(), 50).count, 50u);
  EXPECT_EQ(buffer, Slice(400, 50));
  EXPECT_EQ(PositionOf(_stream.Get()), 450u);
}

TEST_F(MFStreamAsyncTest, CloseWithAReadOutstanding) {
  OccupyWorker();
  std::vector<BYTE> buffer(50, 0xEE);
  CatcherRef catcher = NewCatcher();
  ASSERT_EQ(_stream->BeginRead(buffer.data(), 50, catcher.Get(), nullptr), S_OK);
  EXPECT_EQ(_stream->Close(), S_OK);
  ReleaseWorker();
  AsyncOutcome outcome = EndCaughtRead(_stream.Get(), catcher);
  EXPECT_EQ(outcome.status, E_FAIL);
  EXPECT_EQ(outcome.endRead, S_OK);
  EXPECT_EQ(outcome.count, 0u);
}

TEST_F(MFStreamAsyncTest, NoMemoryForTheStateOrTheJob) {
  BYTE buffer[8];
  CatcherRef catcher = NewCatcher();
  vorna::host::FailAllocationsAfter(0);
  EXPECT_EQ(_stream->BeginRead(buffer, 8, catcher.Get(), nullptr), E_OUTOFMEMORY);
  vorna::host::FailAllocationsAfter(1);
  EXPECT_EQ(_stream->BeginRead(buffer, 8, catcher.Get(), nullptr), E_FAIL) << "the state fits, the job does not";
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_EQ(PositionOf(_stream.Get()), 0u);
}

// A byte stream that passes every call on to an MFStream and counts the bytes of each
// read path. The clips are smaller than one chunk of the platform's reader, which would
// take a clip whole with its first synchronous read; cut to kSyncReadLimit, that read
// leaves the rest of the movie to the reader's read-ahead, which uses BeginRead.
class CountingStream final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFByteStream> {
 public:
  static constexpr ULONG kSyncReadLimit = 4096;

  explicit CountingStream(const ComPtr<MFStream>& inner) : _inner(inner) {}
  std::atomic<int> beginReads{0};
  std::atomic<int> endReads{0};
  std::atomic<QWORD> syncBytes{0};
  std::atomic<QWORD> asyncBytes{0};

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* c) override { return _inner->GetCapabilities(c); }
  HRESULT STDMETHODCALLTYPE GetLength(QWORD* l) override { return _inner->GetLength(l); }
  HRESULT STDMETHODCALLTYPE SetLength(QWORD l) override { return _inner->SetLength(l); }
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* p) override { return _inner->GetCurrentPosition(p); }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD p) override { return _inner->SetCurrentPosition(p); }
  HRESULT STDMETHODCALLTYPE IsEndOfStream(BOOL* e) override { return _inner->IsEndOfStream(e); }
  HRESULT STDMETHODCALLTYPE Read(BYTE* pb, ULONG cb, ULONG* read) override {
    HRESULT hr = _inner->Read(pb, std::min(cb, kSyncReadLimit), read);
    syncBytes += *read;
    return hr;
  }
  HRESULT STDMETHODCALLTYPE BeginRead(BYTE* pb, ULONG cb, IMFAsyncCallback* callback, IUnknown* state) override {
    ++beginReads;
    return _inner->BeginRead(pb, cb, callback, state);
  }
  HRESULT STDMETHODCALLTYPE EndRead(IMFAsyncResult* result, ULONG* read) override {
    ++endReads;
    HRESULT hr = _inner->EndRead(result, read);
    asyncBytes += *read;
    return hr;
  }
  HRESULT STDMETHODCALLTYPE Write(const BYTE* pb, ULONG cb, ULONG* written) override {
    return _inner->Write(pb, cb, written);
  }
  HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE* pb, ULONG cb, IMFAsyncCallback* c, IUnknown* s) override {
    return _inner->BeginWrite(pb, cb, c, s);
  }
  HRESULT STDMETHODCALLTYPE EndWrite(IMFAsyncResult* r, ULONG* written) override {
    return _inner->EndWrite(r, written);
  }
  HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN o, LONGLONG offset, DWORD f, QWORD* p) override {
    return _inner->Seek(o, offset, f, p);
  }
  HRESULT STDMETHODCALLTYPE Flush() override { return _inner->Flush(); }
  HRESULT STDMETHODCALLTYPE Close() override { return _inner->Close(); }

 private:
  ComPtr<MFStream> _inner;
};

class MFStreamReaderTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { ASSERT_EQ(MFStartup(MF_VERSION, MFSTARTUP_FULL), S_OK); }
  static void TearDownTestSuite() { EXPECT_EQ(MFShutdown(), S_OK); }
};

TEST_F(MFStreamReaderTest, SourceReaderReadsAWholeMovieThroughAsynchronousReads) {
  ComPtr<MFStream> stream = OpenStream(fixtures::Path(fixtures::kMovieAac.name));
  auto counting = Make<CountingStream>(stream);
  ComPtr<IMFSourceReader> reader;
  ASSERT_EQ(MFCreateSourceReaderFromByteStream(counting.Get(), nullptr, &reader), S_OK);
  ASSERT_EQ(reader->SetStreamSelection(MF_SOURCE_READER_ALL_STREAMS, FALSE), S_OK);
  ASSERT_EQ(reader->SetStreamSelection(MF_SOURCE_READER_FIRST_VIDEO_STREAM, TRUE), S_OK);

  int samples = 0;
  for (int guard = 0; guard < 1000; ++guard) {
    DWORD flags = 0;
    LONGLONG time = 0;
    ComPtr<IMFSample> sample;
    HRESULT hr = reader->ReadSample(MF_SOURCE_READER_FIRST_VIDEO_STREAM, 0, nullptr, &flags, &time, &sample);
    ASSERT_EQ(hr, S_OK);
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) break;
    if (sample) ++samples;
  }
  reader.Reset();
  EXPECT_EQ(samples, fixtures::kMovieAac.frames);
  EXPECT_EQ(counting->endReads.load(), counting->beginReads.load()) << "every read was ended";
  QWORD length = 0;
  ASSERT_EQ(stream->GetLength(&length), S_OK);
  EXPECT_GT(counting->asyncBytes.load(), length / 2) << "the movie came through BeginRead";
  EXPECT_GE(counting->asyncBytes.load() + counting->syncBytes.load(), length);
}

}  // namespace
}  // namespace tessel
