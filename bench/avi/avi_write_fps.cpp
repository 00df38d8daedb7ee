// Writes frames through the AVI functions the way the module does (a compressing
// stream on the video stream of a new file, one AVIStreamWrite per frame from one
// buffer) and prints the frame rate reached, file finished. The frames are read one by
// one into that buffer from a file of raw 24-bit bottom-up DIBs, from its start again
// after its end, as ffmpeg reads them when it loops over the file.
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "vfw.h"

namespace {

struct Options {
  std::string frames;
  int width = 0;
  int height = 0;
  int count = 0;
  DWORD handler = 0;
  DWORD quality = 0;
  std::string output;
};

// Reads the next frame into frame, from the start of the file again after its last.
bool ReadFrame(std::ifstream& file, std::vector<uint8_t>& frame) {
  auto bytes = std::streamsize(frame.size());
  if (file.read(reinterpret_cast<char*>(frame.data()), bytes)) return true;
  file.clear();
  file.seekg(0);
  return bool(file.read(reinterpret_cast<char*>(frame.data()), bytes));
}

HRESULT WriteMovie(const Options& options, int stride, std::ifstream& frames) {
  AVISTREAMINFOW info{};
  info.fccType = streamtypeVIDEO;
  info.dwScale = 1;
  info.dwRate = 25;
  info.dwSuggestedBufferSize = DWORD(stride * options.height);
  info.rcFrame = {0, 0, options.width, options.height};
  AVICOMPRESSOPTIONS compress{};
  compress.fccHandler = options.handler;
  compress.dwQuality = options.quality;
  compress.dwFlags = AVICOMPRESSF_VALID;
  BITMAPINFOHEADER header{40, options.width, options.height, 1, 24, BI_RGB, info.dwSuggestedBufferSize, 0, 0, 0, 0};
  std::u16string path(options.output.begin(), options.output.end());
  PAVIFILE file = nullptr;
  PAVISTREAM stream = nullptr;
  PAVISTREAM compressed = nullptr;
  HRESULT hr = AVIFileOpenW(&file, path.c_str(), OF_WRITE | OF_CREATE, nullptr);
  if (SUCCEEDED(hr)) hr = AVIFileCreateStreamW(file, &stream, &info);
  if (SUCCEEDED(hr)) hr = AVIMakeCompressedStream(&compressed, stream, &compress, nullptr);
  if (SUCCEEDED(hr)) hr = AVIStreamSetFormat(compressed, 0, &header, sizeof(header));
  std::vector<uint8_t> frame(info.dwSuggestedBufferSize);
  for (int i = 0; SUCCEEDED(hr) && i < options.count; ++i) {
    hr = ReadFrame(frames, frame) ? AVIStreamWrite(compressed, i, 1, frame.data(), LONG(frame.size()), 0, nullptr, nullptr)
                                  : E_FAIL;
  }
  AVIStreamRelease(stream);
  AVIStreamRelease(compressed);
  AVIFileRelease(file);
  return hr;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 8) {
    std::fprintf(stderr, "usage: avi_write_fps <frames.bgr> <width> <height> <count> <fourcc> <quality> <out.avi>\n");
    return 2;
  }
  Options options{argv[1], std::stoi(argv[2]), std::stoi(argv[3]), std::stoi(argv[4]),
                  mmioFOURCC(argv[5][0], argv[5][1], argv[5][2], argv[5][3]), DWORD(std::stoul(argv[6])), argv[7]};
  int stride = (options.width * 3 + 3) & ~3;
  std::ifstream frames(options.frames, std::ios::binary);
  if (!frames) {
    std::fprintf(stderr, "avi_write_fps: can't read %s\n", options.frames.c_str());
    return 1;
  }
  AVIFileInit();
  auto start = std::chrono::steady_clock::now();
  HRESULT hr = WriteMovie(options, stride, frames);
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  AVIFileExit();
  if (FAILED(hr)) {
    std::fprintf(stderr, "avi_write_fps: writing failed with status 0x%08X\n", unsigned(hr));
    return 1;
  }
  std::printf("%d %.3f %.1f\n", options.count, seconds, options.count / seconds);
  return 0;
}
