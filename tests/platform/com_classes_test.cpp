// The COM class base and the owning pointer: which interfaces a class answers, its
// reference count and its end, and the pointer's ways of taking and giving references.
#include <gtest/gtest.h>

#include "mfobjects.h"
#include "wrl/implements.h"

namespace {

using namespace Microsoft::WRL;

int g_destroyed = 0;

// A sample-like class: one chained interface (IMFSample with its base IMFAttributes)
// and a second, separate one (IMFMediaBuffer). Only the methods the test calls work.
class Probe final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, ChainInterfaces<IMFSample, IMFAttributes>,
                                        IMFMediaBuffer> {
 public:
  ~Probe() override { ++g_destroyed; }

#define PROBE_UNUSED(...) \
  override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetItem(REFGUID, PROPVARIANT*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetItemType(REFGUID, MF_ATTRIBUTE_TYPE*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE CompareItem(REFGUID, REFPROPVARIANT, BOOL*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE Compare(IMFAttributes*, MF_ATTRIBUTES_MATCH_TYPE, BOOL*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetUINT32(REFGUID, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetUINT64(REFGUID, UINT64*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetDouble(REFGUID, double*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetGUID(REFGUID, GUID*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetStringLength(REFGUID, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetString(REFGUID, LPWSTR, UINT32, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetAllocatedString(REFGUID, LPWSTR*, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetBlobSize(REFGUID, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetBlob(REFGUID, UINT8*, UINT32, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetAllocatedBlob(REFGUID, UINT8**, UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetUnknown(REFGUID, REFIID, LPVOID*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetItem(REFGUID, REFPROPVARIANT) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE DeleteItem(REFGUID) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE DeleteAllItems() PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetUINT32(REFGUID, UINT32) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetUINT64(REFGUID, UINT64) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetDouble(REFGUID, double) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetGUID(REFGUID, REFGUID) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetString(REFGUID, LPCWSTR) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetBlob(REFGUID, const UINT8*, UINT32) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetUnknown(REFGUID, IUnknown*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE LockStore() PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE UnlockStore() PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetCount(UINT32*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetItemByIndex(UINT32, GUID*, PROPVARIANT*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE CopyAllItems(IMFAttributes*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetSampleFlags(DWORD*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetSampleFlags(DWORD) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetSampleTime(LONGLONG*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetSampleTime(LONGLONG) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetSampleDuration(LONGLONG*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetSampleDuration(LONGLONG) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetBufferCount(DWORD*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetBufferByIndex(DWORD, IMFMediaBuffer**) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE ConvertToContiguousBuffer(IMFMediaBuffer**) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE AddBuffer(IMFMediaBuffer*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE RemoveBufferByIndex(DWORD) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE RemoveAllBuffers() PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetTotalLength(DWORD*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE CopyToBuffer(IMFMediaBuffer*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE Lock(BYTE**, DWORD*, DWORD*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE Unlock() PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetCurrentLength(DWORD*) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE SetCurrentLength(DWORD) PROBE_UNUSED()
  HRESULT STDMETHODCALLTYPE GetMaxLength(DWORD* length) override {
    *length = 77;
    return S_OK;
  }
#undef PROBE_UNUSED
};

TEST(ComClasses, AnswersListedAndChainedInterfacesWithOneIdentity) {
  g_destroyed = 0;
  {
    ComPtr<Probe> probe = Make<Probe>();
    ASSERT_TRUE(probe);
    ComPtr<IUnknown> viaSample;
    ComPtr<IMFAttributes> attributes;
    ComPtr<IMFMediaBuffer> buffer;
    ComPtr<IMF2DBuffer> image;
    ASSERT_EQ(probe->QueryInterface(IID_PPV_ARGS(&viaSample)), S_OK);
    ASSERT_EQ(probe.As(&attributes), S_OK) << "a base named in the chain is answered";
    ASSERT_EQ(probe.As(&buffer), S_OK);
    EXPECT_EQ(probe.As(&image), E_NOINTERFACE);
    EXPECT_FALSE(image);
    EXPECT_EQ(static_cast<IMFAttributes*>(static_cast<IMFSample*>(probe.Get())), attributes.Get());
    DWORD length = 0;
    EXPECT_EQ(buffer->GetMaxLength(&length), S_OK) << "the buffer interface reaches its own vtable";
    EXPECT_EQ(length, 77u);

    ComPtr<IUnknown> viaBuffer;
    ASSERT_EQ(buffer.As(&viaBuffer), S_OK);
    EXPECT_EQ(viaBuffer.Get(), viaSample.Get()) << "IUnknown is the same from every interface";
    EXPECT_EQ(probe->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(g_destroyed, 0);
  }
  EXPECT_EQ(g_destroyed, 1) << "the last release deletes the object once";
}

TEST(ComClasses, CountsStartAtOneAndEndAtZero) {
  g_destroyed = 0;
  auto* probe = new Probe();
  EXPECT_EQ(probe->AddRef(), 2u);
  EXPECT_EQ(static_cast<IMFMediaBuffer*>(probe)->Release(), 1u) << "every interface shares the one count";
  EXPECT_EQ(probe->Release(), 0u);
  EXPECT_EQ(g_destroyed, 1);
}

TEST(ComPtr, TakesAndGivesReferences) {
  g_destroyed = 0;
  auto* raw = new Probe();  // count 1, the test's own
  {
    ComPtr<IMFSample> held(raw);  // adds one: 2
    ComPtr<IMFSample> copy = held;  // 3
    ComPtr<IMFSample> moved = std::move(copy);
    EXPECT_FALSE(copy);
    IMFSample* out = nullptr;
    ASSERT_EQ(moved.CopyTo(&out), S_OK);  // 4
    EXPECT_EQ(out, raw);
    EXPECT_EQ(out->Release(), 3u);
    EXPECT_EQ(held.Detach(), raw);  // the detached reference is the caller's: still 3
    EXPECT_FALSE(held);
    held.Attach(raw);  // taken over without a new reference
    IMFSample** slot = &held;  // releases what it held: 2
    EXPECT_EQ(*slot, nullptr);
    EXPECT_EQ(moved.Reset(), 1u);
    EXPECT_EQ(g_destroyed, 0);
  }
  EXPECT_EQ(raw->Release(), 0u);
  EXPECT_EQ(g_destroyed, 1);
  ComPtr<IMFSample> empty;
  ComPtr<IMFAttributes> none;
  EXPECT_EQ(empty.As(&none), E_POINTER);
}

}  // namespace
