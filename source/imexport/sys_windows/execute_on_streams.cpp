// The body of the loaders' Execute: every subscribed stream of the input gets its frame
// or its sound for the asked time. All of them are selected at the reader before any
// sample is read, since the reader delivers only selected streams.
#include "frame_fetch.h"
#include "import_streams.h"
#include "stream_analysis.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;

namespace {

using MovieStream = MediaStreamMovieStreamWinMFImportImpl;
using AudioStream = MediaStreamAudioStreamWinMFImportImpl;

// A negative format key selects the square-pixel variant. A stream without a readable
// key is served in its own format (key 0).
Bool WantsSquarePixels(const MediaStreamInterface& stream) {
  Result<Int64> key = GetDataValue<Int64>(stream.GetSelectedFormat());
  return !key.IsError() && key.GetValue() < 0;
}

Result<void> SelectStream(MFReaderSession& session, const MediaStreamInterface& stream) {
  if (MovieStream* movie = GetComponent<MovieStream>(stream)) {
    VORNA_RETURN_ON_ERROR(CheckHResult(session.reader->SetStreamSelection(movie->_streamIndex, TRUE)));
    if (!movie->_prepared) VORNA_RETURN_ON_ERROR(PrepareVideoStream(*movie, session, WantsSquarePixels(stream)));
  } else if (AudioStream* audio = GetComponent<AudioStream>(stream)) {
    VORNA_RETURN_ON_ERROR(CheckHResult(session.reader->SetStreamSelection(audio->_streamIndex, TRUE)));
  }
  return OK;
}

Result<void> DeliverStream(MFReaderSession& session, const MediaConverterInterface& input,
                           const MediaStreamInterface& stream, const TimeValue& time, MEDIASESSIONFLAGS flags) {
  if (MovieStream* movie = GetComponent<MovieStream>(stream)) {
    VORNA_ASSIGN_OR_RETURN(session.endOfStream,
                           movie->GetVideoFrame(input, Cast<MediaStreamImageDataImportInterface>(stream), time, flags));
  } else if (AudioStream* audio = GetComponent<AudioStream>(stream)) {
    VORNA_RETURN_ON_ERROR(audio->GetAudioData(input, Cast<MediaStreamAudioDataImportInterface>(stream), time, flags));
  }
  return OK;
}

}  // namespace

Result<void> ExecuteOnStreams(MFReaderSession& session, const MediaConverterInterface& input, const TimeValue& time,
                              MEDIASESSIONFLAGS flags) {
  VORNA_ASSIGN_OR_RETURN(BaseArray<MediaStream> streams, input.GetOutputStreams(0));
  if (streams.GetCount() == 0) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  for (const MediaStream& stream : streams)
    if (stream.IsSubscribed()) VORNA_RETURN_ON_ERROR(SelectStream(session, stream));
  for (const MediaStream& stream : streams)
    if (stream.IsSubscribed()) VORNA_RETURN_ON_ERROR(DeliverStream(session, input, stream, time, flags));
  if (!session.endOfStream) return OK;
  String message = String::FromLiteral("End of stream");
  return RaiseError(g_MediaStreamEOFErrorObject, VORNA_SOURCE_LOCATION, &message);
}

}  // namespace tessel
