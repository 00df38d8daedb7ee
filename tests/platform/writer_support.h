// Helpers of the sink writer tests: clips written through IMFSinkWriter the way the
// module writes them (the whole sound first, then RGB32 frames of a moving test pattern
// with its rows in the module's order), and what FFmpeg reads back from a written file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mfapi.h"
#include "mfreadwrite.h"
#include "reader_support.h"

extern "C" {
#include <libavutil/pixfmt.h>
#include <libavutil/rational.h>
}

namespace tessel::platform_test {

struct ClipSpec {
  std::string suffix = ".mp4";
  const GUID* video = &MFVideoFormat_H264;
  const GUID* audio = &MFAudioFormat_AAC;  // null: no sound
  UINT32 width = 320;
  UINT32 height = 240;
  UINT32 rateNumerator = 25;
  UINT32 rateDenominator = 1;
  UINT32 aspectNumerator = 1;
  UINT32 aspectDenominator = 1;
  UINT32 bitRate = 2000000;
  UINT32 keyFrames = 12;  // 0 leaves MF_MT_MAX_KEYFRAME_SPACING out
  UINT32 profile = 77;    // of H.264: eAVEncH264VProfile_Main
  UINT32 level = 0xFFFFFFFF;
  int frames = 25;
  // The sound: the output rate and the PCM input's rate, channels and sample size. The
  // tone lasts as long as the frames unless soundSeconds says otherwise.
  UINT32 soundRate = 48000;
  UINT32 inputRate = 44100;
  UINT32 inputChannels = 2;
  UINT32 inputBits = 16;
  double soundSeconds = 0;
};

// A writable path for a written clip, in the build tree.
std::string WrittenPath(const std::string& name);

// The clip's output and input types.
ComPtr<IMFMediaType> VideoTargetType(const ClipSpec& spec);
ComPtr<IMFMediaType> VideoInputType(const ClipSpec& spec, const GUID& subtype = MFVideoFormat_RGB32);
ComPtr<IMFMediaType> AudioTargetType(const ClipSpec& spec);
ComPtr<IMFMediaType> PcmInputType(const ClipSpec& spec);

// Picture index of the pattern as RGB32 (bytes blue, green, red, unused), top row first:
// gradients and a box that move from frame to frame, and the frame number in the top
// rows (frame_code.h).
std::vector<uint8_t> PatternPicture(int index, UINT32 width, UINT32 height);
// A 440 Hz tone at a third of full scale from its first sample, interleaved PCM.
std::vector<uint8_t> TonePcm(double seconds, UINT32 rate, UINT32 channels, UINT32 bits);

// A sample of one buffer holding bytes.
ComPtr<IMFSample> MakeSample(const std::vector<uint8_t>& bytes, LONGLONG time, LONGLONG duration);
// Frame index of the pattern as a sample in RGB32 with its rows top-down or bottom-up,
// timed on the clip's frame grid.
ComPtr<IMFSample> PatternSample(const ClipSpec& spec, int index, bool bottomUp);
// The order in which the module hands rows to the codec: last picture row first for
// H.264, first row first for WMV.
bool ModuleRowsBottomUp(const ClipSpec& spec);
// The ticks of a time in seconds, as the module rounds them.
LONGLONG Ticks(double seconds);

// A writer on path with its streams set up and writing begun: the sound first (if the
// spec has sound), then the video. Fails the test on any status.
ComPtr<IMFSinkWriter> BeginClip(const ClipSpec& spec, const std::string& path, DWORD* videoStream,
                                DWORD* audioStream);
// Writes the whole clip and finalises it; the first failing status.
HRESULT WriteClip(const ClipSpec& spec, const std::string& path);

// What FFmpeg reads back from one stream of a file.
struct StreamFacts {
  bool present = false;
  int codec = 0;  // AVCodecID
  int profile = 0;
  int level = 0;
  int width = 0, height = 0;
  AVRational aspect{0, 1};           // pixel aspect in the codec's stream
  AVRational containerAspect{0, 1};  // and in the container
  AVRational frameRate{0, 1};
  AVColorSpace matrix = AVCOL_SPC_UNSPECIFIED;
  AVColorPrimaries primaries = AVCOL_PRI_UNSPECIFIED;
  AVColorTransferCharacteristic transfer = AVCOL_TRC_UNSPECIFIED;
  AVColorRange range = AVCOL_RANGE_UNSPECIFIED;
  int sampleRate = 0, channels = 0;
  int packets = 0;
  std::vector<int> keyPackets;  // indices of the key packets, in decode order
  int64_t bytes = 0;
  double start = 0;  // seconds of the earliest presentation
  double end = 0;    // seconds where the last packet ends
};

struct MovieFacts {
  bool opened = false;
  StreamFacts video;
  StreamFacts audio;
  // The largest distance in time, in file order, between a packet and the latest packet
  // of the other stream before it: small when sound and picture are interleaved.
  double interleaveGap = 0;
};

MovieFacts ProbeMovie(const std::string& path);

// Every picture of the video, decoded and turned into RGB32 with the matrix and range
// the stream states, top row first, in presentation order.
std::vector<std::vector<uint8_t>> DecodePictures(const std::string& path);

// The time in seconds at which the decoded sound first reaches a tenth of full scale.
double SoundOnset(const std::string& path);

}  // namespace tessel::platform_test
