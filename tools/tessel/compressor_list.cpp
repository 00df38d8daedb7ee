#include "compressor_list.h"

#include <cctype>

namespace tessel::cli {

namespace {

DWORD LowerCase(DWORD code) {
  DWORD lower = 0;
  for (int shift = 0; shift < 32; shift += 8) lower |= DWORD(std::tolower(int((code >> shift) & 0xFF))) << shift;
  return lower;
}

}  // namespace

std::vector<TesselCompressor> PlatformCompressors() {
  std::vector<TesselCompressor> compressors(TesselPlatformGetCompressors(nullptr, 0));
  compressors.resize(TesselPlatformGetCompressors(compressors.data(), DWORD(compressors.size())));
  return compressors;
}

bool SameCompressorCode(DWORD a, DWORD b) { return LowerCase(a) == LowerCase(b); }

const TesselCompressor* FindCompressor(std::span<const TesselCompressor> compressors, DWORD code) {
  for (const TesselCompressor& compressor : compressors)
    if (SameCompressorCode(compressor.fccHandler, code)) return &compressor;
  return nullptr;
}

bool SupportsQuality(const TesselCompressor& compressor) { return compressor.flags & VIDCF_QUALITY; }
bool SupportsKeyFrames(const TesselCompressor& compressor) { return compressor.flags & VIDCF_TEMPORAL; }
bool SupportsDataRate(const TesselCompressor& compressor) { return compressor.flags & VIDCF_CRUNCH; }

std::string SupportsText(const TesselCompressor& compressor) {
  std::string text;
  auto add = [&text](bool supported, const char* what) {
    if (supported) text += (text.empty() ? "" : ", ") + std::string(what);
  };
  add(SupportsQuality(compressor), "quality");
  add(SupportsKeyFrames(compressor), "key frames");
  add(SupportsDataRate(compressor), "data rate");
  return text;
}

}  // namespace tessel::cli
