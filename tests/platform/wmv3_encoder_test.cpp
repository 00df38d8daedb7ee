// The WMV3 encoder against FFmpeg's decoder: every picture the decoder shows must equal
// the encoder's own reconstruction bit for bit, on clips of every kind, at sizes that
// are and are not whole macroblocks, I-only and I+P, at fixed quantisers and under rate
// control. Also the picture quality, the bit rate held, key frame spacing and refused
// settings.
#include "wmvencod/wmv3_encoder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <ostream>
#include <random>
#include <string>

#include "reference_decoder.h"
#include "wmv3_decoder.h"

namespace tessel::platform_test {
namespace {

using platform::Wmv3Encoder;
using platform::Wmv3EncoderSettings;
using platform::Wmv3Picture;

enum class Clip { kPattern, kNoise, kStill, kPan, kObject, kBars, kChecker };

// A 4:2:0 picture with packed planes.
struct Yuv {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> planes[3];

  Yuv(int w, int h) : width(w), height(h) {
    planes[0].resize(static_cast<size_t>(w) * h);
    planes[1].resize(static_cast<size_t>((w + 1) / 2) * ((h + 1) / 2));
    planes[2].resize(planes[1].size());
  }
  int PlaneWidth(int plane) const { return plane ? (width + 1) / 2 : width; }
  int PlaneHeight(int plane) const { return plane ? (height + 1) / 2 : height; }
  Wmv3Picture View() const {
    Wmv3Picture view;
    for (int p = 0; p < 3; ++p) {
      view.planes[p] = planes[p].data();
      view.strides[p] = PlaneWidth(p);
    }
    return view;
  }
};

// A smooth texture with some detail, sampled at any position.
uint8_t Texture(double x, double y, int plane) {
  double v = 128 + 60 * std::sin(x * 0.11 + plane) * std::cos(y * 0.07) + 30 * std::sin((x + 2 * y) * 0.31) +
             12 * std::sin(x * 1.3) * std::sin(y * 0.9);
  return static_cast<uint8_t>(std::clamp(static_cast<int>(v), 0, 255));
}

Yuv MakePicture(Clip clip, int width, int height, int index, std::mt19937& random) {
  Yuv yuv(width, height);
  for (int p = 0; p < 3; ++p) {
    int w = yuv.PlaneWidth(p), h = yuv.PlaneHeight(p), scale = p ? 2 : 1;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        uint8_t& sample = yuv.planes[p][static_cast<size_t>(y) * w + x];
        switch (clip) {
          case Clip::kPattern:
            sample = static_cast<uint8_t>(((x * scale + 3 * index) / 8 % 2) ? 40 + y * scale : 220 - x * scale / 2);
            break;
          case Clip::kNoise:
            sample = static_cast<uint8_t>(random());
            break;
          case Clip::kStill:
            sample = Texture(x * scale, y * scale, p);
            break;
          case Clip::kPan:
            // Moves 2.5 samples right and half a sample down per picture in luma.
            sample = Texture(x * scale + 2.5 * index, y * scale + 0.5 * index, p);
            break;
          case Clip::kBars:
            // Black and white bars 5 samples wide, moving half a sample per picture.
            sample = static_cast<uint8_t>((2 * x * scale + index) / 10 % 2 ? 255 : 0);
            break;
          case Clip::kChecker:
            // Still macroblocks next to noisy ones, like the squares of a chess board: a
            // skip pattern that no bitplane mode codes better than one bit each.
            sample = (x * scale / 16 + y * scale / 16) % 2 ? static_cast<uint8_t>(random()) : Texture(x, y, p);
            break;
          case Clip::kObject: {
            // A 24x24 square moving 1.5 samples right and down per picture over a still.
            double ox = x * scale - 8 - 1.5 * index, oy = y * scale - 4 - 1.5 * index;
            bool inside = ox >= 0 && ox < 24 && oy >= 0 && oy < 24;
            sample = inside ? Texture(3 * ox + 100, 2 * oy, p) : Texture(x * scale, y * scale, p);
            break;
          }
        }
      }
    }
  }
  return yuv;
}

std::vector<Yuv> MakeClip(Clip clip, int width, int height, int frames) {
  std::mt19937 random(7);
  std::vector<Yuv> pictures;
  for (int i = 0; i < frames; ++i) pictures.push_back(MakePicture(clip, width, height, i, random));
  return pictures;
}

