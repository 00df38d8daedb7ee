#include "wmvencod/bit_writer.h"

namespace tessel::platform::wmv3 {

void BitWriter::Put(uint32_t value, int count) {
  if (count <= 0) return;
  uint64_t bits = count == 32 ? value : (value & ((1u << count) - 1));
  accumulator_ = (accumulator_ << count) | bits;
  pending_ += count;
  while (pending_ >= 8) {
    pending_ -= 8;
    bytes_.push_back(static_cast<uint8_t>(accumulator_ >> pending_));
  }
  accumulator_ &= (uint64_t{1} << pending_) - 1;
}

void BitWriter::Append(const BitWriter& other) {
  for (uint8_t byte : other.bytes_) Put(byte, 8);
  Put(static_cast<uint32_t>(other.accumulator_), other.pending_);
}

std::vector<uint8_t> BitWriter::Finish() const {
  std::vector<uint8_t> out = bytes_;
  if (pending_ > 0) out.push_back(static_cast<uint8_t>(accumulator_ << (8 - pending_)));
  return out;
}

void BitWriter::Clear() {
  bytes_.clear();
  accumulator_ = 0;
  pending_ = 0;
}

}  // namespace tessel::platform::wmv3
