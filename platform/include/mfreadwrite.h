// Media Foundation source reader, sink writer and the attributes of readers and writers
// (MFReadWrite.dll).
#pragma once

#include "mfidl.h"
#include "mfobjects.h"

DEFINE_GUID(IID_IMFSourceReader, 0x70ae66f2, 0xc809, 0x4e4f, 0x89, 0x15, 0xbd, 0xcb, 0x40, 0x6b, 0x79, 0x93);
DEFINE_GUID(IID_IMFSinkWriter, 0x3137f1cd, 0xfe5e, 0x4805, 0xa5, 0xd8, 0xfb, 0x47, 0x74, 0x48, 0xcb, 0x3d);

// UINT32 switches given at creation. Video processing converts YUV to RGB32; advanced
// video processing converts to every uncompressed output and scales.
DEFINE_GUID(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, 0xfb394f3d, 0xccf1, 0x42ee, 0xbb, 0xb3, 0xf9, 0xb8, 0x45, 0xd5, 0x68, 0x1d);
DEFINE_GUID(MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING, 0x0f81da2c, 0xb537, 0x4672, 0xa8, 0xb2, 0xa6, 0x81, 0xb1, 0x73, 0x07, 0xa3);
DEFINE_GUID(MF_SOURCE_READER_ASYNC_CALLBACK, 0x1e3dbeac, 0xbb43, 0x4c35, 0xb5, 0x07, 0xcd, 0x64, 0x44, 0x64, 0xc9, 0x65);
DEFINE_GUID(MF_SOURCE_READER_D3D_MANAGER, 0xec822da2, 0xe1e9, 0x4b29, 0xa0, 0xd8, 0x56, 0x3c, 0x71, 0x9f, 0x52, 0x69);
DEFINE_GUID(MF_SOURCE_READER_DISABLE_DXVA, 0xaa456cfd, 0x3943, 0x4a1e, 0xa7, 0x7d, 0x18, 0x38, 0xc0, 0xea, 0x2e, 0x35);
DEFINE_GUID(MF_READWRITE_DISABLE_CONVERTERS, 0x98d5b065, 0x1374, 0x4847, 0x8d, 0x5d, 0x31, 0x52, 0x0f, 0xee, 0x71, 0x56);
DEFINE_GUID(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 0xa634a91c, 0x822b, 0x41b9, 0xa4, 0x94, 0x4d, 0xe4, 0x64, 0x36, 0x12, 0xb0);
DEFINE_GUID(MF_SINK_WRITER_DISABLE_THROTTLING, 0x08b845d8, 0x2b74, 0x4afe, 0x9d, 0x53, 0xbe, 0x16, 0xd2, 0xd5, 0xae, 0x4f);
// IUnknown given at creation: asks for the asynchronous sink writer, which this platform
// doesn't offer (E_NOTIMPL, as for readers).
DEFINE_GUID(MF_SINK_WRITER_ASYNC_CALLBACK, 0x48cb183e, 0x7b0b, 0x46f4, 0x82, 0x2e, 0x5e, 0x1d, 0x2d, 0xda, 0x43, 0x54);
DEFINE_GUID(CLSID_MFSinkWriter, 0xa3bbfb17, 0x8273, 0x4e52, 0x9e, 0x0e, 0x97, 0x39, 0xdc, 0x88, 0x79, 0x90);

// Stream indices with a meaning of their own.
inline constexpr DWORD MF_SOURCE_READER_INVALID_STREAM_INDEX = 0xFFFFFFFF;
inline constexpr DWORD MF_SOURCE_READER_ALL_STREAMS = 0xFFFFFFFE;
inline constexpr DWORD MF_SOURCE_READER_ANY_STREAM = 0xFFFFFFFE;
inline constexpr DWORD MF_SOURCE_READER_FIRST_AUDIO_STREAM = 0xFFFFFFFD;
inline constexpr DWORD MF_SOURCE_READER_FIRST_VIDEO_STREAM = 0xFFFFFFFC;
inline constexpr DWORD MF_SOURCE_READER_MEDIASOURCE = 0xFFFFFFFF;
inline constexpr DWORD MF_SOURCE_READER_CURRENT_TYPE_INDEX = 0xFFFFFFFF;

// Stream flags of ReadSample.
inline constexpr DWORD MF_SOURCE_READERF_ERROR = 0x00000001;
inline constexpr DWORD MF_SOURCE_READERF_ENDOFSTREAM = 0x00000002;
inline constexpr DWORD MF_SOURCE_READERF_NEWSTREAM = 0x00000004;
inline constexpr DWORD MF_SOURCE_READERF_NATIVEMEDIATYPECHANGED = 0x00000010;
inline constexpr DWORD MF_SOURCE_READERF_CURRENTMEDIATYPECHANGED = 0x00000020;
inline constexpr DWORD MF_SOURCE_READERF_STREAMTICK = 0x00000100;
inline constexpr DWORD MF_SOURCE_READERF_ALLEFFECTSREMOVED = 0x00000200;

// Control flags of ReadSample.
inline constexpr DWORD MF_SOURCE_READER_CONTROLF_DRAIN = 0x00000001;