// The reconstruction's planes as packed Yuv.
Yuv Packed(const Wmv3Picture& view, int width, int height) {
  Yuv yuv(width, height);
  for (int p = 0; p < 3; ++p)
    for (int y = 0; y < yuv.PlaneHeight(p); ++y)
      std::memcpy(&yuv.planes[p][static_cast<size_t>(y) * yuv.PlaneWidth(p)], view.planes[p] + y * view.strides[p],
                  yuv.PlaneWidth(p));
  return yuv;
}

struct Encoded {
  std::array<uint8_t, 4> header{};
  std::vector<std::vector<uint8_t>> frames;
  std::vector<bool> keys;
  std::vector<Yuv> reconstructions;
};

Encoded EncodeClip(const Wmv3EncoderSettings& settings, const std::vector<Yuv>& clip) {
  Encoded out;
  std::unique_ptr<Wmv3Encoder> encoder;
  EXPECT_EQ(Wmv3Encoder::Create(settings, &encoder), S_OK);
  if (!encoder) return out;
  out.header = encoder->SequenceHeader();
  for (const Yuv& picture : clip) {
    std::vector<uint8_t> frame;
    bool key = false;
    EXPECT_EQ(encoder->Encode(picture.View(), &frame, &key), S_OK);
    out.frames.push_back(std::move(frame));
    out.keys.push_back(key);
    out.reconstructions.push_back(Packed(encoder->Reconstruction(), settings.width, settings.height));
  }
  return out;
}

// Where two planes first differ ("" when equal), for a readable failure.
std::string FirstDifference(const Yuv& a, const Yuv& b, int plane) {
  int w = a.PlaneWidth(plane);
  const auto& pa = a.planes[plane];
  const auto& pb = b.planes[plane];
  size_t differing = 0, first = pa.size();
  for (size_t i = 0; i < pa.size(); ++i)
    if (pa[i] != pb[i] && differing++ == 0) first = i;
  if (!differing) return "";
  return std::to_string(differing) + " samples differ, first at x " + std::to_string(first % w) + " y " +
         std::to_string(first / w) + ": " + std::to_string(pa[first]) + " vs " + std::to_string(pb[first]);
}

double PlanePsnr(const Yuv& a, const Yuv& b, int plane) { return fixtures::Psnr(a.planes[plane], b.planes[plane]); }

struct ClipCase {
  const char* name;
  Clip clip;
  int width;
  int height;
  int frames;
  int keySpacing;
  int fixedStep;  // 0: rate control at bitRate
  int64_t bitRate;
  bool mainProfile;
  double minPsnr;  // luma, against the source
};

const ClipCase kClipCases[] = {
    {"pattern_iframes_step2", Clip::kPattern, 64, 48, 3, 1, 2, 0, true, 40},
    {"pattern_ip_step9", Clip::kPattern, 64, 48, 5, 5, 9, 0, true, 30},
    {"noise_ip_step3", Clip::kNoise, 48, 32, 4, 4, 3, 0, false, 30},
    {"noise_ip_step62", Clip::kNoise, 48, 32, 4, 4, 62, 0, true, 5},
    {"still_ip_step17", Clip::kStill, 80, 64, 6, 6, 17, 0, true, 30},
    {"pan_ip_step6_odd_size", Clip::kPan, 75, 53, 8, 8, 6, 0, true, 30},
    {"pan_ip_step30", Clip::kPan, 96, 64, 8, 4, 30, 0, false, 24},
    {"pan_smallest", Clip::kPan, 16, 16, 6, 6, 8, 0, true, 25},
    {"pan_ip_step62", Clip::kPan, 64, 64, 6, 6, 62, 0, true, 15},
    {"object_ip_step12", Clip::kObject, 80, 48, 8, 8, 12, 0, true, 28},
    {"bars_ip_step4", Clip::kBars, 48, 48, 6, 6, 4, 0, true, 25},
    {"checker_ip_step8", Clip::kChecker, 64, 48, 4, 4, 8, 0, true, 25},
    // Large levels beyond the code tables: fixed-length escapes with the 3-bit and the
    // unary size header, and levels of more than 7 bits.
    {"noise_iframes_step2", Clip::kNoise, 32, 32, 2, 1, 2, 0, true, 30},
    {"bars_ip_step2", Clip::kBars, 32, 32, 3, 3, 2, 0, false, 30},
    // The widest picture the encoder takes.
    {"pan_widest", Clip::kPan, 4096, 32, 3, 3, 10, 0, true, 25},
    {"pan_ip_rate", Clip::kPan, 112, 80, 10, 5, 0, 400000, true, 25},
    {"noise_ip_rate_tall", Clip::kNoise, 17, 70, 6, 3, 0, 200000, false, 5},
};

void PrintTo(const ClipCase& c, std::ostream* out) { *out << c.name; }

class Wmv3ClipTest : public ::testing::TestWithParam<ClipCase> {};

