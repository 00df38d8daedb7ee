// The import through the host's session driver, with the real module loaded, on the
// generated clips: frames by time, turned frames, the sound, and the loader's states.
#include <gtest/gtest.h>

#include <cstdlib>

#include "fixtures.h"
#include "frame_code.h"
#include "host_environment.h"
#include "loaded_module.h"
#include "vorna/errorbase.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

using host::ReadingSession;

class ImportSessionTest : public tessel::testing::WithLoadedModule<> {
 protected:

  static std::unique_ptr<ReadingSession> Open(const char* clip) {
    Url url;
    EXPECT_FALSE(url.Set(tessel::fixtures::Path(clip).c_str()).IsError());
    Result<std::unique_ptr<ReadingSession>> opened = ReadingSession::Open(url);
    EXPECT_FALSE(opened.IsError()) << clip;
    return opened.IsError() ? nullptr : std::move(opened.GetValue());
  }

  // The sink that attach gives the first stream of session that takes one, subscribed
  // under format key; null when no stream takes it.
  template <typename ATTACH>
  static auto Subscribe(ReadingSession& session, Int64 key, ATTACH&& attach) {
    for (Int i = 0; i < session.GetStreams().GetCount(); ++i) {
      auto sink = attach(session.GetStreams()[i]);
      if (!sink) continue;
      EXPECT_FALSE(session.Subscribe(i, MakeData(key)).IsError());
      return sink;
    }
    ADD_FAILURE() << "no stream of the kind of key " << key;
    return decltype(attach(session.GetStreams()[0]))();
  }

  // The first image stream of session with a sink, subscribed under format key 1.
  static std::shared_ptr<host::ImageSink> SubscribeVideo(ReadingSession& session) {
    return Subscribe(session, 1,
                     [](const auto& stream) { return host::AttachImageSink(stream, "vorna.PixelFormats.RGBA:u8"); });
  }
  static std::shared_ptr<host::AudioSink> SubscribeAudio(ReadingSession& session) {
    return Subscribe(session, 0, [](const auto& stream) { return host::AttachAudioSink(stream); });
  }

  // The frame number drawn into the delivered frame; rotation is the clockwise turn
  // the frame was given, so the code is read where the turn put the original top rows.
  static int FrameNumber(const host::ImageFrame& frame, int rotation = 0) {
    const int w = int(frame.width), h = int(frame.height);
    const bool quarter = rotation == 90 || rotation == 270;
    const int originalWidth = quarter ? h : w, originalHeight = quarter ? w : h;
    auto luma = [&](int x, int y) {
      int fx = x, fy = y;
      if (rotation == 90) fx = w - 1 - y, fy = x;
      if (rotation == 180) fx = w - 1 - x, fy = h - 1 - y;
      if (rotation == 270) fx = y, fy = h - 1 - x;
      return int(frame.pixels[size_t(fy * frame.bytesPerLine + fx * 4 + 1)]);
    };
    return tessel::fixtures::ReadFrameCode(luma, originalWidth, originalHeight);
  }

};

TEST_F(ImportSessionTest, FramesByTimeForwardBackwardAndToTheEnd) {
  const tessel::fixtures::Clip& clip = tessel::fixtures::kMovieAac;
  std::unique_ptr<ReadingSession> session = Open(clip.name);
  ASSERT_TRUE(session);
  auto sink = SubscribeVideo(*session);
  ASSERT_TRUE(sink);
  ASSERT_FALSE(session->PrepareExecute().IsError());

  for (auto [seconds, frame] : {std::pair{0.0, 0}, {0.5, 12}, {0.52, 13}, {1.0, 25}, {0.2, 5}, {1.96, 49}, {0.0, 0}}) {
    SCOPED_TRACE(seconds);
    ASSERT_FALSE(session->Execute(TimeValue(seconds), 0).IsError());
    host::ImageFrame image = sink->GetFrame();
    EXPECT_EQ(image.width, clip.width);
    EXPECT_EQ(image.height, clip.height);
    EXPECT_EQ(image.deliveredLines, clip.height);
    EXPECT_EQ(FrameNumber(image), frame);
  }
  const int64_t delivered = sink->GetFrameCount();
  EXPECT_FALSE(session->Execute(TimeValue(0.01), 0).IsError());
  EXPECT_EQ(sink->GetFrameCount(), delivered) << "the frame on show is not delivered again";

  Result<void> end = session->Execute(TimeValue(3.0), 0);
  EXPECT_TRUE(IsErrorOfClass(end.GetError(), g_MediaStreamEOFErrorObject));
  EXPECT_EQ(std::string(ErrorOf(end.GetError()).GetMessage().GetCString().GetValue().GetCString()), "End of stream");
  EXPECT_FALSE(session->Close().IsError());
}

