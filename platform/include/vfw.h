// Video for Windows (AVIFIL32.dll, MSVFW32.dll): writing AVI files through streams,
// compressing video streams, and the compressor chooser. Structures are laid out as on
// 64-bit Windows; the sizes are checked below.
//
// Files are write-only here: AVIFileOpenW creates an AVI file, streams are created on
// it, and the file is finished (encoders flushed, index written) when the last handle of
// the file and of its streams is released, in whatever order.
#pragma once

#include "guiddef.h"
#include "mmsystem.h"
#include "unknwn.h"
#include "windows.h"
#include "wingdi.h"

using LPCLSID = CLSID*;

// Stream types and compressor types.
inline constexpr FOURCC streamtypeVIDEO = mmioFOURCC('v', 'i', 'd', 's');
inline constexpr FOURCC streamtypeAUDIO = mmioFOURCC('a', 'u', 'd', 's');
inline constexpr FOURCC streamtypeMIDI = mmioFOURCC('m', 'i', 'd', 's');
inline constexpr FOURCC streamtypeTEXT = mmioFOURCC('t', 'x', 't', 's');
inline constexpr FOURCC ICTYPE_VIDEO = mmioFOURCC('v', 'i', 'd', 'c');
inline constexpr FOURCC ICTYPE_AUDIO = mmioFOURCC('a', 'u', 'd', 'c');
// The uncompressed "compressor": frames are stored as the DIBs they are.
inline constexpr FOURCC comptypeDIB = mmioFOURCC('D', 'I', 'B', ' ');

struct AVISTREAMINFOW {
  DWORD fccType;
  DWORD fccHandler;
  DWORD dwFlags;
  DWORD dwCaps;
  WORD wPriority;
  WORD wLanguage;
  DWORD dwScale;  // the stream's time unit is dwScale / dwRate seconds: one frame, or one
  DWORD dwRate;   // block of sound (nBlockAlign bytes)
  DWORD dwStart;
  DWORD dwLength;
  DWORD dwInitialFrames;
  DWORD dwSuggestedBufferSize;
  DWORD dwQuality;
  DWORD dwSampleSize;
  RECT rcFrame;
  DWORD dwEditCount;
  DWORD dwFormatChangeCount;
  WCHAR szName[64];
};
using LPAVISTREAMINFOW = AVISTREAMINFOW*;
static_assert(sizeof(AVISTREAMINFOW) == 204);

inline constexpr DWORD AVISTREAMINFO_DISABLED = 0x00000001;
inline constexpr DWORD AVISTREAMINFO_FORMATCHANGES = 0x00010000;

struct AVIFILEINFOW {
  DWORD dwMaxBytesPerSec;
  DWORD dwFlags;
  DWORD dwCaps;
  DWORD dwStreams;
  DWORD dwSuggestedBufferSize;
  DWORD dwWidth;
  DWORD dwHeight;
  DWORD dwScale;
  DWORD dwRate;
  DWORD dwLength;
  DWORD dwEditCount;
  WCHAR szFileType[64];
};
using LPAVIFILEINFOW = AVIFILEINFOW*;
static_assert(sizeof(AVIFILEINFOW) == 172);

// Flags of AVIStreamWrite and of index entries.
inline constexpr DWORD AVIIF_LIST = 0x00000001;
inline constexpr DWORD AVIIF_KEYFRAME = 0x00000010;
inline constexpr DWORD AVIIF_NOTIME = 0x00000100;

// What a compressing stream is opened with. dwQuality runs from 0 to 10000
// (ICQUALITY_DEFAULT for the compressor's own choice); dwKeyFrameEvery and
// dwBytesPerSecond count only when their flag is in dwFlags; lpParms/cbParms carry the
// compressor's own state, as ICCompressorChoose gave it.
struct AVICOMPRESSOPTIONS {
  DWORD fccType;
  DWORD fccHandler;
  DWORD dwKeyFrameEvery;
  DWORD dwQuality;
  DWORD dwBytesPerSecond;
  DWORD dwFlags;
  LPVOID lpFormat;
  DWORD cbFormat;
  LPVOID lpParms;
  DWORD cbParms;
  DWORD dwInterleaveEvery;
};
using LPAVICOMPRESSOPTIONS = AVICOMPRESSOPTIONS*;
static_assert(sizeof(AVICOMPRESSOPTIONS) == 56);

inline constexpr DWORD AVICOMPRESSF_INTERLEAVE = 0x00000001;
inline constexpr DWORD AVICOMPRESSF_DATARATE = 0x00000002;
inline constexpr DWORD AVICOMPRESSF_KEYFRAMES = 0x00000004;
inline constexpr DWORD AVICOMPRESSF_VALID = 0x00000008;

inline constexpr DWORD ICQUALITY_LOW = 0;
inline constexpr DWORD ICQUALITY_HIGH = 10000;
inline constexpr DWORD ICQUALITY_DEFAULT = (DWORD)-1;

