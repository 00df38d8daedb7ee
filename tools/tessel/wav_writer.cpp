#include "wav_writer.h"

#include <cerrno>
#include <cstring>
#include <fstream>

namespace tessel::cli {

namespace {

constexpr uint16_t WAVE_FORMAT_PCM = 1;
constexpr uint16_t WAVE_FORMAT_IEEE_FLOAT = 3;

void PutLittle(std::string& out, uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) out += char((value >> (8 * i)) & 0xff);
}

bool CheckLayout(const SoundLayout& layout, size_t size, std::string& error) {
  bool bitsOk = layout.isFloat ? layout.bitsPerSample == 32 || layout.bitsPerSample == 64
                               : layout.bitsPerSample % 8 == 0 && layout.bitsPerSample >= 8 && layout.bitsPerSample <= 32;
  if (layout.channels < 1 || layout.channels > 64 || !bitsOk || layout.sampleRate < 1 ||
      layout.sampleRate > 0xffffffffLL / (layout.channels * layout.bitsPerSample / 8)) {
    error = "cannot store " + std::to_string(layout.channels) + " channels of " + std::to_string(layout.bitsPerSample) +
            " bits at " + std::to_string(layout.sampleRate) + " Hz in a WAV file";
    return false;
  }
  if (size > 0xffffffffULL - 64) {
    error = "the sound is too long for a WAV file (" + std::to_string(size) + " bytes)";
    return false;
  }
  return true;
}

// The RIFF header, the format chunk and the head of the data chunk.
std::string Header(const SoundLayout& layout, size_t size) {
  uint64_t blockAlign = uint64_t(layout.channels * layout.bitsPerSample / 8);
  bool pad = size % 2 != 0;
  uint64_t formatSize = layout.isFloat ? 18 : 16;
  std::string out = "RIFF";
  PutLittle(out, 4 + 8 + formatSize + 8 + size + (pad ? 1 : 0), 4);
  out += "WAVEfmt ";
  PutLittle(out, formatSize, 4);
  PutLittle(out, layout.isFloat ? WAVE_FORMAT_IEEE_FLOAT : WAVE_FORMAT_PCM, 2);
  PutLittle(out, uint64_t(layout.channels), 2);
  PutLittle(out, uint64_t(layout.sampleRate), 4);
  PutLittle(out, uint64_t(layout.sampleRate) * blockAlign, 4);
  PutLittle(out, blockAlign, 2);
  PutLittle(out, uint64_t(layout.bitsPerSample), 2);
  if (layout.isFloat) PutLittle(out, 0, 2);  // no extension
  out += "data";
  PutLittle(out, size, 4);
  return out;
}

}  // namespace

bool WriteWav(const std::string& path, const SoundLayout& layout, const std::vector<uint8_t>& bytes,
              std::string& error) {
  if (!CheckLayout(layout, bytes.size(), error)) {
    error = path + ": " + error;
    return false;
  }
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  std::string header = Header(layout, bytes.size());
  out.write(header.data(), std::streamsize(header.size()));
  out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
  if (bytes.size() % 2 != 0) out.put('\0');
  out.close();
  if (!out) {
    error = path + ": " + (errno ? std::strerror(errno) : "cannot write");
    return false;
  }
  return true;
}

}  // namespace tessel::cli
