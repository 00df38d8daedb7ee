// The sRGB transfer function as IEC 61966-2-1:1999 defines it: a linear segment
// below 0.0031308 (0.04045 encoded) and a power of 1/2.4 with offset 0.055 above.
#include "vorna/pixel/colortransfer.h"

#include <cmath>

namespace vorna::pixel {
namespace {

double EncodeSrgb(double linear) {
  return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

double DecodeSrgb(double encoded) {
  return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

template <double (*CURVE)(double)>
TransferTable MakeTable() {
  TransferTable table{};
  for (size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<uint8_t>(std::lround(CURVE(static_cast<double>(i) / 255.0) * 255.0));
  return table;
}

}  // namespace

Transfer TransferOf(ColorProfile profile) {
  switch (profile) {
    case ColorProfile::Srgb:
    case ColorProfile::Sgrey:
    case ColorProfile::Yuv:
      return Transfer::Srgb;
    case ColorProfile::LinearRgb:
    case ColorProfile::LinearGrey:
      return Transfer::Linear;
    case ColorProfile::None:
    case ColorProfile::Cmyk:
      break;
  }
  return Transfer::None;
}

const TransferTable* FindTransferTable(Transfer from, Transfer to) {
  static const TransferTable kLinearToSrgb = MakeTable<&EncodeSrgb>();
  static const TransferTable kSrgbToLinear = MakeTable<&DecodeSrgb>();
  if (from == Transfer::Linear && to == Transfer::Srgb) return &kLinearToSrgb;
  if (from == Transfer::Srgb && to == Transfer::Linear) return &kSrgbToLinear;
  return nullptr;
}

void ApplyTransfer(uint8_t* rgba, int64_t count, const TransferTable& table) {
  for (int64_t i = 0; i < count; ++i, rgba += 4) {
    rgba[0] = table[rgba[0]];
    rgba[1] = table[rgba[1]];
    rgba[2] = table[rgba[2]];
  }
}

}  // namespace vorna::pixel
