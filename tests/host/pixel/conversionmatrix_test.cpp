// Every conversion between the frame formats, on a small image read along rows and columns
// in both directions, as the frame transfer does for each rotation.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <tuple>
#include <vector>

#include "testcolours.h"

namespace vorna::pixel::test {
namespace {

constexpr int kWidth = 6;
constexpr int kHeight = 6;
constexpr int kRowPadding = 5;

// 2x2 blocks of one colour, so that pixels meet in YUV pairs with their own colour along
// any walk. Alpha differs per block.
Colour GridColour(int x, int y) {
  static const Colour kBlocks[] = {
      kBlack, kWhite, kRed, kGreen, kBlue, kGrey, {255, 255, 0, 0}, {0, 255, 255, 0}, {255, 0, 255, 0},
  };
  const int block = (y / 2) * 3 + x / 2;
  Colour c = kBlocks[block];
  c.a = 255 - 25 * block;
  return c;
}

struct SourceImage {
  std::vector<uint8_t> bytes;
  int64_t pitch = 0;
};

SourceImage MakeSource(const std::string& id) {
  SourceImage image;
  image.pitch = kWidth * BytesPerPixel(id) + kRowPadding;
  image.bytes.assign(static_cast<size_t>(image.pitch * kHeight), 0xEE);
  for (int y = 0; y < kHeight; ++y) {
    std::vector<Colour> row;
    for (int x = 0; x < kWidth; ++x) row.push_back(GridColour(x, y));
    const std::vector<uint8_t> encoded = Encode(id, row);
    std::copy(encoded.begin(), encoded.end(), image.bytes.begin() + y * image.pitch);
  }
  return image;
}

// One line of output: where it starts in the source, the step, and which grid pixel
// each output pixel must show.
struct Line {
  int64_t start;
  int64_t stepBits;
  int count;
  std::vector<Colour> expected;
  std::string what;
};

std::vector<Line> Walks(const std::string& id, int64_t pitch) {
  const int64_t bytes = BytesPerPixel(id);
  const int64_t bits = bytes * 8;
  std::vector<Line> lines;
  // A line of count pixels from start, whose pixel k must show pixel(k).
  auto walk = [&lines](int64_t start, int64_t stepBits, int count, auto pixel, const std::string& what) {
    Line line{start, stepBits, count, {}, what};
    for (int k = 0; k < count; ++k) line.expected.push_back(pixel(k));
    lines.push_back(line);
  };
  for (int y = 0; y < kHeight; ++y) {
    const std::string row = "row " + std::to_string(y);
    walk(y * pitch, bits, kWidth, [y](int x) { return GridColour(x, y); }, row + " forwards");
    if (IsYuv(id)) continue;
    walk(y * pitch + (kWidth - 1) * bytes, -bits, kWidth, [y](int x) { return GridColour(kWidth - 1 - x, y); },
         row + " backwards");
  }
  if (IsYuv(id)) return lines;
  for (int x = 0; x < kWidth; ++x) {
    const std::string column = "column " + std::to_string(x);
    walk(x * bytes, 8 * pitch, kHeight, [x](int y) { return GridColour(x, y); }, column + " down");
    walk((kHeight - 1) * pitch + x * bytes, -8 * pitch, kHeight, [x](int y) { return GridColour(x, kHeight - 1 - y); },
         column + " up");
  }
  return lines;
}

class ConversionMatrix : public ::testing::TestWithParam<std::tuple<std::string, std::string>> {
 protected:
  const std::string& src() const { return std::get<0>(GetParam()); }
  const std::string& dst() const { return std::get<1>(GetParam()); }

  ConvertPixelsFunc Function() const { return Converter(src(), dst()); }

