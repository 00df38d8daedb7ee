// Readers over byte streams: the same samples as by path, the asynchronous read-ahead,
// streams that can't seek, refuse BeginRead or fail.
#include <gtest/gtest.h>

#include <atomic>
#include <climits>
#include <thread>

#include "fixtures.h"
#include "reader_support.h"

namespace tessel::platform_test {
namespace {

using namespace tessel::fixtures;

// The key under which a read done on a thread of the stream's own, as a byte stream
// that bridges to a synchronous source does it, leaves its count for EndRead.
constexpr GUID kThreadReadBytes = {0x5d1c7a42, 0x0b7e, 0x4c1f, {0x9a, 0x31, 0x6e, 0x2d, 0x44, 0x10, 0x8b, 0x57}};

// A file byte stream with knobs: hide seeking, refuse BeginRead or serve it on a thread
// of its own through MFInvokeCallback, cut reads short, fail reads after a number of
// bytes; counts what the reader asks of it.
class WrappedStream final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IMFByteStream> {
 public:
  struct Knobs {
    bool seekable = true;
    bool asyncReads = true;
    uint64_t failAfter = UINT64_MAX;
    ULONG maxRead = UINT32_MAX;  // longer reads come back short
    bool ownThread = false;      // BeginRead reads on a new thread, then MFInvokeCallback
  };

  WrappedStream(const std::string& clip, Knobs knobs) : knobs_(knobs) {
    EXPECT_EQ(MFCreateFile(MF_ACCESSMODE_READ, MF_OPENMODE_FAIL_IF_NOT_EXIST, MF_FILEFLAGS_NONE,
                           Wide(ClipPath(clip)).c_str(), &inner_),
              S_OK);
  }

  std::atomic<int> beginReads{0};
  std::atomic<int> positionMoves{0};

  HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) override {
    *capabilities = MFBYTESTREAM_IS_READABLE | (knobs_.seekable ? MFBYTESTREAM_IS_SEEKABLE : 0);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetLength(QWORD* length) override { return inner_->GetLength(length); }
  HRESULT STDMETHODCALLTYPE SetLength(QWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* position) override { return inner_->GetCurrentPosition(position); }
  HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD position) override {
    ++positionMoves;
    return knobs_.seekable ? inner_->SetCurrentPosition(position) : E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE IsEndOfStream(BOOL* end) override { return inner_->IsEndOfStream(end); }
  HRESULT STDMETHODCALLTYPE Read(BYTE* buffer, ULONG count, ULONG* read) override {
    if (Failing()) return E_FAIL;
    HRESULT hr = inner_->Read(buffer, std::min(count, knobs_.maxRead), read);
    delivered_ += *read;
    return hr;
  }
  HRESULT STDMETHODCALLTYPE BeginRead(BYTE* buffer, ULONG count, IMFAsyncCallback* callback,
                                      IUnknown* state) override {
    if (!knobs_.asyncReads) return E_NOTIMPL;
    ++beginReads;
    if (!knobs_.ownThread) return inner_->BeginRead(buffer, std::min(count, knobs_.maxRead), callback, state);
    ComPtr<IMFAttributes> outcome;
    HRESULT hr = MFCreateAttributes(&outcome, 1);
    IMFAsyncResult* result = nullptr;
    if (SUCCEEDED(hr)) hr = MFCreateAsyncResult(outcome.Get(), callback, state, &result);
    if (FAILED(hr)) return hr;
    AddRef();
    std::thread([this, result, outcome = outcome.Get(), buffer, count] {
      ULONG read = 0;
      result->SetStatus(Read(buffer, count, &read));
      outcome->SetUINT32(kThreadReadBytes, read);
      MFInvokeCallback(result);
      result->Release();
      Release();
    }).detach();
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE EndRead(IMFAsyncResult* result, ULONG* read) override {
    if (knobs_.ownThread) {
      ComPtr<IUnknown> object;
      HRESULT hr = result->GetObject(&object);
      *read = SUCCEEDED(hr) ? MFGetAttributeUINT32(static_cast<IMFAttributes*>(object.Get()), kThreadReadBytes, 0) : 0;
      return hr;
    }
    HRESULT hr = inner_->EndRead(result, read);
    delivered_ += *read;
    return Failing() ? E_FAIL : hr;
  }
  HRESULT STDMETHODCALLTYPE Write(const BYTE*, ULONG, ULONG*) override { return E_ACCESSDENIED; }
  HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE*, ULONG, IMFAsyncCallback*, IUnknown*) override {
    return E_ACCESSDENIED;
  }
  HRESULT STDMETHODCALLTYPE EndWrite(IMFAsyncResult*, ULONG*) override { return E_ACCESSDENIED; }
  HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD flags,
                                 QWORD* position) override {
    ++positionMoves;
    return knobs_.seekable ? inner_->Seek(origin, offset, flags, position) : E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Flush() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE Close() override { return inner_->Close(); }

 private:
  ~WrappedStream() = default;
  bool Failing() const { return delivered_ >= knobs_.failAfter; }

  Knobs knobs_;
  ComPtr<IMFByteStream> inner_;
  std::atomic<uint64_t> delivered_{0};
};

ComPtr<IMFSourceReader> OpenThrough(IMFByteStream* stream, HRESULT* status) {
  ComPtr<IMFAttributes> attributes;
  MFCreateAttributes(&attributes, 1);
  attributes->SetUINT32(MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING, TRUE);
  ComPtr<IMFSourceReader> reader;
  *status = MFCreateSourceReaderFromByteStream(stream, attributes.Get(), &reader);
  return reader;
}

struct Reading {
  std::vector<int> frames;
  std::vector<int64_t> times;
  std::vector<std::vector<uint8_t>> firstRows;
  std::vector<int64_t> soundTimes;
};

Reading ReadEverything(IMFSourceReader* reader) {
  Reading result;
  EXPECT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get()), S_OK);
  EXPECT_EQ(reader->SetCurrentMediaType(1, nullptr, OutputType(MFMediaType_Audio, MFAudioFormat_PCM).Get()), S_OK);
  VideoFrame frame;
  while (ReadVideoFrame(reader, 0, MFVideoFormat_RGB32, &frame)) {
    result.frames.push_back(FrameNumber(frame, MFVideoFormat_RGB32));
    result.times.push_back(frame.time);
    result.firstRows.emplace_back(frame.rows.begin() + frame.pitch * 120, frame.rows.begin() + frame.pitch * 121);
  }
  result.soundTimes = ReadAllTimes(reader, 1);
  return result;
}