// What a compressor supports (the flags of its entry in the chooser's list).
inline constexpr DWORD VIDCF_QUALITY = 0x0001;   // a quality setting
inline constexpr DWORD VIDCF_CRUNCH = 0x0002;    // compressing to a data rate
inline constexpr DWORD VIDCF_TEMPORAL = 0x0004;  // frames between key frames

// An open compressor, as ICCompressorChoose leaves it in COMPVARS.
struct HIC__;
using HIC = HIC__*;

// The chooser's record of a choice: compressor, quality (lQ, 0 to 10000), key-frame
// distance (lKey) and data rate (lDataRate, in kilobytes of 1000 bytes per second), and
// the compressor's state in lpState (a GlobalAlloc handle, cbState bytes).
struct COMPVARS {
  LONG cbSize;
  DWORD dwFlags;
  HIC hic;
  DWORD fccType;
  DWORD fccHandler;
  LPBITMAPINFO lpbiIn;
  LPBITMAPINFO lpbiOut;
  LPVOID lpBitsOut;
  LPVOID lpBitsPrev;
  LONG lFrame;
  LONG lKey;
  LONG lDataRate;
  LONG lQ;
  LONG lKeyCount;
  LPVOID lpState;
  LONG cbState;
};
using PCOMPVARS = COMPVARS*;
static_assert(sizeof(COMPVARS) == 96);

inline constexpr DWORD ICMF_COMPVARS_VALID = 0x00000001;
inline constexpr UINT ICMF_CHOOSE_KEYFRAME = 0x0001;
inline constexpr UINT ICMF_CHOOSE_DATARATE = 0x0002;
inline constexpr UINT ICMF_CHOOSE_PREVIEW = 0x0004;
inline constexpr UINT ICMF_CHOOSE_ALLCOMPRESSORS = 0x0008;

// Statuses of the AVI functions: interface errors 0x4000 + n.
constexpr HRESULT MAKE_AVIERR(int error) { return (HRESULT)(0x80040000u | (0x4000u + (unsigned)error)); }
inline constexpr HRESULT AVIERR_OK = 0;
inline constexpr HRESULT AVIERR_UNSUPPORTED = MAKE_AVIERR(101);
inline constexpr HRESULT AVIERR_BADFORMAT = MAKE_AVIERR(102);
inline constexpr HRESULT AVIERR_MEMORY = MAKE_AVIERR(103);
inline constexpr HRESULT AVIERR_INTERNAL = MAKE_AVIERR(104);
inline constexpr HRESULT AVIERR_BADFLAGS = MAKE_AVIERR(105);
inline constexpr HRESULT AVIERR_BADPARAM = MAKE_AVIERR(106);
inline constexpr HRESULT AVIERR_BADSIZE = MAKE_AVIERR(107);
inline constexpr HRESULT AVIERR_BADHANDLE = MAKE_AVIERR(108);
inline constexpr HRESULT AVIERR_FILEREAD = MAKE_AVIERR(109);
inline constexpr HRESULT AVIERR_FILEWRITE = MAKE_AVIERR(110);
inline constexpr HRESULT AVIERR_FILEOPEN = MAKE_AVIERR(111);
inline constexpr HRESULT AVIERR_COMPRESSOR = MAKE_AVIERR(112);
inline constexpr HRESULT AVIERR_NOCOMPRESSOR = MAKE_AVIERR(113);
inline constexpr HRESULT AVIERR_READONLY = MAKE_AVIERR(114);
inline constexpr HRESULT AVIERR_NODATA = MAKE_AVIERR(115);
inline constexpr HRESULT AVIERR_BUFFERTOOSMALL = MAKE_AVIERR(116);
inline constexpr HRESULT AVIERR_CANTCOMPRESS = MAKE_AVIERR(117);
inline constexpr HRESULT AVIERR_USERABORT = MAKE_AVIERR(198);
inline constexpr HRESULT AVIERR_ERROR = MAKE_AVIERR(199);

DEFINE_GUID(IID_IAVIFile, 0x00020020, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46);
DEFINE_GUID(IID_IAVIStream, 0x00020021, 0x0000, 0x0000, 0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46);

// One stream of an AVI file. Positions and counts are in the stream's time units:
// frames for video, blocks (nBlockAlign bytes) for sound.
struct IAVIStream : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Create(LPARAM lParam1, LPARAM lParam2) = 0;
  virtual HRESULT STDMETHODCALLTYPE Info(AVISTREAMINFOW* psi, LONG lSize) = 0;
  virtual LONG STDMETHODCALLTYPE FindSample(LONG lPos, LONG lFlags) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadFormat(LONG lPos, LPVOID lpFormat, LONG* lpcbFormat) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetFormat(LONG lPos, LPVOID lpFormat, LONG cbFormat) = 0;
  virtual HRESULT STDMETHODCALLTYPE Read(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, LONG* plBytes,
                                         LONG* plSamples) = 0;
  virtual HRESULT STDMETHODCALLTYPE Write(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, DWORD dwFlags,
                                          LONG* plSampWritten, LONG* plBytesWritten) = 0;
  virtual HRESULT STDMETHODCALLTYPE Delete(LONG lStart, LONG lSamples) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadData(DWORD fcc, LPVOID lp, LONG* lpcb) = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteData(DWORD fcc, LPVOID lp, LONG cb) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetInfo(AVISTREAMINFOW* lpInfo, LONG cbInfo) = 0;
};
DECLARE_INTERFACE_IID(IAVIStream, IID_IAVIStream);
using PAVISTREAM = IAVIStream*;

