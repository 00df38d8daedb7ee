// Attributes, media types, buffers, samples, strides and asynchronous callbacks.
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "mfapi.h"
#include "mferror.h"
#include "objbase.h"
#include "reader_support.h"
#include "tessel_platform_control.h"

namespace tessel::platform_test {
namespace {

TEST(Attributes, TypedItemsAndTheirErrors) {
  ComPtr<IMFAttributes> attributes;
  ASSERT_EQ(MFCreateAttributes(&attributes, 4), S_OK);
  UINT32 u32 = 0;
  EXPECT_EQ(attributes->GetUINT32(MF_MT_SUBTYPE, &u32), MF_E_ATTRIBUTENOTFOUND);
  ASSERT_EQ(attributes->SetGUID(MF_MT_SUBTYPE, MFVideoFormat_H264), S_OK);
  EXPECT_EQ(attributes->GetUINT32(MF_MT_SUBTYPE, &u32), MF_E_INVALIDTYPE);
  ASSERT_EQ(MFSetAttributeSize(attributes.Get(), MF_MT_FRAME_SIZE, 1920, 1080), S_OK);
  UINT32 w = 0, h = 0;
  ASSERT_EQ(MFGetAttributeSize(attributes.Get(), MF_MT_FRAME_SIZE, &w, &h), S_OK);
  EXPECT_EQ(w, 1920u);
  EXPECT_EQ(h, 1080u);
  EXPECT_EQ(MFGetAttributeUINT32(attributes.Get(), MF_MT_AVG_BITRATE, 77), 77u);
  ASSERT_EQ(attributes->SetString(MF_MT_USER_DATA, u"tessel"), S_OK);
  LPWSTR text = nullptr;
  UINT32 length = 0;
  ASSERT_EQ(attributes->GetAllocatedString(MF_MT_USER_DATA, &text, &length), S_OK);
  EXPECT_EQ(std::u16string(text), u"tessel");
  EXPECT_EQ(length, 6u);
  CoTaskMemFree(text);
  const UINT8 blob[] = {1, 2, 3};
  ASSERT_EQ(attributes->SetBlob(MF_MT_MPEG_SEQUENCE_HEADER, blob, 3), S_OK);
  UINT8 small[2];
  EXPECT_EQ(attributes->GetBlob(MF_MT_MPEG_SEQUENCE_HEADER, small, 2, nullptr),
            HRESULT_FROM_WIN32(ERROR_INSUFFICIENT_BUFFER));
  PROPVARIANT item;
  PropVariantInit(&item);
  ASSERT_EQ(attributes->GetItem(MF_MT_FRAME_SIZE, &item), S_OK);
  EXPECT_EQ(item.vt, VT_UI8);
  EXPECT_EQ(item.uhVal.QuadPart, Pack2UINT32AsUINT64(1920, 1080));
  PropVariantClear(&item);
  UINT32 count = 0;
  attributes->GetCount(&count);
  EXPECT_EQ(count, 4u);
  GUID key;
  ASSERT_EQ(attributes->GetItemByIndex(0, &key, nullptr), S_OK);
  EXPECT_EQ(key, MF_MT_SUBTYPE) << "items keep the order they were set in";
}

TEST(MediaType, EqualityNamesWhatMatches) {
  ComPtr<IMFMediaType> a, b;
  MFCreateMediaType(&a);
  MFCreateMediaType(&b);
  for (IMFMediaType* t : {a.Get(), b.Get()}) {
    t->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
    t->SetGUID(MF_MT_SUBTYPE, MFVideoFormat_RGB32);
  }
  DWORD flags = 0;
  EXPECT_EQ(a->IsEqual(b.Get(), &flags), S_OK);
  MFSetAttributeSize(b.Get(), MF_MT_FRAME_SIZE, 2, 2);
  EXPECT_EQ(a->IsEqual(b.Get(), &flags), S_FALSE);
  EXPECT_EQ(flags, MF_MEDIATYPE_EQUAL_MAJOR_TYPES | MF_MEDIATYPE_EQUAL_FORMAT_TYPES);
  GUID major;
  ASSERT_EQ(a->GetMajorType(&major), S_OK);
  EXPECT_EQ(major, MFMediaType_Video);
}

TEST(Buffers, MemoryBufferLengths) {
  ComPtr<IMFMediaBuffer> buffer;
  ASSERT_EQ(MFCreateMemoryBuffer(100, &buffer), S_OK);
  DWORD length = 1;
  buffer->GetCurrentLength(&length);
  EXPECT_EQ(length, 0u);
  EXPECT_EQ(buffer->SetCurrentLength(101), E_INVALIDARG);
  EXPECT_EQ(buffer->SetCurrentLength(60), S_OK);
  BYTE* data = nullptr;
  DWORD max = 0;
  ASSERT_EQ(buffer->Lock(&data, &max, &length), S_OK);
  EXPECT_EQ(max, 100u);
  EXPECT_EQ(length, 60u);
  buffer->Unlock();
  ComPtr<IMF2DBuffer> image;
  EXPECT_EQ(buffer->QueryInterface(IID_PPV_ARGS(&image)), E_NOINTERFACE);
}

TEST(Buffers, AbsurdAndInjectedFailures) {
  ComPtr<IMFMediaBuffer> buffer;
  EXPECT_EQ(MFCreateMemoryBuffer(0xFFFFFFFF, &buffer), E_OUTOFMEMORY);
  EXPECT_EQ(MFCreate2DMediaBuffer(100000, 100000, 22, FALSE, &buffer), E_OUTOFMEMORY);
  TesselPlatformFailNextBufferCreation(E_OUTOFMEMORY);
  EXPECT_EQ(MFCreateMemoryBuffer(16, &buffer), E_OUTOFMEMORY);
  EXPECT_EQ(MFCreateMemoryBuffer(16, &buffer), S_OK) << "the injection is used up";
}

TEST(Buffers, ImageBufferRowsBothWays) {
  for (BOOL bottomUp : {FALSE, TRUE}) {
    ComPtr<IMFMediaBuffer> buffer;
    ASSERT_EQ(MFCreate2DMediaBuffer(10, 4, 20, bottomUp, &buffer), S_OK);  // RGB24
    ComPtr<IMF2DBuffer> image;
    ASSERT_EQ(buffer->QueryInterface(IID_PPV_ARGS(&image)), S_OK);
    BYTE* top = nullptr;
    LONG pitch = 0;
    ASSERT_EQ(image->Lock2D(&top, &pitch), S_OK);
    EXPECT_EQ(pitch, bottomUp ? -32 : 32) << "rows padded to 4 bytes";
    top[0] = 0xAB;
    image->Unlock2D();
    BYTE* data = nullptr;
    DWORD length = 0;
    ASSERT_EQ(buffer->Lock(&data, nullptr, &length), S_OK);
    EXPECT_EQ(length, 128u);
    EXPECT_EQ(data[bottomUp ? 96 : 0], 0xAB) << "the contiguous form starts with the bottom row when bottom-up";
    buffer->Unlock();
  }
}

TEST(Stride, FormatCodesGiveTheirRowPitch) {
  struct Row {
    DWORD format;
    DWORD width;
    LONG stride;
  };
  const Row table[] = {{22, 10, -40}, {21, 10, -40},  {20, 10, -32},
                       {24, 10, -20}, {23, 11, -24},  {MFVideoFormat_YUY2.Data1, 10, 20},
                       {MFVideoFormat_UYVY.Data1, 10, 20}, {MFVideoFormat_NV12.Data1, 10, 10}};
  for (const Row& row : table) {
    LONG stride = 0;
    ASSERT_EQ(MFGetStrideForBitmapInfoHeader(row.format, row.width, &stride), S_OK) << row.format;
    EXPECT_EQ(stride, row.stride) << row.format;
  }
  LONG stride = 0;
  EXPECT_EQ(MFGetStrideForBitmapInfoHeader(MFVideoFormat_H264.Data1, 10, &stride), MF_E_INVALIDMEDIATYPE);
}

TEST(Sample, SeveralBuffersBecomeOneContiguousBuffer) {
  ComPtr<IMFSample> sample;
  ASSERT_EQ(MFCreateSample(&sample), S_OK);
  LONGLONG time = 0;
  EXPECT_EQ(sample->GetSampleTime(&time), MF_E_NO_SAMPLE_TIMESTAMP);
  for (BYTE fill : {BYTE(1), BYTE(2)}) {
    ComPtr<IMFMediaBuffer> part;
    MFCreateMemoryBuffer(3, &part);
    BYTE* data = nullptr;
    part->Lock(&data, nullptr, nullptr);
    std::fill(data, data + 3, fill);
    part->Unlock();
    part->SetCurrentLength(3);
    ASSERT_EQ(sample->AddBuffer(part.Get()), S_OK);
  }
  DWORD total = 0;
  sample->GetTotalLength(&total);
  EXPECT_EQ(total, 6u);
  ComPtr<IMFMediaBuffer> whole;
  ASSERT_EQ(sample->ConvertToContiguousBuffer(&whole), S_OK);
  DWORD count = 0;
  sample->GetBufferCount(&count);
  EXPECT_EQ(count, 1u);
  BYTE* data = nullptr;
  DWORD length = 0;
  whole->Lock(&data, nullptr, &length);
  EXPECT_EQ(std::vector<BYTE>(data, data + length), (std::vector<BYTE>{1, 1, 1, 2, 2, 2}));
  whole->Unlock();
  ASSERT_EQ(sample->SetUINT32(MFSampleExtension_CleanPoint, 1), S_OK);
  EXPECT_EQ(MFGetAttributeUINT32(sample.Get(), MFSampleExtension_CleanPoint, 0), 1u);
}

// Records the thread and status of its Invoke.
class Callback final : public IMFAsyncCallback {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    if (riid != IID_IUnknown && riid != IID_IMFAsyncCallback) return E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++refs_; }
  ULONG STDMETHODCALLTYPE Release() override { return --refs_; }
  HRESULT STDMETHODCALLTYPE GetParameters(DWORD*, DWORD*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(IMFAsyncResult* result) override {
    std::lock_guard lock(mutex_);
    thread_ = std::this_thread::get_id();
    status_ = result->GetStatus();
    state_ = result->GetStateNoAddRef();
    done_ = true;
    wake_.notify_all();
    return S_OK;
  }
  void Wait() {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return done_; });
  }
  std::thread::id thread_;
  HRESULT status_ = S_OK;
  IUnknown* state_ = nullptr;
  std::atomic<ULONG> refs_{1};

 private:
  std::mutex mutex_;
  std::condition_variable wake_;
  bool done_ = false;
};

TEST(AsyncResult, InvokeRunsOnTheWorkQueueThreadWithTheResult) {
  Callback callback;
  ComPtr<IMFAttributes> state;
  MFCreateAttributes(&state, 0);
  {
    ComPtr<IMFAsyncResult> result;
    ASSERT_EQ(MFCreateAsyncResult(nullptr, &callback, state.Get(), &result), S_OK);
    result->SetStatus(E_ABORT);
    ComPtr<IUnknown> object;
    EXPECT_EQ(result->GetObject(&object), E_POINTER);
    ASSERT_EQ(MFInvokeCallback(result.Get()), S_OK);
    callback.Wait();
  }
  EXPECT_NE(callback.thread_, std::this_thread::get_id());
  EXPECT_EQ(callback.status_, E_ABORT);
  EXPECT_EQ(callback.state_, static_cast<IUnknown*>(state.Get()));
  for (int i = 0; i < 2000 && callback.refs_.load() != 1; ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(callback.refs_.load(), 1u) << "the result lets go of the callback";
}

}  // namespace
}  // namespace tessel::platform_test
