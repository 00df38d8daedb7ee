// The one door for tests and tools to steer the platform stand-in: the Windows version
// it reports, its start-up counters, failure injection, the H.264 encoder's speed, the
// codec library's lines and the compressor chooser. Nothing else in the platform is
// test-only.
#pragma once

#include "vfw.h"
#include "windows.h"

struct TesselPlatformCounters {
  int64_t mfStartupCalls;   // successful MFStartup calls
  int64_t mfShutdownCalls;  // MFShutdown calls
  int64_t aviInitCalls;     // AVIFileInit calls
  int64_t aviExitCalls;     // AVIFileExit calls
  int64_t liveSourceReaders;  // source readers created and not yet destroyed
  int64_t liveSinkWriters;    // sink writers created and not yet destroyed
};

extern "C" {
// The version that VerifyVersionInfoW compares against; 10.0 service pack 0 by default.
TESSEL_PLATFORM_API void TesselPlatformSetWindowsVersion(DWORD major, DWORD minor, WORD servicePack);
TESSEL_PLATFORM_API TesselPlatformCounters TesselPlatformGetCounters();
// The next MFStartup call fails with this status (0 clears the injection).
TESSEL_PLATFORM_API void TesselPlatformFailNextMFStartup(HRESULT status);
// While status is not 0, creating a source reader with
// MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING fails with it, as on a system
// without that path; creation with plain video processing is unaffected.
TESSEL_PLATFORM_API void TesselPlatformRefuseAdvancedVideoProcessing(HRESULT status);
// The next creation of a media buffer (MFCreateMemoryBuffer, MFCreate2DMediaBuffer and
// the buffers of the source reader's samples) fails with this status (0 clears).
TESSEL_PLATFORM_API void TesselPlatformFailNextBufferCreation(HRESULT status);
// The next IMFSourceReader::ReadSample fails with this status (0 clears).
TESSEL_PLATFORM_API void TesselPlatformFailNextReadSample(HRESULT status);
// The next encoder that a sink writer opens (SetInputMediaType opens them) fails with
// this status (0 clears).
TESSEL_PLATFORM_API void TesselPlatformFailNextEncoderOpen(HRESULT status);
// Bytes that sink writers may still write to their files, as on a disk that is filling
// up: the write that would go beyond fails with ERROR_DISK_FULL as an HRESULT, in the
// WriteSample or Finalize that writes. -1, the default, lifts the limit.
TESSEL_PLATFORM_API void TesselPlatformSetSinkDiskSpace(LONGLONG bytes);
// The libx264 preset of the sink writer's H.264 streams, for benchmarks; null restores
// the default, "superfast".
TESSEL_PLATFORM_API void TesselPlatformSetH264Preset(const char* preset);
// Whether the codec library's own lines about the files it reads (damaged frames,
// concealed errors) go to stderr. Off by default: the reader reports through statuses.
TESSEL_PLATFORM_API void TesselPlatformShowCodecLog(BOOL show);
// The next GlobalAlloc fails with this Win32 error, returning null (0 clears).
TESSEL_PLATFORM_API void TesselPlatformFailNextGlobalAlloc(DWORD error);
}

// A video compressor that AVIMakeCompressedStream and ICCompressorChoose know.
struct TesselCompressor {
  DWORD fccHandler;  // its four-character code, as COMPVARS and AVICOMPRESSOPTIONS hold it
  const char* name;  // what the user is shown
  DWORD flags;       // VIDCF_QUALITY, VIDCF_CRUNCH (data rate), VIDCF_TEMPORAL (key frames)
};

// A choice of compressor: the COMPVARS fields the chooser shows and sets.
struct TesselCompressorChoice {
  DWORD fccHandler;
  LONG quality;        // lQ: 0 to 10000, or ICQUALITY_DEFAULT
  LONG keyFrameEvery;  // lKey: frames from one key frame to the next, 0 for the compressor's own
  LONG dataRate;       // lDataRate: kilobytes (1000 bytes) per second, 0 for none
  const void* state;   // the compressor's own state, stateSize bytes (none: null and 0)
  LONG stateSize;
};

// What ICCompressorChoose asks the chooser.
struct TesselChooserRequest {
  const char* title;  // null when the caller gave none
  UINT flags;  // ICMF_CHOOSE_KEYFRAME, ICMF_CHOOSE_DATARATE: whether those are offered
  const TesselCompressor* compressors;  // the compressors to choose from, valid during the call
  DWORD compressorCount;
  TesselCompressorChoice preselection;  // from the caller's COMPVARS, or the defaults
};

// Shows the choice to the user. Returns TRUE with *choice set (it starts as the
// pre-selection) or FALSE for a cancel. Called on the thread that called
// ICCompressorChoose; the bytes that choice->state points at must stay valid until
// ICCompressorChoose returns, which copies them.
typedef BOOL (*TesselCompressorChooser)(void* context, const TesselChooserRequest* request,
                                        TesselCompressorChoice* choice);

extern "C" {
// Installs the chooser that ICCompressorChoose shows (null: none, ICCompressorChoose
// then answers as if cancelled). context is handed to every call.
TESSEL_PLATFORM_API void TesselPlatformSetCompressorChooser(TesselCompressorChooser chooser, void* context);
// Copies up to capacity entries of the compressor list into list (which may be null
// with capacity 0); returns how many compressors there are.
TESSEL_PLATFORM_API DWORD TesselPlatformGetCompressors(TesselCompressor* list, DWORD capacity);
}