TEST_P(Wmv3ClipTest, DecoderShowsTheReconstruction) {
  const ClipCase& c = GetParam();
  Wmv3EncoderSettings settings;
  settings.width = c.width;
  settings.height = c.height;
  settings.keyFrameSpacing = c.keySpacing;
  settings.fixedStep = c.fixedStep;
  settings.bitRate = c.bitRate ? c.bitRate : 1000000;
  settings.mainProfile = c.mainProfile;
  std::vector<Yuv> clip = MakeClip(c.clip, c.width, c.height, c.frames);
  Encoded encoded = EncodeClip(settings, clip);
  ASSERT_EQ(encoded.frames.size(), clip.size());

  for (bool bitExact : {false, true}) {
    SCOPED_TRACE(bitExact ? "bit-exact decoder" : "default decoder");
    Wmv3Decoder decoder(encoded.header, c.width, c.height, bitExact);
    ASSERT_TRUE(decoder.IsOpen());
    for (size_t i = 0; i < clip.size(); ++i) {
      SCOPED_TRACE("picture " + std::to_string(i));
      DecodedPicture decoded;
      ASSERT_TRUE(decoder.Decode(encoded.frames[i], encoded.keys[i], &decoded));
      ASSERT_EQ(decoded.width, c.width);
      ASSERT_EQ(decoded.height, c.height);
      EXPECT_EQ(decoded.key, encoded.keys[i]);
      Yuv shown(c.width, c.height);
      for (int p = 0; p < 3; ++p) shown.planes[p] = decoded.planes[p];
      for (int p = 0; p < 3; ++p) ASSERT_EQ(FirstDifference(shown, encoded.reconstructions[i], p), "") << "plane " << p;
    }
  }
  for (size_t i = 0; i < clip.size(); ++i) EXPECT_GE(PlanePsnr(encoded.reconstructions[i], clip[i], 0), c.minPsnr);
}

