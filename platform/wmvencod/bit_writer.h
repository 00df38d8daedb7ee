// Writes a bitstream most significant bit first, as the WMV3 bitstream is read.
#pragma once

#include <cstdint>
#include <vector>

#include "wmvencod/vc1_tables.h"

namespace tessel::platform::wmv3 {

class BitWriter {
 public:
  // The `count` low bits of value (count at most 32).
  void Put(uint32_t value, int count);
  void PutBit(bool bit) { Put(bit ? 1 : 0, 1); }
  void Put(const VlcCode& code) { Put(code.code, code.length); }
  // Appends everything another writer holds.
  void Append(const BitWriter& other);
  int64_t BitCount() const { return static_cast<int64_t>(bytes_.size()) * 8 + pending_; }
  // The bytes written so far, the last one filled with zero bits.
  std::vector<uint8_t> Finish() const;
  void Clear();

 private:
  std::vector<uint8_t> bytes_;
  uint64_t accumulator_ = 0;  // the pending_ bits not yet in bytes_, in the low bits
  int pending_ = 0;
};

}  // namespace tessel::platform::wmv3
