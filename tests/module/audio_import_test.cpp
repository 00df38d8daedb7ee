#include <gtest/gtest.h>

#include "host_environment.h"
#include "import_test_streams.h"

namespace tessel::testing {
namespace {

using namespace vorna;

constexpr LONGLONG FRAME = 400000;

// A reader with a video stream of 50 frames at index 0 and the sound at index 1.
struct Fixture {
  explicit Fixture(std::vector<ScriptedRead> sound) : reader(ScriptedSourceReader::Create()) {
    reader->AddStream(EvenReads(50, 0, FRAME, FRAME), 50 * FRAME, true);
    reader->AddStream(std::move(sound), 50 * FRAME, false);
    session = SessionOver(reader);
    audio = MakeAudioStream(session, 1);
  }
  ~Fixture() { reader->Release(); }

  Result<void> Deliver(Float64 seconds = 0.0, MEDIASESSIONFLAGS flags = 0) {
    return audio.audio->GetAudioData(MediaConverterInterface(), audio.Stream(), TimeValue(seconds), flags);
  }

  ScriptedSourceReader* reader;
  SessionRef session;
  TestAudioStream audio;
};

TEST(AudioImportTest, TheWholeSoundGoesOutOnceFromTheStartBufferByBuffer) {
  // Three samples, the second with three buffers, and a tick between them.
  Fixture f({{0, FRAME, true, 1}, {FRAME, FRAME, true, 3}, {2 * FRAME, -1, false}, {3 * FRAME, FRAME, true, 1}});
  f.session->seekMargin = 3000000;
  f.session->endOfStream = true;
  ASSERT_FALSE(f.Deliver(1.5, MEDIASESSIONFLAGS_FORCE).IsError());
  EXPECT_EQ(f.reader->positions, std::vector<LONGLONG>{0}) << "the start, whatever the margin";
  EXPECT_FALSE(f.session->endOfStream);
  EXPECT_EQ(f.audio.sink->GetBlockCount(), 5);
  EXPECT_EQ(f.audio.sink->GetBytes(), (std::vector<uint8_t>{0, 0, 1, 0, 1, 1, 1, 2, 3, 0}));

  ASSERT_FALSE(f.Deliver().IsError());
  EXPECT_EQ(f.audio.sink->GetBlockCount(), 5) << "a second Execute delivers nothing";
  EXPECT_EQ(f.reader->positions.size(), 1u);
}

TEST(AudioImportTest, AStreamWithoutSamplesDeliversNothingAndSucceeds) {
  Fixture f({});
  ASSERT_FALSE(f.Deliver().IsError());
  EXPECT_EQ(f.audio.sink->GetBlockCount(), 0);
  EXPECT_TRUE(f.audio.audio->_audioDelivered);
}

TEST(AudioImportTest, AFailedDeliveryIsNotTriedAgain) {
  Fixture f(EvenReads(4, 0, FRAME, FRAME));
  f.reader->failNextRead = E_FAIL;
  EXPECT_TRUE(IsErrorOfClass(f.Deliver().GetError(), g_IllegalStateErrorObject));
  ASSERT_FALSE(f.Deliver().IsError());
  EXPECT_EQ(f.audio.sink->GetBlockCount(), 0);
}

TEST(AudioImportTest, SoundFetchedAfterAFrameRewindsTheFrameFetch) {
  Fixture f(EvenReads(4, 0, FRAME, FRAME));
  TestMovieStream movie = MakeMovieStream(f.session, 0, 50 * FRAME);
  const MediaConverterInterface none;
  ASSERT_FALSE(movie.movie->GetVideoFrame(none, movie.Stream(), TimeValue(1.0), 0).IsError());
  EXPECT_EQ(DeliveredIndex(*movie.sink), 25);
  ASSERT_FALSE(f.Deliver().IsError());
  EXPECT_EQ(f.audio.sink->GetBlockCount(), 4);
  // The ring still covers 1.0 s; the next frame is read on from position 0.
  ASSERT_FALSE(movie.movie->GetVideoFrame(none, movie.Stream(), TimeValue(1.04), 0).IsError());
  EXPECT_EQ(DeliveredIndex(*movie.sink), 26);
  EXPECT_EQ(movie.movie->_skippedFrames, 26);
  EXPECT_EQ(f.reader->positions, std::vector<LONGLONG>{0});
}

}  // namespace
}  // namespace tessel::testing
