#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include <mfapi.h>
#include <wrl/client.h>

#include <cstring>
#include <vector>

#include "frame_transfer.h"
#include "host_environment.h"
#include "published_objects.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"
#include "vorna_sinks.h"

namespace tessel {
namespace {

using namespace vorna;
using Microsoft::WRL::ComPtr;

VORNA_DEFINE_OBJECT_USE(g_imageImportClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");

constexpr DWORD FOURCC_RGB24 = 20;

// Source pixel (column c, row r) of every test picture, as BGR: blue c, green r, red 9.
void PutPixel(BYTE* p, int c, int r) {
  p[0] = BYTE(c);
  p[1] = BYTE(r);
  p[2] = 9;
}

// A plain buffer with rows of pitch bytes, the top row first or, bottomUp, last.
ComPtr<IMFMediaBuffer> PlainBuffer(int columns, int rows, int pitch, bool bottomUp) {
  ComPtr<IMFMediaBuffer> buffer;
  EXPECT_EQ(MFCreateMemoryBuffer(DWORD(rows * pitch), &buffer), S_OK);
  BYTE* data = nullptr;
  buffer->Lock(&data, nullptr, nullptr);
  std::memset(data, 0xEE, size_t(rows * pitch));
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < columns; ++c) PutPixel(data + (bottomUp ? rows - 1 - r : r) * pitch + 3 * c, c, r);
  buffer->Unlock();
  buffer->SetCurrentLength(DWORD(rows * pitch));
  return buffer;
}

// A 2D RGB24 buffer of the platform, filled through its own top line and pitch.
ComPtr<IMFMediaBuffer> ImageBuffer(int columns, int rows, bool bottomUp) {
  ComPtr<IMFMediaBuffer> buffer;
  EXPECT_EQ(MFCreate2DMediaBuffer(DWORD(columns), DWORD(rows), FOURCC_RGB24, bottomUp, &buffer), S_OK);
  ComPtr<IMF2DBuffer> image;
  EXPECT_EQ(buffer->QueryInterface(IID_PPV_ARGS(&image)), S_OK);
  BYTE* top = nullptr;
  LONG pitch = 0;
  image->Lock2D(&top, &pitch);
  for (int r = 0; r < rows; ++r)
    for (int c = 0; c < columns; ++c) PutPixel(top + r * pitch + 3 * c, c, r);
  image->Unlock2D();
  return buffer;
}

struct Delivery {
  Result<void> result;
  host::ImageFrame frame;
  int64_t frames = 0;
};

// Runs the transfer of buffer into a host image stream as the frame fetch does: a
// BGR:u8 frame of the layout's size, kept by an RGBA sink.
Delivery Transfer(IMFMediaBuffer* buffer, const FrameLayout& layout) {
  StrongRef<MediaStreamImageDataImportInterface> stream = testing::MakeObject<MediaStreamImageDataImportInterface>(g_imageImportClass);
  auto sink = host::AttachImageSink(stream, "vorna.PixelFormats.RGBA:u8");
  MediaStreamProperties properties = testing::MakeObject<MediaStreamPropertiesInterface>(g_propertiesClass);
  PixelFormat bgr = GetPixelFormat(g_pixelFormatBGRu8);
  EXPECT_FALSE(properties.Init(stream).IsError());
  EXPECT_FALSE(properties.SetData(g_mediaFormatImageWidth, Int64(layout.width)).IsError());
  EXPECT_FALSE(properties.SetData(g_mediaFormatImageHeight, Int64(layout.height)).IsError());
  EXPECT_FALSE(properties.SetData(g_mediaFormatImagePixelformat, MakeObjectData(bgr, g_cowReferenceType)).IsError());
  EXPECT_FALSE(stream.InitStream(properties).IsError());
  Delivery delivery{TransferFrame(buffer, layout, bgr, stream, properties), {}, 0};
  delivery.frame = sink->GetFrame();
  delivery.frames = sink->GetFrameCount();
  return delivery;
}

// Output pixel (x, y) must be source pixel (c, r).
void ExpectSourcePixel(const host::ImageFrame& frame, int x, int y, int c, int r) {
  const uint8_t* p = &frame.pixels[size_t(y * frame.bytesPerLine + x * 4)];
  EXPECT_EQ(p[0], 9) << "red at " << x << "," << y;
  EXPECT_EQ(p[1], uint8_t(r)) << "source row of output " << x << "," << y;
  EXPECT_EQ(p[2], uint8_t(c)) << "source column of output " << x << "," << y;
}

void ExpectUpright(const Delivery& delivery, int width, int height) {
  ASSERT_FALSE(delivery.result.IsError());
  ASSERT_EQ(delivery.frame.width, width);
  ASSERT_EQ(delivery.frame.height, height);
  EXPECT_EQ(delivery.frame.deliveredLines, height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) ExpectSourcePixel(delivery.frame, x, y, x, y);
}

TEST(FrameTransferTest, PlainBuffersTopDownAndBottomUp) {
  // Rows of 3 pixels padded to 12 bytes; the stride says where each row lies.
  ComPtr<IMFMediaBuffer> topDown = PlainBuffer(3, 5, 12, false);
  ExpectUpright(Transfer(topDown.Get(), {3, 5, 0, 12, true}), 3, 5);
  ComPtr<IMFMediaBuffer> bottomUp = PlainBuffer(3, 5, 12, true);
  ExpectUpright(Transfer(bottomUp.Get(), {3, 5, 0, -12, true}), 3, 5);
}

TEST(FrameTransferTest, ImageBuffersGiveTheirOwnTopLineAndPitch) {
  // The default stride is wrong on purpose: a 2D buffer is read by its own pitch.
  ComPtr<IMFMediaBuffer> topDown = ImageBuffer(3, 4, false);
  ExpectUpright(Transfer(topDown.Get(), {3, 4, 0, 9, true}), 3, 4);
  ComPtr<IMFMediaBuffer> bottomUp = ImageBuffer(3, 4, true);
  ExpectUpright(Transfer(bottomUp.Get(), {3, 4, 0, 9, false}), 3, 4);
}

TEST(FrameTransferTest, WithoutAdvancedProcessingPlainRowsAre32ByteAligned) {
  // Ten BGR pixels make 30 bytes; the platform's rows then lie 32 bytes apart.
  ComPtr<IMFMediaBuffer> aligned = PlainBuffer(10, 3, 32, false);
  ExpectUpright(Transfer(aligned.Get(), {10, 3, 0, 30, false}), 10, 3);
  // With advanced processing the stride is taken as it is.
  ComPtr<IMFMediaBuffer> packed = PlainBuffer(10, 3, 30, false);
  ExpectUpright(Transfer(packed.Get(), {10, 3, 0, 30, true}), 10, 3);
  // A bottom-up stride is not rounded.
  ComPtr<IMFMediaBuffer> bottomUp = PlainBuffer(10, 3, 30, true);
  ExpectUpright(Transfer(bottomUp.Get(), {10, 3, 0, -30, false}), 10, 3);
}

TEST(FrameTransferTest, ABufferTooSmallForItsRowsIsRefusedAndTheFrameStillFinished) {
  ComPtr<IMFMediaBuffer> packed = PlainBuffer(10, 3, 30, false);
  Delivery delivery = Transfer(packed.Get(), {10, 3, 0, 30, false});
  EXPECT_TRUE(IsErrorOfClass(delivery.result.GetError(), g_IllegalStateErrorObject)) << "3 rows of 32 bytes";
  EXPECT_EQ(delivery.frames, 1);
  EXPECT_EQ(delivery.frame.deliveredLines, 0);
  BYTE* data = nullptr;
  EXPECT_EQ(packed->Lock(&data, nullptr, nullptr), S_OK) << "the refused buffer was unlocked";
  packed->Unlock();
}

// The source of a turned frame has the delivered width as its number of rows.
TEST(FrameTransferTest, QuarterTurnsReadSourceColumns) {
  constexpr int W = 4, H = 2;
  for (bool image : {false, true}) {
    SCOPED_TRACE(image ? "2D buffer" : "plain buffer");
    for (int rotation : {90, 270}) {
      SCOPED_TRACE(rotation);
      // A source of W rows by H columns, bottom-up for the plain buffer.
      ComPtr<IMFMediaBuffer> buffer = image ? ImageBuffer(H, W, false) : PlainBuffer(H, W, 3 * H, true);
      Delivery delivery = Transfer(buffer.Get(), {W, H, rotation, -3 * H, true});
      ASSERT_FALSE(delivery.result.IsError());
      EXPECT_EQ(delivery.frame.deliveredLines, H);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          // 90: line y is source column y from the bottom row up; 270: column H-1-y
          // from the top row down.
          if (rotation == 90)
            ExpectSourcePixel(delivery.frame, x, y, y, W - 1 - x);
          else
            ExpectSourcePixel(delivery.frame, x, y, H - 1 - y, x);
        }
    }
  }
}

TEST(FrameTransferTest, HalfTurnReadsRowsBackwardsIntoTheOppositeLine) {
  constexpr int W = 3, H = 5;
  ComPtr<IMFMediaBuffer> buffer = PlainBuffer(W, H, 12, false);
  Delivery delivery = Transfer(buffer.Get(), {W, H, 180, 12, true});
  ASSERT_FALSE(delivery.result.IsError());
  EXPECT_EQ(delivery.frame.deliveredLines, H);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x) ExpectSourcePixel(delivery.frame, x, y, W - 1 - x, H - 1 - y);
}