INSTANTIATE_TEST_SUITE_P(Clips, Wmv3ClipTest, ::testing::ValuesIn(kClipCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Encodes the clip and returns all frames' bytes in one vector.
std::vector<uint8_t> AllBytes(const Encoded& encoded) {
  std::vector<uint8_t> bytes;
  for (const auto& frame : encoded.frames) bytes.insert(bytes.end(), frame.begin(), frame.end());
  return bytes;
}

Wmv3EncoderSettings PanSettings(int width, int height) {
  Wmv3EncoderSettings settings;
  settings.width = width;
  settings.height = height;
  return settings;
}

struct KeyCase {
  int spacing;
  int rateNum;
  int frames;
  std::vector<int> keys;
};

TEST(Wmv3EncoderTest, KeyFramesComeAtTheSpacing) {
  // Spacing 0 means five seconds' worth of pictures.
  const KeyCase cases[] = {{1, 30, 3, {0, 1, 2}}, {3, 30, 8, {0, 3, 6}}, {0, 2, 12, {0, 10}}, {0, 30, 4, {0}}};
  for (const KeyCase& c : cases) {
    SCOPED_TRACE("spacing " + std::to_string(c.spacing) + " at " + std::to_string(c.rateNum) + " fps");
    Wmv3EncoderSettings settings = PanSettings(32, 32);
    settings.keyFrameSpacing = c.spacing;
    settings.rateNum = c.rateNum;
    Encoded encoded = EncodeClip(settings, MakeClip(Clip::kPan, 32, 32, c.frames));
    std::vector<int> keys;
    for (size_t i = 0; i < encoded.keys.size(); ++i)
      if (encoded.keys[i]) keys.push_back(static_cast<int>(i));
    EXPECT_EQ(keys, c.keys);
  }
}

TEST(Wmv3EncoderTest, ForcedKeyFrameRestartsTheSpacing) {
  Wmv3EncoderSettings settings = PanSettings(32, 32);
  settings.keyFrameSpacing = 3;
  std::unique_ptr<Wmv3Encoder> encoder;
  ASSERT_EQ(Wmv3Encoder::Create(settings, &encoder), S_OK);
  std::vector<int> keys;
  std::vector<Yuv> clip = MakeClip(Clip::kPan, 32, 32, 9);
  for (size_t i = 0; i < clip.size(); ++i) {
    if (i == 4) encoder->ForceKeyFrame();
    std::vector<uint8_t> frame;
    bool key = false;
    ASSERT_EQ(encoder->Encode(clip[i].View(), &frame, &key), S_OK);
    if (key) keys.push_back(static_cast<int>(i));
  }
  EXPECT_EQ(keys, (std::vector<int>{0, 3, 4, 7}));
}

TEST(Wmv3EncoderTest, RateControlHoldsTheBitRate) {
  const int kFrames = 60;
  for (int64_t bitRate : {150000, 500000, 1200000}) {
    SCOPED_TRACE("bit rate " + std::to_string(bitRate));
    Wmv3EncoderSettings settings = PanSettings(160, 96);
    settings.bitRate = bitRate;
    settings.keyFrameSpacing = 30;
    Encoded encoded = EncodeClip(settings, MakeClip(Clip::kPan, 160, 96, kFrames));
    size_t bytes = 0;
    for (const auto& frame : encoded.frames) bytes += frame.size();
    double reached = static_cast<double>(bytes) * 8 * settings.rateNum / settings.rateDen / kFrames;
    EXPECT_NEAR(reached / static_cast<double>(bitRate), 1.0, 0.10);
  }
}

TEST(Wmv3EncoderTest, RateControlFollowsAChangeOfScene) {
  // A pan, then noise that takes many times its bits at the same step: the budget must
  // hold over the cut too.
  const int kFrames = 40;
  std::vector<Yuv> clip = MakeClip(Clip::kPan, 96, 64, kFrames / 2);
  std::vector<Yuv> noise = MakeClip(Clip::kNoise, 96, 64, kFrames / 2);
  clip.insert(clip.end(), noise.begin(), noise.end());
  Wmv3EncoderSettings settings = PanSettings(96, 64);
  settings.bitRate = 1500000;
  settings.keyFrameSpacing = 100;
  size_t bytes = AllBytes(EncodeClip(settings, clip)).size();
  double reached = static_cast<double>(bytes) * 8 * settings.rateNum / settings.rateDen / kFrames;
  EXPECT_NEAR(reached / static_cast<double>(settings.bitRate), 1.0, 0.10);
}

TEST(Wmv3EncoderTest, StreamDoesNotDependOnTheThreadCount) {
  // Rows are analysed, coded and written on the pool's threads in any order; the bits
  // must come out the same, escape size announcement included.
  std::vector<Yuv> clip = MakeClip(Clip::kObject, 96, 80, 5);
  std::vector<uint8_t> reference;
  for (int threads : {1, 2, 5}) {
    SCOPED_TRACE(std::to_string(threads) + " threads");
    Wmv3EncoderSettings settings = PanSettings(96, 80);
    settings.threads = threads;
    settings.bitRate = 300000;
    std::vector<uint8_t> bytes = AllBytes(EncodeClip(settings, clip));
    if (reference.empty())
      reference = bytes;
    else
      EXPECT_EQ(bytes, reference);
  }
}

TEST(Wmv3EncoderTest, ReadsPlanesThroughTheirStrides) {
  // The same pictures with padded rows, and bottom-up (last row first, negative
  // stride), code to the same stream as packed ones.
  const int kWidth = 40, kHeight = 24;
  std::vector<Yuv> clip = MakeClip(Clip::kPan, kWidth, kHeight, 3);
  Wmv3EncoderSettings settings = PanSettings(kWidth, kHeight);
  std::vector<uint8_t> packed = AllBytes(EncodeClip(settings, clip));
  for (int layout = 0; layout < 2; ++layout) {
    SCOPED_TRACE(layout == 0 ? "padded rows" : "bottom-up rows");
    std::unique_ptr<Wmv3Encoder> encoder;
    ASSERT_EQ(Wmv3Encoder::Create(settings, &encoder), S_OK);
    std::vector<uint8_t> bytes;
    for (const Yuv& picture : clip) {
      std::vector<uint8_t> storage[3];
      Wmv3Picture view;
      for (int p = 0; p < 3; ++p) {
        int w = picture.PlaneWidth(p), h = picture.PlaneHeight(p), stride = w + 13;
        storage[p].assign(static_cast<size_t>(stride) * h, 0xEE);
        for (int y = 0; y < h; ++y) {
          int row = layout == 0 ? y : h - 1 - y;
          std::memcpy(&storage[p][static_cast<size_t>(row) * stride], &picture.planes[p][static_cast<size_t>(y) * w],
                      w);
        }
        view.planes[p] = layout == 0 ? storage[p].data() : &storage[p][static_cast<size_t>(h - 1) * stride];
        view.strides[p] = layout == 0 ? stride : -stride;
      }
      std::vector<uint8_t> frame;
      bool key = false;
      ASSERT_EQ(encoder->Encode(view, &frame, &key), S_OK);
      bytes.insert(bytes.end(), frame.begin(), frame.end());
    }
    EXPECT_EQ(bytes, packed);
  }
}

// Reads `count` bits of the sequence header from bit `first` on, first bit first.
int HeaderBits(const std::array<uint8_t, 4>& header, int first, int count) {
  uint32_t word = static_cast<uint32_t>(header[0]) << 24 | header[1] << 16 | header[2] << 8 | header[3];
  return static_cast<int>((word >> (32 - first - count)) & ((1u << count) - 1));
}

TEST(Wmv3EncoderTest, SequenceHeaderCarriesProfileAndHints) {
  // The decoder does not check the frame and bit rate hints, so they are read here:
  // (frames per second - 2) / 4 and (kbit/s - 32) / 64, each clamped to its field.
  struct HeaderCase {
    bool main;
    int rateNum, rateDen;
    int64_t bitRate;
    int profile, frameRateCode, bitRateCode;
  };
  const HeaderCase cases[] = {
      {true, 30, 1, 1000000, 1, 7, 15},
      {false, 30000, 1001, 500000, 0, 7, 7},
      {true, 10, 1, 96000, 1, 2, 1},
      {true, 1, 1, 20000, 1, 0, 0},
      {false, 60, 1, 8000000, 0, 7, 31},
  };
  for (const HeaderCase& c : cases) {
    SCOPED_TRACE(std::to_string(c.rateNum) + "/" + std::to_string(c.rateDen) + " fps, " + std::to_string(c.bitRate));
    Wmv3EncoderSettings settings = PanSettings(32, 32);
    settings.mainProfile = c.main;
    settings.rateNum = c.rateNum;
    settings.rateDen = c.rateDen;
    settings.bitRate = c.bitRate;
    std::unique_ptr<Wmv3Encoder> encoder;
    ASSERT_EQ(Wmv3Encoder::Create(settings, &encoder), S_OK);
    const std::array<uint8_t, 4>& header = encoder->SequenceHeader();
    EXPECT_EQ(HeaderBits(header, 0, 2), c.profile);
    EXPECT_EQ(HeaderBits(header, 4, 3), c.frameRateCode);
    EXPECT_EQ(HeaderBits(header, 7, 5), c.bitRateCode);
    EXPECT_EQ(HeaderBits(header, 12, 1), 0);   // no loop filter
    EXPECT_EQ(HeaderBits(header, 16, 1), 1);   // fast UV motion compensation
    EXPECT_EQ(HeaderBits(header, 25, 3), 0);   // no B-frames
    EXPECT_EQ(HeaderBits(header, 28, 2), 3);   // uniform quantiser
  }
}

TEST(Wmv3EncoderTest, RefusesBadSettingsAndPointers) {
  auto with = [](auto change) {
    Wmv3EncoderSettings settings = PanSettings(64, 48);
    change(settings);
    return settings;
  };
  const Wmv3EncoderSettings refused[] = {
      with([](auto& s) { s.width = 15; }),           with([](auto& s) { s.height = 4097; }),
      with([](auto& s) { s.width = -64; }),          with([](auto& s) { s.rateNum = 0; }),
      with([](auto& s) { s.rateDen = -1; }),         with([](auto& s) { s.bitRate = 0; }),
      with([](auto& s) { s.keyFrameSpacing = -1; }), with([](auto& s) { s.fixedStep = 1; }),
      with([](auto& s) { s.fixedStep = 63; }),       with([](auto& s) { s.threads = -2; }),
  };
  for (const Wmv3EncoderSettings& settings : refused) {
    std::unique_ptr<Wmv3Encoder> encoder;
    EXPECT_EQ(Wmv3Encoder::Create(settings, &encoder), E_INVALIDARG);
    EXPECT_FALSE(encoder);
  }
  EXPECT_EQ(Wmv3Encoder::Create(PanSettings(64, 48), nullptr), E_POINTER);

  std::unique_ptr<Wmv3Encoder> encoder;
  ASSERT_EQ(Wmv3Encoder::Create(PanSettings(64, 48), &encoder), S_OK);
  Yuv picture(64, 48);
  Wmv3Picture missingPlane = picture.View();
  missingPlane.planes[2] = nullptr;
  std::vector<uint8_t> frame;
  bool key = false;
  EXPECT_EQ(encoder->Encode(missingPlane, &frame, &key), E_POINTER);
  EXPECT_EQ(encoder->Encode(picture.View(), nullptr, &key), E_POINTER);
  EXPECT_EQ(encoder->Encode(picture.View(), &frame, nullptr), E_POINTER);
  EXPECT_EQ(encoder->Encode(picture.View(), &frame, &key), S_OK);
  EXPECT_TRUE(key);
}

}  // namespace
}  // namespace tessel::platform_test
