// Reads every frame of a clip as RGB32 through IMFSourceReader, the way the module
// does (advanced video processing, 2D buffer lock), and prints the frame rate reached.
#include <chrono>
#include <cstdio>
#include <string>

#include "mfapi.h"
#include "mfreadwrite.h"

namespace {

template <typename T>
void Release(T*& object) {
  if (object) object->Release();
  object = nullptr;
}

// Locks and unlocks the frame as a consumer would; the pixels stay where they are.
bool TouchFrame(IMFSample* sample) {
  IMFMediaBuffer* buffer = nullptr;
  if (FAILED(sample->ConvertToContiguousBuffer(&buffer))) return false;
  IMF2DBuffer* image = nullptr;
  bool ok = SUCCEEDED(buffer->QueryInterface(IID_IMF2DBuffer, reinterpret_cast<void**>(&image)));
  BYTE* line = nullptr;
  LONG pitch = 0;
  if (ok && SUCCEEDED(image->Lock2D(&line, &pitch))) image->Unlock2D();
  Release(image);
  Release(buffer);
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: reader_fps <clip>\n");
    return 2;
  }
  std::string path = argv[1];
  std::u16string wide(path.begin(), path.end());
  if (FAILED(MFStartup(MF_VERSION, MFSTARTUP_FULL))) return 1;
  IMFAttributes* attributes = nullptr;
  MFCreateAttributes(&attributes, 1);
  attributes->SetUINT32(MF_SOURCE_READER_ENABLE_ADVANCED_VIDEO_PROCESSING, TRUE);
  IMFSourceReader* reader = nullptr;
  HRESULT hr = MFCreateSourceReaderFromURL(wide.c_str(), attributes, &reader);
  Release(attributes);
  IMFMediaType* type = nullptr;
  if (SUCCEEDED(hr)) hr = MFCreateMediaType(&type);
  if (SUCCEEDED(hr)) type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video);
  if (SUCCEEDED(hr)) type->SetGUID(MF_MT_SUBTYPE, MFVideoFormat_RGB32);
  if (SUCCEEDED(hr)) hr = reader->SetCurrentMediaType(MF_SOURCE_READER_FIRST_VIDEO_STREAM, nullptr, type);
  Release(type);
  if (FAILED(hr)) {
    std::fprintf(stderr, "reader_fps: %s: status 0x%08X\n", path.c_str(), unsigned(hr));
    return 1;
  }
  auto start = std::chrono::steady_clock::now();
  long frames = 0;
  for (;;) {
    DWORD flags = 0;
    IMFSample* sample = nullptr;
    hr = reader->ReadSample(MF_SOURCE_READER_FIRST_VIDEO_STREAM, 0, nullptr, &flags, nullptr, &sample);
    if (FAILED(hr) || (flags & MF_SOURCE_READERF_ENDOFSTREAM)) break;
    if (sample && TouchFrame(sample)) ++frames;
    Release(sample);
  }
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  Release(reader);
  MFShutdown();
  if (FAILED(hr)) {
    std::fprintf(stderr, "reader_fps: read failed with status 0x%08X\n", unsigned(hr));
    return 1;
  }
  std::printf("%ld %.3f %.1f\n", frames, seconds, frames / seconds);
  return 0;
}
