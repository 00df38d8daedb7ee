#include "import_test_streams.h"

#include <gtest/gtest.h>

#include "media_win_mf.h"

namespace tessel::testing {

using namespace vorna;

namespace {

ObjectRef MakeObject(ObjectDefinitionRecord& definition) {
  Result<ObjectRef> object = CreateObjectOfClass(GetDefinedClass(definition), VORNA_SOURCE_LOCATION);
  EXPECT_FALSE(object.IsError());
  return object.IsError() ? ObjectRef() : object.GetValue();
}

}  // namespace

SessionRef SessionOver(ScriptedSourceReader* reader) {
  Result<SessionRef> session = SessionRef::Create();
  EXPECT_FALSE(session.IsError());
  reader->AddRef();
  session.GetValue()->reader = reader;
  return session.GetValue();
}

TestMovieStream MakeMovieStream(const SessionRef& session, UINT32 streamIndex, Int durationTicks) {
  TestMovieStream stream;
  stream.object = MakeObject(g_movieStreamClass);
  stream.movie = GetComponent<MediaStreamMovieStreamWinMFImportImpl>(stream.object);
  stream.sink = host::AttachImageSink(stream.object, "vorna.PixelFormats.RGBA:u8");
  MediaStreamMovieStreamWinMFImportImpl& movie = *stream.movie;
  movie._streamIndex = streamIndex;
  movie._session = session;
  movie._pixelFormat = GetPixelFormat(g_pixelFormatBGRu8);
  movie._defaultStride = 8;
  movie._width = movie._displayWidth = 2;
  movie._height = movie._displayHeight = 2;
  movie._duration = FromTicks(durationTicks);
  movie._frameRate = 25.0;
  movie._prepared = true;
  movie._maxSeekDifference = 2000000;
  return stream;
}

TestAudioStream MakeAudioStream(const SessionRef& session, UINT32 streamIndex) {
  TestAudioStream stream;
  stream.object = MakeObject(g_audioStreamClass);
  stream.audio = GetComponent<MediaStreamAudioStreamWinMFImportImpl>(stream.object);
  stream.sink = host::AttachAudioSink(stream.object);
  stream.audio->_streamIndex = streamIndex;
  stream.audio->_session = session;
  return stream;
}

int DeliveredIndex(const host::ImageSink& sink) {
  host::ImageFrame frame = sink.GetFrame();
  if (frame.pixels.size() < 4) return -1;
  return frame.pixels[2] + 256 * frame.pixels[1];
}

}  // namespace tessel::testing
