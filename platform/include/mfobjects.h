// Media Foundation object interfaces: attributes, media types, buffers, samples,
// asynchronous results and callbacks, byte streams. Every object is reference counted;
// a method that hands out an interface pointer adds a reference the caller releases.
#pragma once

#include "propidl.h"
#include "unknwn.h"
#include "windows.h"

DEFINE_GUID(IID_IMFAttributes, 0x2cd2d921, 0xc447, 0x44a7, 0xa1, 0x3c, 0x4a, 0xda, 0xbf, 0xc2, 0x47, 0xe3);
DEFINE_GUID(IID_IMFMediaType, 0x44ae0fa8, 0xea31, 0x4109, 0x8d, 0x2e, 0x4c, 0xae, 0x49, 0x97, 0xc5, 0x55);
DEFINE_GUID(IID_IMFMediaBuffer, 0x045fa593, 0x8799, 0x42b8, 0xbc, 0x8d, 0x89, 0x68, 0xc6, 0x45, 0x35, 0x07);
DEFINE_GUID(IID_IMF2DBuffer, 0x7dc9d5f9, 0x9ed9, 0x44ec, 0x9b, 0xbf, 0x06, 0x00, 0xbb, 0x58, 0x9f, 0xbb);
DEFINE_GUID(IID_IMFSample, 0xc40a00f2, 0xb93a, 0x4d80, 0xae, 0x8c, 0x5a, 0x1c, 0x63, 0x4f, 0x58, 0xe4);
DEFINE_GUID(IID_IMFAsyncResult, 0xac6b7889, 0x0740, 0x4d51, 0x86, 0x19, 0x90, 0x59, 0x94, 0xa5, 0x5c, 0xc6);
DEFINE_GUID(IID_IMFAsyncCallback, 0xa27003cf, 0x2354, 0x4f2a, 0x8d, 0x6a, 0xab, 0x7c, 0xff, 0x15, 0x43, 0x7e);
DEFINE_GUID(IID_IMFByteStream, 0xad4c1b00, 0x4bf7, 0x422f, 0x91, 0x75, 0x75, 0x66, 0x93, 0xd9, 0x13, 0x0d);

enum MF_ATTRIBUTE_TYPE : VARTYPE {
  MF_ATTRIBUTE_UINT32 = VT_UI4,
  MF_ATTRIBUTE_UINT64 = VT_UI8,
  MF_ATTRIBUTE_DOUBLE = VT_R8,
  MF_ATTRIBUTE_GUID = VT_CLSID,
  MF_ATTRIBUTE_STRING = VT_LPWSTR,
  MF_ATTRIBUTE_BLOB = VT_VECTOR | VT_UI1,
  MF_ATTRIBUTE_IUNKNOWN = VT_UNKNOWN,
};

enum MF_ATTRIBUTES_MATCH_TYPE {
  MF_ATTRIBUTES_MATCH_OUR_ITEMS = 0,
  MF_ATTRIBUTES_MATCH_THEIR_ITEMS = 1,
  MF_ATTRIBUTES_MATCH_ALL_ITEMS = 2,
  MF_ATTRIBUTES_MATCH_INTERSECTION = 3,
  MF_ATTRIBUTES_MATCH_SMALLER = 4,
};

