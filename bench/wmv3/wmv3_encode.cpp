// Encodes raw 4:2:0 frames with the platform's WMV3 encoder and prints one line:
//   frames N seconds S bits B psnr P
// S is the encoding time alone (the frames are read first), B the bits of all frames,
// P the luma PSNR of the reconstruction (what a decoder shows) against the source,
// averaged over the frames.
// Usage: wmv3_encode frames.yuv width height frames fps bit_rate
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <vector>

#include "wmvencod/wmv3_encoder.h"

namespace {

using tessel::platform::Wmv3Encoder;
using tessel::platform::Wmv3EncoderSettings;
using tessel::platform::Wmv3Picture;

double LumaPsnr(const uint8_t* source, const Wmv3Picture& shown, int width, int height) {
  double squared = 0;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      double d = source[y * width + x] - shown.planes[0][y * shown.strides[0] + x];
      squared += d * d;
    }
  if (squared == 0) return 100;
  return 10 * std::log10(255.0 * 255.0 * width * height / squared);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 7) {
    std::fprintf(stderr, "usage: %s frames.yuv width height frames fps bit_rate\n", argv[0]);
    return 2;
  }
  Wmv3EncoderSettings settings;
  settings.width = std::atoi(argv[2]);
  settings.height = std::atoi(argv[3]);
  int frames = std::atoi(argv[4]);
  settings.rateNum = std::atoi(argv[5]);
  settings.bitRate = std::atoll(argv[6]);
  int chromaWidth = (settings.width + 1) / 2, chromaHeight = (settings.height + 1) / 2;
  size_t lumaSize = static_cast<size_t>(settings.width) * settings.height;
  size_t frameSize = lumaSize + 2 * static_cast<size_t>(chromaWidth) * chromaHeight;
  std::vector<uint8_t> raw(frameSize * frames);
  std::ifstream file(argv[1], std::ios::binary);
  if (!file.read(reinterpret_cast<char*>(raw.data()), static_cast<std::streamsize>(raw.size()))) {
    std::fprintf(stderr, "cannot read %d frames from %s\n", frames, argv[1]);
    return 1;
  }
  std::unique_ptr<Wmv3Encoder> encoder;
  if (Wmv3Encoder::Create(settings, &encoder) != S_OK) {
    std::fprintf(stderr, "the encoder refuses these settings\n");
    return 1;
  }
  double encodeSeconds = 0, psnrSum = 0;
  size_t bits = 0;
  for (int i = 0; i < frames; ++i) {
    const uint8_t* frame = raw.data() + frameSize * i;
    Wmv3Picture picture;
    picture.planes[0] = frame;
    picture.planes[1] = frame + lumaSize;
    picture.planes[2] = frame + lumaSize + static_cast<size_t>(chromaWidth) * chromaHeight;
    picture.strides[0] = settings.width;
    picture.strides[1] = picture.strides[2] = chromaWidth;
    std::vector<uint8_t> coded;
    bool key = false;
    auto start = std::chrono::steady_clock::now();
    if (encoder->Encode(picture, &coded, &key) != S_OK) {
      std::fprintf(stderr, "frame %d failed\n", i);
      return 1;
    }
    encodeSeconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    bits += coded.size() * 8;
    psnrSum += LumaPsnr(frame, encoder->Reconstruction(), settings.width, settings.height);
  }
  std::printf("frames %d seconds %.3f bits %zu psnr %.3f\n", frames, encodeSeconds, bits, psnrSum / frames);
  return 0;
}