// Reads a media file. Created in synchronous mode, it is used by one thread at a time:
// ReadSample blocks the calling thread until a sample, the end or an error is there.
struct IMFSourceReader : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetStreamSelection(DWORD streamIndex, BOOL* selected) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetStreamSelection(DWORD streamIndex, BOOL selected) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetNativeMediaType(DWORD streamIndex, DWORD typeIndex,
                                                       IMFMediaType** mediaType) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetCurrentMediaType(DWORD streamIndex, IMFMediaType** mediaType) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCurrentMediaType(DWORD streamIndex, DWORD* reserved,
                                                        IMFMediaType* mediaType) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetCurrentPosition(REFGUID timeFormat, REFPROPVARIANT position) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadSample(DWORD streamIndex, DWORD controlFlags, DWORD* actualStreamIndex,
                                               DWORD* streamFlags, LONGLONG* timestamp, IMFSample** sample) = 0;
  virtual HRESULT STDMETHODCALLTYPE Flush(DWORD streamIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD streamIndex, REFGUID service, REFIID riid,
                                                        LPVOID* object) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetPresentationAttribute(DWORD streamIndex, REFGUID attribute,
                                                             PROPVARIANT* value) = 0;
};
DECLARE_INTERFACE_IID(IMFSourceReader, IID_IMFSourceReader);

// Stream indices of the sink writer with a meaning of their own.
inline constexpr DWORD MF_SINK_WRITER_INVALID_STREAM_INDEX = 0xFFFFFFFF;
inline constexpr DWORD MF_SINK_WRITER_ALL_STREAMS = 0xFFFFFFFE;
inline constexpr DWORD MF_SINK_WRITER_MEDIASINK = 0xFFFFFFFF;

// What GetStatistics tells of one stream or of all; cb must be the size of the structure.
struct MF_SINK_WRITER_STATISTICS {
  DWORD cb;
  LONGLONG llLastTimestampReceived;
  LONGLONG llLastTimestampEncoded;
  LONGLONG llLastTimestampProcessed;
  LONGLONG llLastStreamTickReceived;
  LONGLONG llLastSinkSampleRequest;
  QWORD qwNumSamplesReceived;
  QWORD qwNumSamplesEncoded;
  QWORD qwNumSamplesProcessed;
  QWORD qwNumStreamTicksReceived;
  DWORD dwByteCountQueued;
  QWORD qwByteCountProcessed;
  DWORD dwNumOutstandingSinkSampleRequests;
  DWORD dwAverageSampleRateReceived;
  DWORD dwAverageSampleRateEncoded;
  DWORD dwAverageSampleRateProcessed;
};

// Encodes and writes a media file. Synchronous: every method runs on the calling thread
// and returns when the sample is encoded and handed to the file. Order of use: AddStream
// and SetInputMediaType per stream, BeginWriting, WriteSample any number of times,
// Finalize. A writer released without Finalize leaves an unfinished file.
struct IMFSinkWriter : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE AddStream(IMFMediaType* targetMediaType, DWORD* streamIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetInputMediaType(DWORD streamIndex, IMFMediaType* inputMediaType,
                                                      IMFAttributes* encodingParameters) = 0;
  virtual HRESULT STDMETHODCALLTYPE BeginWriting() = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteSample(DWORD streamIndex, IMFSample* sample) = 0;
  virtual HRESULT STDMETHODCALLTYPE SendStreamTick(DWORD streamIndex, LONGLONG timestamp) = 0;
  virtual HRESULT STDMETHODCALLTYPE PlaceMarker(DWORD streamIndex, LPVOID context) = 0;
  virtual HRESULT STDMETHODCALLTYPE NotifyEndOfSegment(DWORD streamIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE Flush(DWORD streamIndex) = 0;
  virtual HRESULT STDMETHODCALLTYPE Finalize() = 0;
  virtual HRESULT STDMETHODCALLTYPE GetServiceForStream(DWORD streamIndex, REFGUID service, REFIID riid,
                                                        LPVOID* object) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStatistics(DWORD streamIndex, MF_SINK_WRITER_STATISTICS* stats) = 0;
};
DECLARE_INTERFACE_IID(IMFSinkWriter, IID_IMFSinkWriter);

extern "C" {
// The reader takes its own reference on the byte stream. Fails with
// MF_E_PLATFORM_NOT_INITIALIZED while MFStartup has not been called.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateSourceReaderFromByteStream(IMFByteStream* byteStream,
                                                                      IMFAttributes* attributes,
                                                                      IMFSourceReader** reader);
// url is a plain file path.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateSourceReaderFromURL(LPCWSTR url, IMFAttributes* attributes,
                                                               IMFSourceReader** reader);
// Creates the file at url (a plain file path) and a writer for it. The container is
// MF_TRANSCODE_CONTAINERTYPE of the attributes (MPEG-4, 3GP or ASF) or, without it, the
// file's suffix: .mp4 and .m4v MPEG-4, .3gp 3GP, .asf, .wmv and .wma ASF. Writing into a
// byte stream isn't offered (E_NOTIMPL). Fails with MF_E_PLATFORM_NOT_INITIALIZED while
// MFStartup has not been called.
TESSEL_PLATFORM_API HRESULT WINAPI MFCreateSinkWriterFromURL(LPCWSTR url, IMFByteStream* byteStream,
                                                             IMFAttributes* attributes, IMFSinkWriter** writer);
}