TEST(FrameTransferTest, EmptyFramesAndUnknownRotationsDeliverNoPixelButFinish) {
  ComPtr<IMFMediaBuffer> buffer = PlainBuffer(3, 5, 12, false);
  Delivery noRows = Transfer(buffer.Get(), {3, 0, 0, 12, true});
  EXPECT_FALSE(noRows.result.IsError());
  EXPECT_EQ(noRows.frames, 1);
  EXPECT_EQ(noRows.frame.deliveredLines, 0);

  Delivery noColumns = Transfer(buffer.Get(), {0, 5, 0, 12, true});
  EXPECT_FALSE(noColumns.result.IsError());
  EXPECT_EQ(noColumns.frame.deliveredLines, 5) << "every line is sent, with no pixel";

  Delivery skewed = Transfer(buffer.Get(), {3, 5, 45, 12, true});
  EXPECT_FALSE(skewed.result.IsError());
  EXPECT_EQ(skewed.frames, 1);
  EXPECT_EQ(skewed.frame.deliveredLines, 0);
}

TEST(FrameTransferTest, ManyLinesReachTheImageFromSeveralJobs) {
  constexpr int W = 7, H = 300;
  ComPtr<IMFMediaBuffer> buffer = PlainBuffer(W, H, 24, true);
  ExpectUpright(Transfer(buffer.Get(), {W, H, 0, -24, true}), W, H);
}

}  // namespace
}  // namespace tessel