TEST_F(ImportSessionTest, TurnedClipsAreDeliveredUpright) {
  for (auto [clip, rotation] : {std::pair{tessel::fixtures::kRotated90, 90}, {tessel::fixtures::kRotated180, 180},
                                {tessel::fixtures::kRotated270, 270}}) {
    SCOPED_TRACE(clip.name);
    std::unique_ptr<ReadingSession> session = Open(clip.name);
    ASSERT_TRUE(session);
    auto sink = SubscribeVideo(*session);
    ASSERT_TRUE(sink);
    ASSERT_FALSE(session->Execute(TimeValue(0.4), 0).IsError());
    host::ImageFrame image = sink->GetFrame();
    const bool quarter = rotation != 180;
    EXPECT_EQ(image.width, quarter ? clip.height : clip.width);
    EXPECT_EQ(image.height, quarter ? clip.width : clip.height);
    EXPECT_EQ(FrameNumber(image, rotation), 10);
  }
}

TEST_F(ImportSessionTest, TheSoundOfAMovieComesOnceWithItsFrames) {
  std::unique_ptr<ReadingSession> session = Open(tessel::fixtures::kMovieAac.name);
  ASSERT_TRUE(session);
  auto image = SubscribeVideo(*session);
  auto sound = SubscribeAudio(*session);
  ASSERT_TRUE(image && sound);
  ASSERT_FALSE(session->Execute(TimeValue(1.0), 0).IsError());
  EXPECT_EQ(FrameNumber(image->GetFrame()), 25);
  // Two seconds of stereo at 48 kHz in samples of at least 16 bits.
  const size_t bytes = sound->GetBytes().size();
  EXPECT_GE(bytes, size_t(2 * 48000 * 2 * 2 * 95 / 100));
  ASSERT_FALSE(session->Execute(TimeValue(1.04), 0).IsError());
  EXPECT_EQ(FrameNumber(image->GetFrame()), 26) << "the frame fetch goes on after the rewind";
  EXPECT_EQ(sound->GetBytes().size(), bytes) << "the sound goes out once";
}

TEST_F(ImportSessionTest, AnAudioFileAnswersEveryExecute) {
  std::unique_ptr<ReadingSession> session = Open(tessel::fixtures::kAudioMp3);
  ASSERT_TRUE(session);
  auto sound = SubscribeAudio(*session);
  ASSERT_TRUE(sound);
  ASSERT_FALSE(session->Execute(TimeValue(0.0), 0).IsError());
  EXPECT_GT(sound->GetBlockCount(), 0);
  EXPECT_FALSE(session->Execute(TimeValue(100.0), 0).IsError()) << "sound never ends a session";
}

TEST_F(ImportSessionTest, AClosedLoaderRefusesToExecute) {
  std::unique_ptr<ReadingSession> session = Open(tessel::fixtures::kMovieAac.name);
  ASSERT_TRUE(session);
  auto sink = SubscribeVideo(*session);
  ASSERT_TRUE(sink);
  ASSERT_FALSE(session->Close().IsError());
  Result<void> refused = session->Execute(TimeValue(0.0), 0);
  EXPECT_TRUE(IsErrorOfClass(refused.GetError(), g_IllegalStateErrorObject));
  EXPECT_EQ(ErrorOf(refused.GetError()).GetMessage().GetLength(), 0);
}

}  // namespace
}  // namespace vorna
