#include <gtest/gtest.h>

#include "host_environment.h"
#include "vorna/errorbase.h"
#include "vorna_session.h"
#include "vorna_sinks.h"

namespace vorna {
namespace {

class ReadingSessionTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule("net.vorna.test.media");
    ASSERT_FALSE(loaded.IsError());
    _module = loaded.GetValue();
  }
  void TearDown() override { vorna::host::UnloadModule(_module); }

  static Result<std::unique_ptr<vorna::host::ReadingSession>> Open(const char* text) {
    Url url;
    EXPECT_FALSE(url.Set(text).IsError());
    return vorna::host::ReadingSession::Open(url);
  }

  vorna::host::LoadedModule* _module = nullptr;
};

TEST_F(ReadingSessionTest, FindsTheReaderAndDrivesItsSubscribedStreamFrameByFrame) {
  Result<std::unique_ptr<vorna::host::ReadingSession>> opened = Open("memory://pattern.clip");
  ASSERT_FALSE(opened.IsError());
  vorna::host::ReadingSession& session = *opened.GetValue();
  EXPECT_EQ(session.GetDetectedFormats(), std::vector<std::string>{"test.pattern"});
  EXPECT_EQ(session.GetHandler(), "test.pattern");
  ASSERT_EQ(session.GetStreams().GetCount(), 1);

  auto sink = vorna::host::AttachImageSink(session.GetStreams()[0], "vorna.PixelFormats.RGBA:u8");
  ASSERT_TRUE(sink);
  ASSERT_FALSE(session.Execute(TimeValue(0.2), 0).IsError());
  EXPECT_EQ(sink->GetFrameCount(), 0) << "a stream without subscription takes no part";
  ASSERT_FALSE(session.Subscribe(0, MakeData(Int64(1))).IsError());
  ASSERT_FALSE(session.PrepareExecute().IsError());
  ASSERT_FALSE(session.Execute(TimeValue(0.3), 0).IsError());
  vorna::host::ImageFrame frame = sink->GetFrame();
  EXPECT_EQ(frame.width, 4);
  EXPECT_EQ(frame.height, 2);
  EXPECT_EQ(frame.deliveredLines, 2);
  EXPECT_EQ(frame.pixels[0], 3);
  EXPECT_EQ(frame.pixels[3], 255) << "BGRX gives opaque RGBA";
  ASSERT_TRUE(frame.sampleTime.has_value()) << "the frame keeps the properties it was delivered with";
  EXPECT_DOUBLE_EQ(*frame.sampleTime, 0.3);
  EXPECT_FALSE(frame.skippedFrames.has_value());

  Result<void> end = session.Execute(TimeValue(1.0), 0);
  EXPECT_TRUE(IsErrorOfClass(end.GetError(), g_MediaStreamEOFErrorObject));
  EXPECT_EQ(sink->GetFrameCount(), 1);
  EXPECT_FALSE(session.Close().IsError());
}

TEST_F(ReadingSessionTest, AnUnclaimedUrlHasNoReader) {
  Result<std::unique_ptr<vorna::host::ReadingSession>> opened = Open("memory://holiday.mov");
  ASSERT_TRUE(opened.IsError());
  EXPECT_TRUE(IsErrorOfClass(opened.GetError(), g_IoErrorObject));
  Result<CString> message = ErrorOf(opened.GetError()).GetMessage().GetCString();
  EXPECT_STREQ(message.GetValue().GetCString(), "No reader for memory://holiday.mov");
}

}  // namespace
}  // namespace vorna
