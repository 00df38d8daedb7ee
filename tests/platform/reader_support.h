// Helpers of the platform tests: reader creation on the clips,
// frame reads and the frame number in any of the reader's outputs.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "mfapi.h"
#include "mferror.h"
#include "mfreadwrite.h"
#include "wrl/implements.h"

namespace tessel::platform_test {

using Microsoft::WRL::ClassicCom;
using Microsoft::WRL::ComPtr;
using Microsoft::WRL::Make;
using Microsoft::WRL::RuntimeClass;
using Microsoft::WRL::RuntimeClassFlags;

enum class Processing { kNone, kBasic, kAdvanced };

std::u16string Wide(const std::string& text);
std::string ClipPath(const std::string& name);

// A test name made of text: letters and digits kept, everything else '_'.
std::string TestName(const std::string& text);

// A reader on a clip by path; the status of the creation in *status.
ComPtr<IMFSourceReader> OpenReader(const std::string& clip, Processing processing, HRESULT* status = nullptr);

// A new media type with the major type, the subtype and, if width is given, a frame size.
ComPtr<IMFMediaType> OutputType(const GUID& major, const GUID& subtype, UINT32 width = 0, UINT32 height = 0);

// One delivered video frame: its rows copied out top row first.
struct VideoFrame {
  int64_t time = 0;
  int64_t duration = 0;
  int width = 0;
  int height = 0;
  int pitch = 0;
  std::vector<uint8_t> rows;
};

// Reads the next sample of stream; false at the end of the stream (or on failure, which
// the test reports).
bool ReadVideoFrame(IMFSourceReader* reader, DWORD stream, const GUID& subtype, VideoFrame* frame);

// The frame number that the fixture drew into frame, read from the subtype's pixels.
int FrameNumber(const VideoFrame& frame, const GUID& subtype);

// A reader position of ticks, in the 100 ns time format.
PROPVARIANT TimePosition(int64_t ticks);

// Every sample time of stream until its end.
std::vector<int64_t> ReadAllTimes(IMFSourceReader* reader, DWORD stream);

}  // namespace tessel::platform_test
