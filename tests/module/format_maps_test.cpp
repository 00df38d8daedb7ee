#include <gtest/gtest.h>

#include <mfapi.h>

#include <string>
#include <thread>
#include <vector>

#include "host_environment.h"
#include "mf_format_maps.h"

namespace tessel {
namespace {

using namespace vorna;

std::string NameOf(const PixelFormat& format) { return format ? format.GetShortName().GetCString() : "null"; }

// Each test builds the maps itself, with the processing it names.
class FormatMapsTest : public ::testing::Test {
 protected:
  void SetUp() override { MFFormatMaps::Free(); }
  void TearDown() override { MFFormatMaps::Free(); }
};

TEST_F(FormatMapsTest, SubtypesGiveTheirPixelFormatsAndLaterRowsWin) {
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB32, true)), "vorna.PixelFormats.BGRA:u8");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_ARGB32, true)), "vorna.PixelFormats.BGRA:u8");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB24, true)), "vorna.PixelFormats.BGR:u8");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB555, true)), "vorna.PixelFormats.BGR:u555");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB565, true)), "vorna.PixelFormats.BGR:u565");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_YUY2, true)), "vorna.PixelFormats.YUV:i422a");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_YVYU, true)), "vorna.PixelFormats.YUV:i422b");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_MP4V, true)), "vorna.PixelFormats.BGRX:u8");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_HEVC, true)), "vorna.PixelFormats.BGRX:u8") << "fallback";
  EXPECT_EQ(MFFormatMaps::GetSubtypeMap().GetCount(), 9);
  EXPECT_EQ(MFFormatMaps::GetPixelFormatMap().GetCount(), 7);
}

TEST_F(FormatMapsTest, PixelFormatsGiveTheirSubtypesWithRgb32AsFallback) {
  auto subtypeOf = [](ObjectUseRecord& format) { return PixelFormatToSubtype(GetPixelFormat(format), true); };
  EXPECT_EQ(subtypeOf(g_pixelFormatBGRXu8), MFVideoFormat_RGB32);
  EXPECT_EQ(subtypeOf(g_pixelFormatBGRAu8), MFVideoFormat_RGB32) << "ARGB32 is only a key of the subtype map";
  EXPECT_EQ(subtypeOf(g_pixelFormatBGRu8), MFVideoFormat_RGB24);
  EXPECT_EQ(subtypeOf(g_pixelFormatBGRu565), MFVideoFormat_RGB565);
  EXPECT_EQ(subtypeOf(g_pixelFormatYUVi422b), MFVideoFormat_YVYU);
  EXPECT_EQ(subtypeOf(g_pixelFormatRGBAu8), MFVideoFormat_RGB32) << "fallback";
  EXPECT_EQ(PixelFormatToSubtype(PixelFormat(), true), MFVideoFormat_RGB32) << "a null format is no key";
}

TEST_F(FormatMapsTest, TheH264RowFollowsTheSessionThatBuildsTheMaps) {
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_H264, false)), "vorna.PixelFormats.YUV:i422a");
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_H264, true)), "vorna.PixelFormats.YUV:i422a")
      << "later sessions don't change a built map";
  MFFormatMaps::Free();
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_H264, true)), "vorna.PixelFormats.BGRX:u8");
}

TEST_F(FormatMapsTest, CandidatesStartWithTheWantedFormatThenTheWholeMap) {
  Result<BaseArray<ReaderCandidate>> made = MakeVideoCandidates(GetPixelFormat(g_pixelFormatBGRu8), true);
  ASSERT_FALSE(made.IsError());
  const BaseArray<ReaderCandidate>& candidates = made.GetValue();
  ASSERT_EQ(candidates.GetCount(), 8);
  EXPECT_EQ(candidates[0].subtype, MFVideoFormat_RGB24);
  EXPECT_EQ(NameOf(candidates[0].format), "vorna.PixelFormats.BGR:u8");
  Int rgb32 = 0;
  for (Int i = 1; i < candidates.GetCount(); ++i) rgb32 += candidates[i].subtype == MFVideoFormat_RGB32;
  EXPECT_EQ(rgb32, 2) << "BGRX and BGRA both ask for RGB32";
}

TEST_F(FormatMapsTest, ThreadsRacingForTheFirstUseAllSeeTheBuiltMaps) {
  std::vector<std::thread> threads;
  std::vector<std::string> seen(8);
  for (size_t i = 0; i < seen.size(); ++i)
    threads.emplace_back([&seen, i] { seen[i] = NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB32, true)); });
  for (std::thread& thread : threads) thread.join();
  for (const std::string& name : seen) EXPECT_EQ(name, "vorna.PixelFormats.BGRA:u8");
  EXPECT_EQ(MFFormatMaps::GetSubtypeMap().GetCount(), 9);
}

TEST_F(FormatMapsTest, WithoutMemoryTheLookupsFallBackAndTheNextUseBuilds) {
  vorna::host::FailAllocationsAfter(2);
  PixelFormat fallback = SubtypeToPixelFormat(MFVideoFormat_RGB24, true);
  vorna::host::FailAllocationsAfter(-1);
  EXPECT_EQ(NameOf(fallback), "vorna.PixelFormats.BGRX:u8");
  EXPECT_EQ(MFFormatMaps::GetSubtypeMap().GetCount(), 0) << "a half-built map is dropped";
  EXPECT_EQ(NameOf(SubtypeToPixelFormat(MFVideoFormat_RGB24, true)), "vorna.PixelFormats.BGR:u8");
  EXPECT_EQ(MFFormatMaps::GetPixelFormatMap().GetCount(), 7);
}

}  // namespace
}  // namespace tessel
