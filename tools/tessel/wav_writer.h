// Writes sound as a RIFF WAVE file: integer samples as PCM, 32-bit float samples as
// WAVE_FORMAT_IEEE_FLOAT, channels interleaved as given.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tessel::cli {

struct SoundLayout {
  int64_t channels = 0;
  int64_t bitsPerSample = 0;
  int64_t sampleRate = 0;
  bool isFloat = false;
};

// False with a message in error when the layout cannot be stored or the file cannot
// be written.
bool WriteWav(const std::string& path, const SoundLayout& layout, const std::vector<uint8_t>& bytes,
              std::string& error);

}  // namespace tessel::cli
