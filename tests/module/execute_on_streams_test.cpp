#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "frame_fetch.h"
#include "host_environment.h"
#include "import_test_streams.h"
#include "media_win_mf.h"
#include "published_objects.h"

namespace tessel::testing {
namespace {

using namespace vorna;

VORNA_DEFINE_OBJECT_USE(g_converterBaseClass, "vorna.MediaConverterBaseClass");

constexpr LONGLONG FRAME = 400000;

// Adds stream to input with one format under key, subscribed to it if subscribe.
void Publish(const MediaConverterInterface& input, const ObjectInterface& stream, Int64 key, bool subscribe) {
  MediaStream media(Cast<MediaStreamInterface>(stream));
  MediaStreamProperties format = MakeObject<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass);
  ASSERT_FALSE(media.AddFormat(MakeData(key), format).IsError());
  if (subscribe) {
    ASSERT_FALSE(media.SubscribeStream(MakeData(key)).IsError());
  }
  ASSERT_FALSE(input.AddOutputStream(media).IsError());
}

// Two seconds of frames at index 0, the sound at index 1, one second of frames at 2.
struct Fixture {
  Fixture() : reader(ScriptedSourceReader::Create()) {
    reader->AddStream(EvenReads(50, 0, FRAME, FRAME), 50 * FRAME, true);
    reader->AddStream(EvenReads(3, 0, FRAME, FRAME), 3 * FRAME, false);
    reader->AddStream(EvenReads(25, 0, FRAME, FRAME), 25 * FRAME, true);
    session = SessionOver(reader);
    input = MakeObject<MediaConverterInterface>(g_converterBaseClass);
  }
  ~Fixture() { reader->Release(); }

  Result<void> Execute(Float64 seconds) { return ExecuteOnStreams(*session, input, TimeValue(seconds), 0); }

  ScriptedSourceReader* reader;
  SessionRef session;
  StrongRef<MediaConverterInterface> input;
};

TEST(ExecuteOnStreamsTest, AnInputWithoutStreamsIsInAnIllegalState) {
  Fixture f;
  Result<void> refused = f.Execute(0.0);
  EXPECT_TRUE(IsErrorOfClass(refused.GetError(), g_IllegalStateErrorObject));
  EXPECT_TRUE(f.reader->selections.empty());
}

TEST(ExecuteOnStreamsTest, SubscribedStreamsAreSelectedFirstAndServedInOrder) {
  Fixture f;
  TestMovieStream movie = MakeMovieStream(f.session, 0, 50 * FRAME);
  TestAudioStream sound = MakeAudioStream(f.session, 1);
  TestMovieStream idle = MakeMovieStream(f.session, 2, 25 * FRAME);
  Publish(f.input, movie.object, -1, true);
  Publish(f.input, sound.object, 0, true);
  Publish(f.input, idle.object, 1, false);

  ASSERT_FALSE(f.Execute(0.4).IsError());
  EXPECT_EQ(f.reader->selections, (std::vector<DWORD>{0, 1}));
  EXPECT_EQ(DeliveredIndex(*movie.sink), 10);
  EXPECT_EQ(sound.sink->GetBlockCount(), 3);
  EXPECT_EQ(idle.sink->GetFrameCount(), 0);

  ASSERT_FALSE(f.Execute(0.44).IsError());
  EXPECT_EQ(DeliveredIndex(*movie.sink), 11);
  EXPECT_EQ(sound.sink->GetBlockCount(), 3);
}

TEST(ExecuteOnStreamsTest, TheEndOfTheLastMovieStreamEndsExecute) {
  Fixture f;
  TestMovieStream first = MakeMovieStream(f.session, 0, 50 * FRAME);
  TestMovieStream last = MakeMovieStream(f.session, 2, 25 * FRAME);
  Publish(f.input, first.object, 1, true);
  Publish(f.input, last.object, 1, true);

  ASSERT_FALSE(f.Execute(0.8).IsError());
  Result<void> end = f.Execute(1.2);
  EXPECT_TRUE(IsErrorOfClass(end.GetError(), g_MediaStreamEOFErrorObject)) << "the last stream lasts 1 s";
  EXPECT_EQ(std::string(ErrorOf(end.GetError()).GetMessage().GetCString().GetValue().GetCString()), "End of stream");
  EXPECT_EQ(DeliveredIndex(*first.sink), 30);
  EXPECT_TRUE(f.session->endOfStream);
  EXPECT_FALSE(f.Execute(0.4).IsError());
  EXPECT_FALSE(f.session->endOfStream);
}

}  // namespace
}  // namespace tessel::testing