  void ExpectPixel(const uint8_t* row, int i, Colour want, const std::string& where) const {
    const Colour got = Decode(dst(), row, i);
    const int tolerance = Tolerance(src()) + Tolerance(dst());
    SCOPED_TRACE(where + ", pixel " + std::to_string(i));
    EXPECT_LE(std::abs(got.r - want.r), tolerance) << got.r << " for " << want.r;
    EXPECT_LE(std::abs(got.g - want.g), tolerance) << got.g << " for " << want.g;
    EXPECT_LE(std::abs(got.b - want.b), tolerance) << got.b << " for " << want.b;
    if (HasAlpha(dst())) {
      EXPECT_EQ(got.a, HasAlpha(src()) ? want.a : 255);
    }
    if (src() != dst()) {
      EXPECT_TRUE(PaddingIsClean(dst(), row, i));
    }
  }
};

TEST_P(ConversionMatrix, EveryWalkGivesTheSourcePixelsInOrder) {
  const ConvertPixelsFunc convert = Function();
  ASSERT_NE(convert, nullptr);
  const SourceImage image = MakeSource(src());
  for (const Line& line : Walks(src(), image.pitch)) {
    const size_t rowBytes = static_cast<size_t>(line.count * BytesPerPixel(dst()));
    std::vector<uint8_t> out(rowBytes + 4, 0xCD);
    convert(out.data(), image.bytes.data() + line.start, line.count, line.stepBits);
    for (int i = 0; i < line.count; ++i) ExpectPixel(out.data(), i, line.expected[i], line.what);
    for (size_t k = rowBytes; k < out.size(); ++k) {
      EXPECT_EQ(out[k], 0xCD) << "written past the row, " << line.what;
    }
  }
}

// Rows long enough for the block loops of the forward paths and their tails, with pairs of
// one colour.
std::vector<Colour> LongRow() {
  std::vector<Colour> row;
  for (int i = 0; i < 40; ++i) {
    const int k = i / 2;
    row.push_back({(k * 53) % 256, (k * 101 + 40) % 256, (k * 29 + 200) % 256, (k * 71) % 256});
  }
  return row;
}

TEST_P(ConversionMatrix, LongRowsReadForwardsGiveTheSourcePixels) {
  const std::vector<Colour> row = LongRow();
  const std::vector<uint8_t> source = Encode(src(), row);
  const int count = static_cast<int>(row.size());
  std::vector<uint8_t> out(static_cast<size_t>(count * BytesPerPixel(dst())));
  Function()(out.data(), source.data(), count, BytesPerPixel(src()) * 8);
  for (int i = 0; i < count; ++i) ExpectPixel(out.data(), i, row[i], "long row");
}

// The tight loop of a forward read and the general loop of any other step agree to the byte.
// YUV is read with its own step only.
class SteppedRead : public ConversionMatrix {};

TEST_P(SteppedRead, MatchesTheForwardRead) {
  const std::vector<uint8_t> packed = Encode(src(), LongRow());
  const int bytes = BytesPerPixel(src());
  const int count = static_cast<int>(packed.size()) / bytes;
  std::vector<uint8_t> spread(packed.size() * 2, 0x77);
  for (int i = 0; i < count; ++i) {
    std::copy_n(packed.begin() + i * bytes, bytes, spread.begin() + i * bytes * 2);
  }
  const size_t outBytes = static_cast<size_t>(count * BytesPerPixel(dst()));
  std::vector<uint8_t> forward(outBytes), stepped(outBytes);
  Function()(forward.data(), packed.data(), count, bytes * 8);
  Function()(stepped.data(), spread.data(), count, bytes * 16);
  EXPECT_EQ(forward, stepped);
}

std::string PairName(const ::testing::TestParamInfo<ConversionMatrix::ParamType>& info) {
  auto shortName = [](std::string id) {
    id = id.substr(id.find('.', 6) + 1);
    for (char& c : id) {
      if (c == '.' || c == ':') c = '_';
    }
    return id;
  };
  return shortName(std::get<0>(info.param)) + "_to_" + shortName(std::get<1>(info.param));
}

INSTANTIATE_TEST_SUITE_P(FrameFormats, ConversionMatrix,
                         ::testing::Combine(::testing::ValuesIn(kFrameFormats), ::testing::ValuesIn(kFrameFormats)),
                         PairName);

std::vector<std::string> RgbFrameFormats() {
  std::vector<std::string> formats;
  for (const std::string& id : kFrameFormats) {
    if (!IsYuv(id)) formats.push_back(id);
  }
  return formats;
}

INSTANTIATE_TEST_SUITE_P(FrameFormats, SteppedRead,
                         ::testing::Combine(::testing::ValuesIn(RgbFrameFormats()), ::testing::ValuesIn(kFrameFormats)),
                         PairName);

}  // namespace
}  // namespace vorna::pixel::test