// Reads the whole movie through a reader over stream, and lets the reader go.
Reading ReadThrough(IMFByteStream* stream) {
  HRESULT hr;
  auto reader = OpenThrough(stream, &hr);
  EXPECT_EQ(hr, S_OK);
  return reader ? ReadEverything(reader.Get()) : Reading{};
}

TEST(ByteStreamReader, EveryWayOfServingReadsGivesTheSameSamplesAsReadingByPath) {
  struct Case {
    const char* name;
    WrappedStream::Knobs knobs;
    int minBeginReads;
  };
  const Case cases[] = {
      {"reads ahead asynchronously", {}, 1},
      {"reads finished on the stream's own thread arrive through the work queue",
       {true, true, UINT64_MAX, 8192, true},
       6},
      {"a stream without BeginRead and with short reads is read synchronously", {true, false, UINT64_MAX, 1000}, 0},
  };
  auto byPath = ReadEverything(OpenReader(kMovieAac.name, Processing::kAdvanced).Get());
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    auto* stream = new WrappedStream(kMovieAac.name, c.knobs);
    auto byStream = ReadThrough(stream);
    EXPECT_EQ(byStream.frames.size(), size_t(kMovieAac.frames));
    EXPECT_EQ(byStream.frames, byPath.frames);
    EXPECT_EQ(byStream.times, byPath.times);
    EXPECT_EQ(byStream.firstRows, byPath.firstRows);
    EXPECT_EQ(byStream.soundTimes, byPath.soundTimes);
    EXPECT_GE(stream->beginReads.load(), c.minBeginReads);
    stream->Release();
  }
}

TEST(ByteStreamReader, StreamThatCanNotSeekIsNeverMovedAndRefusesPositions) {
  auto* stream = new WrappedStream(kAudioMp3, {false, true});
  HRESULT hr;
  auto reader = OpenThrough(stream, &hr);
  ASSERT_EQ(hr, S_OK);
  ASSERT_EQ(reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Audio, MFAudioFormat_PCM).Get()), S_OK);
  auto times = ReadAllTimes(reader.Get(), 0);
  EXPECT_GT(times.size(), 50u);
  EXPECT_EQ(reader->SetCurrentPosition(GUID_NULL, TimePosition(0)), MF_E_BYTESTREAM_NOT_SEEKABLE);
  EXPECT_EQ(stream->positionMoves.load(), 0);
  reader.Reset();
  stream->Release();
}

TEST(ByteStreamReader, FailingStreamEndsInAStatusNotACrash) {
  for (uint64_t failAfter : {uint64_t(0), uint64_t(1000), uint64_t(40000)}) {
    for (bool async : {true, false}) {
      auto* stream = new WrappedStream(kMovieAac.name, {true, async, failAfter, 4096});
      HRESULT hr;
      auto reader = OpenThrough(stream, &hr);
      if (SUCCEEDED(hr)) {
        reader->SetCurrentMediaType(0, nullptr, OutputType(MFMediaType_Video, MFVideoFormat_RGB32).Get());
        auto times = ReadAllTimes(reader.Get(), 0);
        EXPECT_LT(times.size(), size_t(kMovieAac.frames)) << failAfter;
      } else {
        EXPECT_TRUE(FAILED(hr));
      }
      reader.Reset();
      stream->Release();
    }
  }
}

}  // namespace
}  // namespace tessel::platform_test
