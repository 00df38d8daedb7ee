#include <gtest/gtest.h>
#include <wrl/client.h>

#include "host_environment.h"
#include "import_test_streams.h"

namespace tessel::testing {
namespace {

using namespace vorna;
using Microsoft::WRL::ComPtr;

constexpr LONGLONG FRAME = 400000;  // 25 frames per second, in ticks

// A reader with one video stream of count frames of FRAME ticks each, from 0.
struct Fixture {
  explicit Fixture(int count, LONGLONG duration = FRAME, LONGLONG streamTicks = 0)
      : reader(ScriptedSourceReader::Create()) {
    reader->AddStream(EvenReads(count, 0, FRAME, duration), count * FRAME, true);
    Start(streamTicks ? streamTicks : count * FRAME);
  }
  Fixture(std::vector<ScriptedRead> reads, LONGLONG endTime, LONGLONG streamTicks)
      : reader(ScriptedSourceReader::Create()) {
    reader->AddStream(std::move(reads), endTime, true);
    Start(streamTicks);
  }
  ~Fixture() { reader->Release(); }

  void Start(LONGLONG streamTicks) {
    session = SessionOver(reader);
    stream = MakeMovieStream(session, 0, streamTicks);
  }

  // The frame fetch as Execute runs it; the Bool is true when there is no frame.
  Bool Fetch(Float64 seconds, MEDIASESSIONFLAGS flags = 0) {
    Result<Bool> result = stream.movie->GetVideoFrame(MediaConverterInterface(), stream.Stream(), TimeValue(seconds), flags);
    EXPECT_FALSE(result.IsError());
    return !result.IsError() && result.GetValue();
  }
  // The entry the fetch would show at ticks, or -1 for none.
  LONGLONG Find(LONGLONG ticks) {
    Result<SampleEntry*> entry = stream.movie->FindSampleForTime(MediaConverterInterface(), FromTicks(ticks), nullptr);
    EXPECT_FALSE(entry.IsError());
    return entry.IsError() || !entry.GetValue() ? -1 : entry.GetValue()->time;
  }
  int64_t Frames() const { return stream.sink->GetFrameCount(); }
  int Shown() const { return DeliveredIndex(*stream.sink); }