// A keyed store of typed values. Safe to use from several threads.
struct IMFAttributes : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetItem(REFGUID key, PROPVARIANT* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetItemType(REFGUID key, MF_ATTRIBUTE_TYPE* type) = 0;
  virtual HRESULT STDMETHODCALLTYPE CompareItem(REFGUID key, REFPROPVARIANT value, BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE Compare(IMFAttributes* theirs, MF_ATTRIBUTES_MATCH_TYPE matchType,
                                            BOOL* result) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetUINT32(REFGUID key, UINT32* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetUINT64(REFGUID key, UINT64* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetDouble(REFGUID key, double* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetGUID(REFGUID key, GUID* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStringLength(REFGUID key, UINT32* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetString(REFGUID key, LPWSTR value, UINT32 capacity, UINT32* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetAllocatedString(REFGUID key, LPWSTR* value, UINT32* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetBlobSize(REFGUID key, UINT32* size) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetBlob(REFGUID key, UINT8* buffer, UINT32 capacity, UINT32* size) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetAllocatedBlob(REFGUID key, UINT8** buffer, UINT32* size) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetUnknown(REFGUID key, REFIID riid, LPVOID* object) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetItem(REFGUID key, REFPROPVARIANT value) = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteItem(REFGUID key) = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteAllItems() = 0;
  virtual HRESULT STDMETHODCALLTYPE SetUINT32(REFGUID key, UINT32 value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetUINT64(REFGUID key, UINT64 value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetDouble(REFGUID key, double value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetGUID(REFGUID key, REFGUID value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetString(REFGUID key, LPCWSTR value) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetBlob(REFGUID key, const UINT8* buffer, UINT32 size) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetUnknown(REFGUID key, IUnknown* object) = 0;
  virtual HRESULT STDMETHODCALLTYPE LockStore() = 0;
  virtual HRESULT STDMETHODCALLTYPE UnlockStore() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCount(UINT32* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetItemByIndex(UINT32 index, GUID* key, PROPVARIANT* value) = 0;
  virtual HRESULT STDMETHODCALLTYPE CopyAllItems(IMFAttributes* destination) = 0;
};
DECLARE_INTERFACE_IID(IMFAttributes, IID_IMFAttributes);

inline constexpr DWORD MF_MEDIATYPE_EQUAL_MAJOR_TYPES = 0x1;
inline constexpr DWORD MF_MEDIATYPE_EQUAL_FORMAT_TYPES = 0x2;
inline constexpr DWORD MF_MEDIATYPE_EQUAL_FORMAT_DATA = 0x4;
inline constexpr DWORD MF_MEDIATYPE_EQUAL_FORMAT_USER_DATA = 0x8;

struct IMFMediaType : IMFAttributes {
  virtual HRESULT STDMETHODCALLTYPE GetMajorType(GUID* majorType) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsCompressedFormat(BOOL* compressed) = 0;
  // S_OK when equal, S_FALSE with the MF_MEDIATYPE_EQUAL_* flags of what matches.
  virtual HRESULT STDMETHODCALLTYPE IsEqual(IMFMediaType* other, DWORD* flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetRepresentation(GUID representation, LPVOID* data) = 0;
  virtual HRESULT STDMETHODCALLTYPE FreeRepresentation(GUID representation, LPVOID data) = 0;
};
DECLARE_INTERFACE_IID(IMFMediaType, IID_IMFMediaType);

// A block of memory. Lock gives its start until Unlock; locks may nest.
struct IMFMediaBuffer : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Lock(BYTE** buffer, DWORD* maxLength, DWORD* currentLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE Unlock() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentLength(DWORD* currentLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCurrentLength(DWORD currentLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetMaxLength(DWORD* maxLength) = 0;
};
DECLARE_INTERFACE_IID(IMFMediaBuffer, IID_IMFMediaBuffer);

// An image buffer by rows: scan line 0 is the top row, the pitch the signed distance
// to the row below it (negative for a bottom-up image).
struct IMF2DBuffer : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Lock2D(BYTE** scanline0, LONG* pitch) = 0;
  virtual HRESULT STDMETHODCALLTYPE Unlock2D() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetScanline0AndPitch(BYTE** scanline0, LONG* pitch) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsContiguousFormat(BOOL* contiguous) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetContiguousLength(DWORD* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE ContiguousCopyTo(BYTE* destination, DWORD destinationLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE ContiguousCopyFrom(const BYTE* source, DWORD sourceLength) = 0;
};
DECLARE_INTERFACE_IID(IMF2DBuffer, IID_IMF2DBuffer);

// A unit of media data: buffers with a time and a duration in 100 ns ticks.
struct IMFSample : IMFAttributes {
  virtual HRESULT STDMETHODCALLTYPE GetSampleFlags(DWORD* flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSampleFlags(DWORD flags) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSampleTime(LONGLONG* time) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSampleTime(LONGLONG time) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetSampleDuration(LONGLONG* duration) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSampleDuration(LONGLONG duration) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetBufferCount(DWORD* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetBufferByIndex(DWORD index, IMFMediaBuffer** buffer) = 0;
  // One buffer comes back as it is; several are copied into a new one that replaces them.
  virtual HRESULT STDMETHODCALLTYPE ConvertToContiguousBuffer(IMFMediaBuffer** buffer) = 0;
  virtual HRESULT STDMETHODCALLTYPE AddBuffer(IMFMediaBuffer* buffer) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveBufferByIndex(DWORD index) = 0;
  virtual HRESULT STDMETHODCALLTYPE RemoveAllBuffers() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTotalLength(DWORD* totalLength) = 0;
  virtual HRESULT STDMETHODCALLTYPE CopyToBuffer(IMFMediaBuffer* buffer) = 0;
};
DECLARE_INTERFACE_IID(IMFSample, IID_IMFSample);

// The outcome of an asynchronous operation: an object, the caller's state and a status.
struct IMFAsyncResult : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetState(IUnknown** state) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStatus() = 0;
  virtual HRESULT STDMETHODCALLTYPE SetStatus(HRESULT status) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetObject(IUnknown** object) = 0;
  virtual IUnknown* STDMETHODCALLTYPE GetStateNoAddRef() = 0;
};
DECLARE_INTERFACE_IID(IMFAsyncResult, IID_IMFAsyncResult);

// Implemented by callers of asynchronous methods. Invoke is called on the platform's
// work-queue thread.
struct IMFAsyncCallback : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetParameters(DWORD* flags, DWORD* queue) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(IMFAsyncResult* result) = 0;
};
DECLARE_INTERFACE_IID(IMFAsyncCallback, IID_IMFAsyncCallback);

// How the pictures of a video type are made of fields (MF_MT_INTERLACE_MODE).
enum MFVideoInterlaceMode {
  MFVideoInterlace_Unknown = 0,
  MFVideoInterlace_Progressive = 2,
  MFVideoInterlace_FieldInterleavedUpperFirst = 3,
  MFVideoInterlace_FieldInterleavedLowerFirst = 4,
  MFVideoInterlace_FieldSingleUpper = 5,
  MFVideoInterlace_FieldSingleLower = 6,
  MFVideoInterlace_MixedInterlaceOrProgressive = 7,
};

inline constexpr DWORD MFBYTESTREAM_IS_READABLE = 0x00000001;
inline constexpr DWORD MFBYTESTREAM_IS_WRITABLE = 0x00000002;
inline constexpr DWORD MFBYTESTREAM_IS_SEEKABLE = 0x00000004;
inline constexpr DWORD MFBYTESTREAM_IS_REMOTE = 0x00000008;
inline constexpr DWORD MFBYTESTREAM_IS_DIRECTORY = 0x00000080;
inline constexpr DWORD MFBYTESTREAM_HAS_SLOW_SEEK = 0x00000100;
inline constexpr DWORD MFBYTESTREAM_IS_PARTIALLY_DOWNLOADED = 0x00000200;
inline constexpr DWORD MFBYTESTREAM_SHARE_WRITE = 0x00000400;
inline constexpr DWORD MFBYTESTREAM_DOES_NOT_USE_NETWORK = 0x00000800;
inline constexpr DWORD MFBYTESTREAM_SEEK_FLAG_CANCEL_PENDING_IO = 0x00000001;

enum MFBYTESTREAM_SEEK_ORIGIN { msoBegin = 0, msoCurrent = 1 };

// A stream of bytes with a position. At most one BeginRead is open at a time; its
// callback may come on any thread, and EndRead gives the count read.
struct IMFByteStream : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetCapabilities(DWORD* capabilities) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetLength(QWORD* length) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetLength(QWORD length) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentPosition(QWORD* position) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCurrentPosition(QWORD position) = 0;
  virtual HRESULT STDMETHODCALLTYPE IsEndOfStream(BOOL* endOfStream) = 0;
  virtual HRESULT STDMETHODCALLTYPE Read(BYTE* buffer, ULONG count, ULONG* read) = 0;
  virtual HRESULT STDMETHODCALLTYPE BeginRead(BYTE* buffer, ULONG count, IMFAsyncCallback* callback,
                                              IUnknown* state) = 0;
  virtual HRESULT STDMETHODCALLTYPE EndRead(IMFAsyncResult* result, ULONG* read) = 0;
  virtual HRESULT STDMETHODCALLTYPE Write(const BYTE* buffer, ULONG count, ULONG* written) = 0;
  virtual HRESULT STDMETHODCALLTYPE BeginWrite(const BYTE* buffer, ULONG count, IMFAsyncCallback* callback,
                                               IUnknown* state) = 0;
  virtual HRESULT STDMETHODCALLTYPE EndWrite(IMFAsyncResult* result, ULONG* written) = 0;
  virtual HRESULT STDMETHODCALLTYPE Seek(MFBYTESTREAM_SEEK_ORIGIN origin, LONGLONG offset, DWORD flags,
                                         QWORD* position) = 0;
  virtual HRESULT STDMETHODCALLTYPE Flush() = 0;
  virtual HRESULT STDMETHODCALLTYPE Close() = 0;
};
DECLARE_INTERFACE_IID(IMFByteStream, IID_IMFByteStream);
