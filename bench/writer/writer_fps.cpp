// Writes frames of a raw BGRA file (top row first, looped if it holds fewer frames)
// through IMFSinkWriter as the module does: each frame read straight into the rows of a
// new RGB32 buffer, last picture row first for H.264 and first row first for WMV, then
// written as a sample. Like ffmpeg reading the same file, the frame is copied once, by
// the system's read. Prints the frames written, the seconds taken and the frame rate.
//
// Usage: writer_fps <raw.bgra> <width> <height> <frames> <h264|wmv2|wmv3> <out> <bits/s> <keyint> <preset>
#include <fcntl.h>
#include <limits.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

#include "mfapi.h"
#include "mfreadwrite.h"
#include "codecapi.h"
#include "tessel_platform_control.h"
#include "wrl/client.h"

using Microsoft::WRL::ComPtr;

namespace {

struct Options {
  std::string raw, codec, out, preset;
  UINT32 width, height, frames, bitRate, keyFrames;
};

ComPtr<IMFMediaType> VideoType(const Options& options, const GUID& subtype) {
  ComPtr<IMFMediaType> type;
  MFCreateMediaType(&type);
  type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
  type->SetGUID(MF_MT_SUBTYPE, subtype);
  type->SetUINT32(MF_MT_INTERLACE_MODE, MFVideoInterlace_Progressive);
  MFSetAttributeSize(type.Get(), MF_MT_FRAME_SIZE, options.width, options.height);
  MFSetAttributeRatio(type.Get(), MF_MT_FRAME_RATE, 30, 1);
  MFSetAttributeRatio(type.Get(), MF_MT_PIXEL_ASPECT_RATIO, 1, 1);
  return type;
}

const GUID* Subtype(const std::string& codec) {
  if (codec == "h264") return &MFVideoFormat_H264;
  if (codec == "wmv2") return &MFVideoFormat_WMV2;
  if (codec == "wmv3") return &MFVideoFormat_WMV3;
  return nullptr;
}

HRESULT OpenWriter(const Options& options, bool h264, ComPtr<IMFSinkWriter>* writer, DWORD* stream) {
  std::u16string path(options.out.begin(), options.out.end());
  HRESULT hr = MFCreateSinkWriterFromURL(path.c_str(), nullptr, nullptr, writer->ReleaseAndGetAddressOf());
  if (FAILED(hr)) return hr;
  ComPtr<IMFMediaType> target = VideoType(options, *Subtype(options.codec));
  target->SetUINT32(MF_MT_AVG_BITRATE, options.bitRate);
  target->SetUINT32(MF_MT_MAX_KEYFRAME_SPACING, options.keyFrames);
  if (h264) target->SetUINT32(MF_MT_MPEG2_PROFILE, eAVEncH264VProfile_Main);
  hr = (*writer)->AddStream(target.Get(), stream);
  if (SUCCEEDED(hr)) hr = (*writer)->SetInputMediaType(*stream, VideoType(options, MFVideoFormat_RGB32).Get(), nullptr);
  if (SUCCEEDED(hr)) hr = (*writer)->BeginWriting();
  return hr;
}

// Reads rows [first, first + count) of the next picture into their places in data.
bool ReadRows(int raw, const Options& options, bool flip, BYTE* data, UINT32 first, UINT32 count) {
  size_t rowBytes = size_t(options.width) * 4;
  std::vector<iovec> rows(count);
  for (UINT32 i = 0; i < count; ++i) {
    UINT32 row = flip ? options.height - 1 - (first + i) : first + i;
    rows[i] = {data + row * rowBytes, rowBytes};
  }
  ssize_t wanted = ssize_t(rowBytes * count);
  return readv(raw, rows.data(), int(count)) == wanted;
}

// Reads the next picture of the raw file into data, from the start again at its end.
bool ReadPicture(int raw, const Options& options, bool flip, BYTE* data) {
  for (int attempt = 0; attempt < 2; ++attempt) {
    UINT32 y = 0;
    for (UINT32 count; y < options.height; y += count) {
      count = std::min<UINT32>(options.height - y, IOV_MAX);
      if (!ReadRows(raw, options, flip, data, y, count)) break;
    }
    if (y >= options.height) return true;
    lseek(raw, 0, SEEK_SET);
  }
  return false;
}

HRESULT WriteFrame(IMFSinkWriter* writer, DWORD stream, const Options& options, bool flip, int raw,
                   UINT32 index) {
  UINT32 rowBytes = options.width * 4;
  ComPtr<IMFMediaBuffer> buffer;
  HRESULT hr = MFCreateMemoryBuffer(rowBytes * options.height, &buffer);
  BYTE* data = nullptr;
  if (SUCCEEDED(hr)) hr = buffer->Lock(&data, nullptr, nullptr);
  if (FAILED(hr)) return hr;
  bool read = ReadPicture(raw, options, flip, data);
  buffer->Unlock();
  if (!read) return E_FAIL;
  buffer->SetCurrentLength(rowBytes * options.height);
  ComPtr<IMFSample> sample;
  hr = MFCreateSample(&sample);
  if (SUCCEEDED(hr)) hr = sample->AddBuffer(buffer.Get());
  if (SUCCEEDED(hr)) hr = sample->SetSampleTime(LONGLONG(index) * 10000000 / 30);
  if (SUCCEEDED(hr)) hr = sample->SetSampleDuration(10000000 / 30);
  if (SUCCEEDED(hr)) hr = writer->WriteSample(stream, sample.Get());
  return hr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 10 || !Subtype(argv[5])) {
    std::fprintf(stderr, "usage: writer_fps <raw.bgra> <width> <height> <frames> <h264|wmv2|wmv3> <out> <bits/s> "
                         "<keyint> <preset>\n");
    return 2;
  }
  Options options{argv[1], argv[5], argv[6], argv[9], UINT32(std::stoul(argv[2])), UINT32(std::stoul(argv[3])),
                  UINT32(std::stoul(argv[4])), UINT32(std::stoul(argv[7])), UINT32(std::stoul(argv[8]))};
  bool h264 = options.codec == "h264";
  TesselPlatformSetH264Preset(options.preset.c_str());
  int raw = open(options.raw.c_str(), O_RDONLY);
  if (raw < 0 || FAILED(MFStartup(MF_VERSION, MFSTARTUP_FULL))) return 1;
  auto start = std::chrono::steady_clock::now();
  ComPtr<IMFSinkWriter> writer;
  DWORD stream = 0;
  HRESULT hr = OpenWriter(options, h264, &writer, &stream);
  UINT32 written = 0;
  for (; SUCCEEDED(hr) && written < options.frames; ++written) {
    hr = WriteFrame(writer.Get(), stream, options, h264, raw, written);
  }
  if (SUCCEEDED(hr)) hr = writer->Finalize();
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  writer.Reset();
  MFShutdown();
  close(raw);
  if (FAILED(hr)) {
    std::fprintf(stderr, "writer_fps: status 0x%08X\n", unsigned(hr));
    return 1;
  }
  std::printf("%u %.3f %.1f\n", written, seconds, written / seconds);
  return 0;
}