  ScriptedSourceReader* reader;
  SessionRef session;
  TestMovieStream stream;
};

TEST(FrameFetchTest, TheFirstFetchReadsFromTheStartWithoutSeeking) {
  Fixture f(300);
  EXPECT_FALSE(f.Fetch(10.0));
  EXPECT_TRUE(f.reader->positions.empty());
  EXPECT_EQ(f.stream.movie->_skippedFrames, 250);
  EXPECT_EQ(f.Shown(), 250);
  EXPECT_EQ(f.Frames(), 1);
  EXPECT_EQ(f.stream.movie->_firstSampleTime, 0);
}

TEST(FrameFetchTest, TimesBeforeTheFirstSampleShowTheFirstSample) {
  // Samples from half a second on, without durations.
  Fixture f(EvenReads(20, 5000000, FRAME, -1), 5000000 + 20 * FRAME, 5000000 + 20 * FRAME);
  EXPECT_EQ(f.Find(0), 5000000) << "known only once its successor is read";
  EXPECT_EQ(f.reader->readCount, 2);
  EXPECT_EQ(f.Find(1000000), 5000000);
  EXPECT_EQ(f.reader->readCount, 2) << "the ring has it";
  EXPECT_TRUE(f.reader->positions.empty());
}

TEST(FrameFetchTest, BetweenFramesAndInGaps) {
  // Two frames, a gap of 0.12 s, two frames.
  Fixture f({{0, FRAME}, {FRAME, FRAME}, {5 * FRAME, FRAME}, {6 * FRAME, FRAME}}, 7 * FRAME, 7 * FRAME);
  EXPECT_EQ(f.Find(FRAME / 2), 0);
  EXPECT_EQ(f.Find(FRAME + FRAME / 2), FRAME);
  EXPECT_EQ(f.Find(3 * FRAME), FRAME) << "the frame before the gap stays on show";
  EXPECT_EQ(f.Find(5 * FRAME + 1), 5 * FRAME);
  EXPECT_TRUE(f.reader->positions.empty());
}

TEST(FrameFetchTest, AFrameOnShowIsDeliveredAgainOnlyWhenForced) {
  Fixture f(50);
  EXPECT_FALSE(f.Fetch(0.4));
  EXPECT_EQ(f.Frames(), 1);
  EXPECT_FALSE(f.Fetch(0.4));
  EXPECT_FALSE(f.Fetch(0.43)) << "another time inside the same frame";
  EXPECT_EQ(f.Frames(), 1);
  EXPECT_FALSE(f.Fetch(0.4, MEDIASESSIONFLAGS_FORCE));
  EXPECT_EQ(f.Frames(), 2);
  EXPECT_EQ(f.Shown(), 10);
}

TEST(FrameFetchTest, TheLastFrameLastsToTheEndOfTheStream) {
  // Ten frames without durations in a stream of half a second.
  Fixture f(10, -1, 5000000);
  EXPECT_FALSE(f.Fetch(0.45));
  EXPECT_EQ(f.Shown(), 9);
  EXPECT_TRUE(f.Fetch(0.5)) << "at the end of the stream there is no frame";
  EXPECT_TRUE(f.Fetch(3.0));
  EXPECT_EQ(f.Frames(), 1);
}

TEST(FrameFetchTest, ASeekComesOneTickBehindTheReachOfTheRing) {
  Fixture f(300);
  EXPECT_EQ(f.Find(10000000), 10000000);
  // The ring ends at 10.4 M ticks; reading on reaches 2 M ticks further.
  const LONGLONG reach = 10000000 + FRAME + f.stream.movie->_maxSeekDifference;
  ASSERT_EQ(ToTicks(FromTicks(reach)), reach);
  EXPECT_EQ(f.Find(reach), reach);
  EXPECT_TRUE(f.reader->positions.empty());
  const LONGLONG beyond = reach + FRAME + f.stream.movie->_maxSeekDifference + 1;
  ASSERT_EQ(ToTicks(FromTicks(beyond)), beyond);
  EXPECT_EQ(f.Find(beyond), beyond / FRAME * FRAME);
  EXPECT_EQ(f.reader->positions, std::vector<LONGLONG>{beyond});
}

TEST(FrameFetchTest, OneFrameBackSeeksAndLearnsHowFarToReadOn) {
  Fixture f(300);
  Console::Clear();
  EXPECT_EQ(f.Find(10000000), 10000000);
  EXPECT_EQ(f.Find(10000000 - 2 * FRAME), 10000000 - 2 * FRAME) << "one frame before the ring";
  EXPECT_EQ(f.reader->positions, std::vector<LONGLONG>{10000000 - 2 * FRAME});
  // Landed on the key frame at 0.48 s and read on for 0.44 s.
  EXPECT_EQ(f.stream.movie->_maxSeekDifference, 10000000 - 2 * FRAME - 12 * FRAME);
  EXPECT_EQ(f.session->seekMargin, 0) << "a landing before the target changes no margin";
  EXPECT_NE(Console::Text().find("Seek Time: "), std::string::npos);
  EXPECT_NE(Console::Text().find("SeekTimeDifference: 440.0 ms, Max: 440.0 ms"), std::string::npos);
}

TEST(FrameFetchTest, ALandingBehindTheTargetGrowsTheMarginAndSeeksAgain) {
  Fixture f(300);
  f.reader->landing = ScriptedSourceReader::Landing::KEY_FRAME_AFTER;
  EXPECT_FALSE(f.Fetch(5.0));
  EXPECT_FALSE(f.Fetch(1.0));
  EXPECT_EQ(f.Shown(), 25);
  // Aimed at 1.0 s, landed on the key frame at 1.44 s: 0.44 s more margin, and the next
  // aim at 0.56 s lands at 0.96 s, before the target.
  EXPECT_EQ(f.reader->positions, (std::vector<LONGLONG>{10000000, 5600000}));
  EXPECT_EQ(f.session->seekMargin, 4400000);
  // The margin is kept: a seek to 0.2 s aims at 0.
  EXPECT_FALSE(f.Fetch(0.2));
  EXPECT_EQ(f.Shown(), 5);
  EXPECT_EQ(f.reader->positions.back(), 0);
  EXPECT_EQ(f.session->seekMargin, 4400000);
}

TEST(FrameFetchTest, ASeekPastTheEndFindsNothing) {
  Fixture f(300);
  EXPECT_EQ(f.Find(10000000), 10000000);
  const int reads = f.reader->readCount;
  EXPECT_EQ(f.Find(2000000000), -1);
  EXPECT_EQ(f.reader->positions, std::vector<LONGLONG>{2000000000});
  EXPECT_EQ(f.reader->readCount, reads + 2) << "the inner read and one more";
  EXPECT_EQ(f.stream.movie->_samples.GetCount(), 0);
  EXPECT_EQ(f.session->seekMargin, 0);
}

TEST(FrameFetchTest, AStreamTickDeliversNoPicture) {
  Fixture f({{0, FRAME}, {FRAME, -1, false}, {2 * FRAME, FRAME}}, 3 * FRAME, 3 * FRAME);
  EXPECT_FALSE(f.Fetch(0.05));
  EXPECT_EQ(f.Frames(), 0);
  EXPECT_FALSE(f.Fetch(0.09));
  EXPECT_EQ(f.Shown(), 2);
}

TEST(FrameFetchTest, AFailedReadEndsTheFetchAndKeepsTheRing) {
  Fixture f(50);
  EXPECT_EQ(f.Find(0), 0);
  f.reader->failNextRead = E_FAIL;
  Result<Bool> failed = f.stream.movie->GetVideoFrame(MediaConverterInterface(), f.stream.Stream(), TimeValue(0.05), 0);
  EXPECT_TRUE(IsErrorOfClass(failed.GetError(), g_IllegalStateErrorObject));
  EXPECT_EQ(f.stream.movie->_samples.GetCount(), 1);
  EXPECT_FALSE(f.Fetch(0.05));
  EXPECT_EQ(f.Shown(), 1);
}

}  // namespace
}  // namespace tessel::testing
