// Helpers of the platform tests.
#include "reader_support.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstring>

#include "fixtures.h"
#include "frame_code.h"

namespace tessel::platform_test {

std::u16string Wide(const std::string& text) { return std::u16string(text.begin(), text.end()); }

std::string TestName(const std::string& text) {
  std::string name = text;
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

std::string ClipPath(const std::string& name) { return tessel::fixtures::Path(name); }

ComPtr<IMFSourceReader> OpenReader(const std::string& clip, Processing processing, HRESULT* status) {
  ComPtr<IMFAttributes> attributes;
  EXPECT_EQ(MFCreateAttributes(&attributes, 1), S_OK);
  if (processing == Processing::kAdvanced) {
    attributes->SetUINT32(MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING, TRUE);
  } else if (processing == Processing::kBasic) {
    attributes->SetUINT32(MF_SOURCE_READER_ENABLE_VIDEO_PROCESSING, TRUE);
  }
  ComPtr<IMFSourceReader> reader;
  HRESULT hr = MFCreateSourceReaderFromURL(Wide(ClipPath(clip)).c_str(), attributes.Get(), &reader);
  if (status) *status = hr;
  else EXPECT_EQ(hr, S_OK) << clip;
  return reader;
}

ComPtr<IMFMediaType> OutputType(const GUID& major, const GUID& subtype, UINT32 width, UINT32 height) {
  ComPtr<IMFMediaType> type;
  EXPECT_EQ(MFCreateMediaType(&type), S_OK);
  type->SetGUID(MF_MT_MAJOR_TYPE, major);
  type->SetGUID(MF_MT_SUBTYPE, subtype);
  if (width) MFSetAttributeSize(type.Get(), MF_MT_FRAME_SIZE, width, height);
  return type;
}

bool ReadVideoFrame(IMFSourceReader* reader, DWORD stream, const GUID& /*subtype*/, VideoFrame* frame) {
  DWORD flags = 0;
  LONGLONG time = 0;
  ComPtr<IMFSample> sample;
  HRESULT hr = reader->ReadSample(stream, 0, nullptr, &flags, &time, &sample);
  EXPECT_EQ(hr, S_OK);
  if (FAILED(hr) || (flags & MF_SOURCE_READERF_ENDOFSTREAM) || !sample) return false;
  ComPtr<IMFMediaType> current;
  EXPECT_EQ(reader->GetCurrentMediaType(stream, &current), S_OK);
  UINT32 width = 0, height = 0;
  MFGetAttributeSize(current.Get(), MF_MT_FRAME_SIZE, &width, &height);
  ComPtr<IMFMediaBuffer> buffer;
  EXPECT_EQ(sample->ConvertToContiguousBuffer(&buffer), S_OK);
  ComPtr<IMF2DBuffer> image;
  EXPECT_EQ(buffer->QueryInterface(IID_PPV_ARGS(&image)), S_OK);
  if (!image) return false;
  BYTE* line = nullptr;
  LONG pitch = 0;
  EXPECT_EQ(image->Lock2D(&line, &pitch), S_OK);
  EXPECT_EQ(LONG(MFGetAttributeUINT32(current.Get(), MF_MT_DEFAULT_STRIDE, 0)), pitch);
  frame->time = time;
  sample->GetSampleDuration(&frame->duration);
  frame->width = int(width);
  frame->height = int(height);
  frame->pitch = int(pitch < 0 ? -pitch : pitch);
  frame->rows.resize(size_t(frame->pitch) * height);
  for (UINT32 y = 0; y < height; ++y) {
    std::memcpy(frame->rows.data() + size_t(y) * frame->pitch, line + LONG(y) * pitch, size_t(frame->pitch));
  }
  image->Unlock2D();
  return true;
}

int FrameNumber(const VideoFrame& frame, const GUID& subtype) {
  auto luma = [&](int x, int y) {
    const uint8_t* row = frame.rows.data() + size_t(y) * frame.pitch;
    if (subtype == MFVideoFormat_YUY2 || subtype == MFVideoFormat_YVYU) return int(row[x * 2]);
    if (subtype == MFVideoFormat_RGB24) return (row[x * 3] + row[x * 3 + 1] + row[x * 3 + 2]) / 3;
    if (subtype == MFVideoFormat_RGB555 || subtype == MFVideoFormat_RGB565) {
      int pixel = row[x * 2] | row[x * 2 + 1] << 8;
      return (pixel & 0x1F) << 3;  // blue carries the grey level as every channel does
    }
    return (row[x * 4] + row[x * 4 + 1] + row[x * 4 + 2]) / 3;
  };
  return tessel::fixtures::ReadFrameCode(luma, frame.width, frame.height);
}

PROPVARIANT TimePosition(int64_t ticks) {
  PROPVARIANT position;
  PropVariantInit(&position);
  position.vt = VT_I8;
  position.hVal.QuadPart = ticks;
  return position;
}

std::vector<int64_t> ReadAllTimes(IMFSourceReader* reader, DWORD stream) {
  std::vector<int64_t> times;
  for (int guard = 0; guard < 100000; ++guard) {
    DWORD flags = 0;
    LONGLONG time = 0;
    ComPtr<IMFSample> sample;
    HRESULT hr = reader->ReadSample(stream, 0, nullptr, &flags, &time, &sample);
    EXPECT_EQ(hr, S_OK);
    if (FAILED(hr) || (flags & MF_SOURCE_READERF_ENDOFSTREAM)) break;
    if (sample) times.push_back(time);
  }
  return times;
}

}  // namespace tessel::platform_test
