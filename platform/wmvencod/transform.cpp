#include "wmvencod/transform.h"

#include <array>

namespace tessel::platform::wmv3 {
namespace {

// Squared norms of the basis rows: T * T^t is diagonal with these.
constexpr std::array<int, 8> kBasisNorm = {1152, 1156, 1168, 1156, 1152, 1156, 1168, 1156};

// One forward row: out[k] = sum over x of T[k][x] * in[x * step].
template <typename In>
void Forward1d(const In* in, int step, int32_t* out, int outStep) {
  int32_t s0 = in[0] + in[7 * step], d0 = in[0] - in[7 * step];
  int32_t s1 = in[step] + in[6 * step], d1 = in[step] - in[6 * step];
  int32_t s2 = in[2 * step] + in[5 * step], d2 = in[2 * step] - in[5 * step];
  int32_t s3 = in[3 * step] + in[4 * step], d3 = in[3 * step] - in[4 * step];
  out[0] = 12 * (s0 + s1 + s2 + s3);
  out[4 * outStep] = 12 * (s0 - s1 - s2 + s3);
  out[2 * outStep] = 16 * (s0 - s3) + 6 * (s1 - s2);
  out[6 * outStep] = 6 * (s0 - s3) - 16 * (s1 - s2);
  out[outStep] = 16 * d0 + 15 * d1 + 9 * d2 + 4 * d3;
  out[3 * outStep] = 15 * d0 - 4 * d1 - 16 * d2 - 9 * d3;
  out[5 * outStep] = 9 * d0 - 16 * d1 + 4 * d2 + 15 * d3;
  out[7 * outStep] = 4 * d0 - 9 * d1 + 15 * d2 - 16 * d3;
}

// One inverse row: out[x] = sum over k of T[k][x] * in[k * step], before rounding.
void Inverse1d(const int32_t* in, int step, int32_t* out) {
  int32_t x0 = in[0], x1 = in[step], x2 = in[2 * step], x3 = in[3 * step];
  int32_t x4 = in[4 * step], x5 = in[5 * step], x6 = in[6 * step], x7 = in[7 * step];
  int32_t t1 = 12 * (x0 + x4), t2 = 12 * (x0 - x4);
  int32_t t3 = 16 * x2 + 6 * x6, t4 = 6 * x2 - 16 * x6;
  int32_t e0 = t1 + t3, e1 = t2 + t4, e2 = t2 - t4, e3 = t1 - t3;
  int32_t o0 = 16 * x1 + 15 * x3 + 9 * x5 + 4 * x7;
  int32_t o1 = 15 * x1 - 4 * x3 - 16 * x5 - 9 * x7;
  int32_t o2 = 9 * x1 - 16 * x3 + 4 * x5 + 15 * x7;
  int32_t o3 = 4 * x1 - 9 * x3 + 15 * x5 - 16 * x7;
  out[0] = e0 + o0;
  out[1] = e1 + o1;
  out[2] = e2 + o2;
  out[3] = e3 + o3;
  out[4] = e3 - o3;
  out[5] = e2 - o2;
  out[6] = e1 - o1;
  out[7] = e0 - o0;
}

}  // namespace

void ForwardTransform8x8(const int16_t* block, int32_t* out) {
  int32_t rows[64];
  for (int y = 0; y < 8; ++y) Forward1d(block + 8 * y, 1, rows + 8 * y, 1);
  for (int x = 0; x < 8; ++x) Forward1d(rows + x, 8, out + x, 8);
}

float ForwardScale(int position) {
  // The inverse computes T^t * C * T / 1024, so C = 1024 * N^-1 * (T X T^t) * N^-1.
  return 1024.0f / (static_cast<float>(kBasisNorm[position >> 3]) * kBasisNorm[position & 7]);
}

void InverseTransform8x8(int16_t* block) {
  int32_t rows[64];
  int32_t in[8], out[8];
  // Rows first, rounded by 4 and shifted by 3.
  for (int y = 0; y < 8; ++y) {
    for (int k = 0; k < 8; ++k) in[k] = block[8 * y + k];
    Inverse1d(in, 1, out);
    for (int x = 0; x < 8; ++x) rows[8 * y + x] = (out[x] + 4) >> 3;
  }
  // Then columns, rounded by 64 and shifted by 7; the lower half rounds up by one more.
  for (int x = 0; x < 8; ++x) {
    Inverse1d(rows + x, 8, out);
    for (int y = 0; y < 8; ++y) block[8 * y + x] = static_cast<int16_t>((out[y] + 64 + (y >= 4 ? 1 : 0)) >> 7);
  }
}

}  // namespace tessel::platform::wmv3
