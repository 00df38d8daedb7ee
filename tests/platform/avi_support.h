// Helpers of the AVI tests: the frames and sound that go in, a writer that drives the
// AVI functions in the module's order, and what FFmpeg reads back from the file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "vfw.h"
#include "wrl/client.h"

extern "C" {
#include <libavcodec/codec_id.h>
#include <libavutil/rational.h>
}

namespace tessel::platform_test {

// A 24-bit DIB of a moving test pattern (soft colour ramps, a textured band and a
// square that move with the frame number), rows padded to 4 bytes, bottom row first.
std::vector<uint8_t> PatternDib(int width, int height, int frame);
// The same picture top row first without padding, as FFmpeg decodes it to BGR24.
std::vector<uint8_t> PatternTopDown(int width, int height, int frame);
// Bytes from one DIB row to the next.
int DibStride(int width);

// Interleaved 16-bit stereo: two tones, different in each channel.
std::vector<int16_t> ToneSamples(int sampleRate, int samples);

// One AVI written the way the module writes it.
struct AviJob {
  DWORD handler = mmioFOURCC('i', 'y', 'u', 'v');
  DWORD quality = 10000;
  DWORD keyFrameEvery = 0;   // with AVICOMPRESSF_KEYFRAMES when not 0
  DWORD bytesPerSecond = 0;  // with AVICOMPRESSF_DATARATE when not 0
  int width = 320;
  int height = 240;
  DWORD rate = 25;
  DWORD scale = 1;
  int frames = 25;
  int soundRate = 48000;  // 0: no sound
  int soundSamples = 48000;
};

// A file being written the way the module writes it, with the handles it holds.
struct AviWriter {
  // Opens the file, creates the video stream, the compressing stream on it and sets
  // the frame format; the first failing status.
  HRESULT Open(const std::string& path, const AviJob& job);
  // A sound stream with its format: 16-bit stereo at the job's rate.
  HRESULT CreateSound(const AviJob& job, Microsoft::WRL::ComPtr<IAVIStream>* sound);
  // The whole sound in a stream of its own, released at once.
  HRESULT WriteSound(const AviJob& job);
  // Pattern picture `picture` at `position` of the compressing stream.
  HRESULT WriteFrame(const AviJob& job, int position, int picture, DWORD flags = 0);
  // Releases stream, compressing stream and file, in this order, as the module does.
  void Release();
  ~AviWriter() { Release(); }

  Microsoft::WRL::ComPtr<IAVIFile> file;
  Microsoft::WRL::ComPtr<IAVIStream> stream;
  Microsoft::WRL::ComPtr<IAVIStream> compressed;
};

// All of the job's tone samples in one write.
HRESULT WriteTone(IAVIStream* sound, const AviJob& job);

// Writes a whole job with AviWriter: the sound, then every frame at its number. The
// first failing status, or S_OK.
HRESULT WriteAvi(const std::string& path, const AviJob& job);

// What FFmpeg finds in an AVI file.
struct AviContents {
  bool opened = false;
  AVCodecID videoCodec = AV_CODEC_ID_NONE;
  uint32_t videoTag = 0;
  int width = 0;
  int height = 0;
  AVRational frameRate{0, 1};  // the inverse of the video stream's time unit
  std::vector<bool> keyFrames;  // of each video packet, in file order
  int64_t videoBytes = 0;
  bool hasSound = false;
  int soundRate = 0;
  int soundChannels = 0;
  // Walking the packets in file order: the most that the sound written so far ran ahead
  // of the frames written so far, in seconds.
  double soundLead = 0;
};
AviContents ReadAvi(const std::string& path);

// What the index of a file's video stream holds: how many frames, and the last of them
// as found through it.
struct IndexedFrame {
  int entries = 0;
  int64_t position = -1;
  std::vector<uint8_t> bytes;
};
IndexedFrame LastFrameThroughIndex(const std::string& path);

// A file name in a folder of the test's own, which RemoveTempAvis removes.
std::string TempAviPath(const std::string& name);
void RemoveTempAvis();

}  // namespace tessel::platform_test