struct IAVIFile : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE Info(AVIFILEINFOW* pfi, LONG lSize) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetStream(PAVISTREAM* ppStream, DWORD fccType, LONG lParam) = 0;
  virtual HRESULT STDMETHODCALLTYPE CreateStream(PAVISTREAM* ppStream, AVISTREAMINFOW* psi) = 0;
  virtual HRESULT STDMETHODCALLTYPE WriteData(DWORD ckid, LPVOID lpData, LONG cbData) = 0;
  virtual HRESULT STDMETHODCALLTYPE ReadData(DWORD ckid, LPVOID lpData, LONG* lpcbData) = 0;
  virtual HRESULT STDMETHODCALLTYPE EndRecord() = 0;
  virtual HRESULT STDMETHODCALLTYPE DeleteStream(DWORD fccType, LONG lParam) = 0;
};
DECLARE_INTERFACE_IID(IAVIFile, IID_IAVIFile);
using PAVIFILE = IAVIFile*;

extern "C" {
// The library's start-up count; files can only be opened while it is in force
// (CO_E_NOTINITIALIZED otherwise).
TESSEL_PLATFORM_API void WINAPI AVIFileInit();
TESSEL_PLATFORM_API void WINAPI AVIFileExit();

// Creates the AVI file now, replacing one that is there: uMode must hold OF_CREATE and
// OF_WRITE (or OF_READWRITE), and lpHandler must be null. A file that cannot be created
// (a missing folder, no permission) gives AVIERR_FILEOPEN.
TESSEL_PLATFORM_API HRESULT WINAPI AVIFileOpenW(PAVIFILE* ppfile, LPCWSTR szFile, UINT uMode, LPCLSID lpHandler);
TESSEL_PLATFORM_API ULONG WINAPI AVIFileRelease(PAVIFILE pfile);
// A video ("vids", dwRate and dwScale not 0) or sound ("auds") stream, in the file in
// the order of creation. Streams can be created, and given their format, until the
// first frame reaches the file; a compressor that holds frames back delays that.
TESSEL_PLATFORM_API HRESULT WINAPI AVIFileCreateStreamW(PAVIFILE pfile, PAVISTREAM* ppavi, AVISTREAMINFOW* psi);

// A stream that compresses the frames written to it with the compressor of
// lpOptions->fccHandler and writes them to psSource. It holds psSource until it is
// released itself. An unknown compressor gives AVIERR_NOCOMPRESSOR.
TESSEL_PLATFORM_API HRESULT WINAPI AVIMakeCompressedStream(PAVISTREAM* ppsCompressed, PAVISTREAM psSource,
                                                           AVICOMPRESSOPTIONS* lpOptions, CLSID* pclsidHandler);
// Video: a BITMAPINFOHEADER; a compressing stream takes 24-bit BI_RGB bitmaps (either row
// order) and refuses a frame size its compressor can't take. Sound: a PCM WAVEFORMATEX.
TESSEL_PLATFORM_API HRESULT WINAPI AVIStreamSetFormat(PAVISTREAM pavi, LONG lPos, LPVOID lpFormat, LONG cbFormat);
// Video: one frame at position lStart (skipped positions repeat the frame before).
// Sound: any number of blocks, appended to what was written; the file interleaves them
// with the frames.
TESSEL_PLATFORM_API HRESULT WINAPI AVIStreamWrite(PAVISTREAM pavi, LONG lStart, LONG lSamples, LPVOID lpBuffer,
                                                  LONG cbBuffer, DWORD dwFlags, LONG* plSampWritten,
                                                  LONG* plBytesWritten);
TESSEL_PLATFORM_API ULONG WINAPI AVIStreamRelease(PAVISTREAM pavi);

// Shows the platform's compressor chooser (installed through tessel_platform_control.h)
// with the choice in pc as pre-selection when pc->dwFlags holds ICMF_COMPVARS_VALID.
// TRUE when a compressor was chosen: pc then holds it, with hic open and lpState a
// GlobalAlloc handle of its state (or null). FALSE when the user cancelled or no
// chooser is installed; pc is then as it was.
TESSEL_PLATFORM_API BOOL WINAPI ICCompressorChoose(HWND hwnd, UINT uiFlags, LPVOID pvIn, LPVOID lpData,
                                                   PCOMPVARS pc, LPSTR lpszTitle);
// Closes pc->hic and frees pc->lpState; both become null.
TESSEL_PLATFORM_API void WINAPI ICCompressorFree(PCOMPVARS pc);
}
