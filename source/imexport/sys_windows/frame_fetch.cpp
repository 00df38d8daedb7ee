// Frames by time. The source reader delivers forward only, and a seek lands where the
// platform chooses; so a movie stream keeps its last two samples, reads on while the
// wanted time is close ahead, and seeks only when it lies behind the ring or too far
// ahead of it. Every seek measures where it landed and corrects the session's seek
// margin and the stream's reach for the next one.
#include "frame_fetch.h"

#include <wrl/client.h>

#include <algorithm>
#include <utility>

#include "frame_transfer.h"
#include "import_streams.h"
#include "media_win_mf.h"
#include "vorna/diagnostics.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

using MovieStream = MediaStreamMovieStreamWinMFImportImpl;

// The properties of one delivered frame, bound to stream.
Result<MediaStreamProperties> FrameProperties(const MovieStream& movie, const MediaStreamInterface& stream,
                                              const SampleEntry& entry) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                         CreateObjectOf<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass, VORNA_SOURCE_LOCATION));
  VORNA_RETURN_ON_ERROR(properties.Init(stream));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageWidth, Int64(movie._width)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageHeight, Int64(movie._height)));
  VORNA_RETURN_ON_ERROR(
      properties.SetData(g_mediaFormatImagePixelformat, MakeObjectData(movie._pixelFormat, g_cowReferenceType)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSampletime, FromTicks(entry.time)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSampleduration, FromTicks(entry.duration)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSkippedframes, Int64(movie._skippedFrames)));
  return properties;
}

// Whether wanted can't be had from the ring or by reading on from it.
Bool NeedsSeek(MovieStream& movie, Int wanted, Bool firstReadWanted) {
  SampleRing& ring = movie._samples;
  // The very first fetch reads from where the reader stands, however far wanted lies.
  if (ring.GetCount() == 0) return movie._firstSampleTime != -1 && !firstReadWanted;
  if (wanted < ring.Oldest().time) return true;
  const SampleEntry& newest = ring.Newest();
  return wanted > newest.time + newest.duration + movie._maxSeekDifference;
}

SampleEntry* FindInRing(SampleRing& ring, Int wanted) {
  for (Int i = 0; i < ring.GetCount(); ++i) {
    SampleEntry& entry = ring.At(i);
    if (entry.duration != 0 && entry.time <= wanted && wanted < entry.time + entry.duration) return &entry;
  }
  return nullptr;
}

// A duration that can't be had counts as unknown.
Int DurationOf(IMFSample* sample) {
  LONGLONG duration = 0;
  if (!sample || FAILED(sample->GetSampleDuration(&duration))) return 0;
  return Int(duration);
}

enum class ReadOutcome { OLDEST, NEWEST, READ_ON };

// What to do once the sample read at t, of duration d, is the newest in the ring.
ReadOutcome DecideAfterRead(SampleRing& ring, Int wanted, Int t, Int d) {
  if (d != 0) {
    if (wanted < t) return ReadOutcome::OLDEST;
    return wanted < t + d ? ReadOutcome::NEWEST : ReadOutcome::READ_ON;
  }
  if (wanted == t) return ReadOutcome::NEWEST;
  if (wanted > t || ring.GetCount() < 2) return ReadOutcome::READ_ON;
  // A sample without a duration lies behind wanted: the older entry is to be shown if
  // wanted falls before its end.
  const SampleEntry& older = ring.Oldest();
  return wanted < older.time + older.duration ? ReadOutcome::OLDEST : ReadOutcome::READ_ON;
}

// The end of the stream: the last frame lasts to the end of the stream at least, and
// to the end-of-stream timestamp if it still has no duration.
SampleEntry* EntryAtEnd(MovieStream& movie, Int wanted, Int endTimestamp) {
  if (movie._samples.GetCount() == 0) return nullptr;
  SampleEntry& last = movie._samples.Newest();
  const Int streamEnd = ToTicks(movie._duration);
  if (last.time + last.duration < streamEnd) last.duration = streamEnd - last.time;
  if (last.duration == 0) last.duration = endTimestamp - last.time;
  return last.time <= wanted && wanted < last.time + last.duration ? &last : nullptr;
}

// Reads until a sample covers wanted or the stream ends.
Result<SampleEntry*> ReadUntilCovered(MovieStream& movie, Int wanted, Int* firstRead) {
  IMFSourceReader* reader = movie._session->reader;
  SampleRing& ring = movie._samples;
  for (;;) {
    DWORD flags = 0;
    LONGLONG timestamp = 0;
    IMFSample* sample = nullptr;
    VORNA_RETURN_ON_ERROR(CheckHResult(reader->ReadSample(movie._streamIndex, 0, nullptr, &flags, &timestamp, &sample)));
    const Int t = Int(timestamp);
    if (firstRead) *std::exchange(firstRead, nullptr) = t;
    if (movie._firstSampleTime == -1 && movie._awaitFirstSample) {
      movie._firstSampleTime = t;
      movie._awaitFirstSample = false;
    }
    if (flags & MF_SOURCE_READERF_ENDOFSTREAM) {
      if (sample) sample->Release();
      return EntryAtEnd(movie, wanted, t);
    }
    const Int d = DurationOf(sample);
    if (ring.GetCount() != 0 && ring.Newest().duration == 0) ring.Newest().duration = t - ring.Newest().time;
    VORNA_RETURN_ON_ERROR(ring.Push(t, d, sample));
    switch (DecideAfterRead(ring, wanted, t, d)) {
      case ReadOutcome::OLDEST: return &ring.Oldest();
      case ReadOutcome::NEWEST: return &ring.Newest();
      case ReadOutcome::READ_ON: ++movie._skippedFrames; break;
    }
  }
}

Result<void> SetReaderPosition(IMFSourceReader* reader, Int position) {
  PROPVARIANT value;
  PropVariantInit(&value);
  value.vt = VT_I8;
  value.hVal.QuadPart = position;
  HRESULT hr = reader->SetCurrentPosition(GUID_NULL, value);
  PropVariantClear(&value);
  return CheckHResult(hr);
}

// Refills the ring of movie from where the reader landed, reading up to ticks, and
// learns from the landing: a reader that landed behind ticks grows the session's
// margin; the distance read on from the landing place raises the stream's reach.
Result<void> RefillAfterSeek(MFReaderSession& session, const MediaConverterInterface& input, Int ticks,
                             MovieStream& movie) {
  TimeValue stopwatch;
  stopwatch.Start();
  movie._samples.Clear();
  movie._awaitFirstSample = false;
  const TimeValue target = FromTicks(ticks);
  Int first = 0;
  VORNA_ASSIGN_OR_RETURN(SampleEntry* entry, movie.FindSampleForTime(input, target, &first));
  const Int wantedAgain = ToTicks(target);
  if (first > wantedAgain) session.seekMargin = first + session.seekMargin - wantedAgain;
  if (!entry) return OK;
  const Int distance = entry->time - first;
  movie._maxSeekDifference = std::max(movie._maxSeekDifference, distance);
  stopwatch.Stop();
  DiagnosticOutputString(OUTPUT_DIAGNOSTIC,
                         FormatString("Seek Time: @, SeekTimeDifference: @, Max: @", stopwatch, FromTicks(distance),
                                      FromTicks(movie._maxSeekDifference)),
                         __LINE__, __FILE__);
  return OK;
}

}  // namespace

Result<void> SeekToTime(MFReaderSession& session, const MediaConverterInterface& input, Int ticks,
                        const ObjectInterface& stream) {
  MovieStream* movie = GetComponent<MovieStream>(stream);
  for (;;) {
    const Int margin = session.seekMargin;
    const Int position = std::max(ticks - margin, Int(0));
    VORNA_RETURN_ON_ERROR(SetReaderPosition(session.reader, position));
    if (!movie) break;
    VORNA_RETURN_ON_ERROR(RefillAfterSeek(session, input, ticks, *movie));
    // The position only moves towards 0 while the margin grows, so this ends at the
    // latest when the position has reached 0.
    if (session.seekMargin == margin || std::max(ticks - session.seekMargin, Int(0)) == position) break;
  }
  session.endOfStream = false;
  return OK;
}

Result<SampleEntry*> MediaStreamMovieStreamWinMFImportImpl::FindSampleForTime(const MediaConverterInterface& input,
                                                                             const TimeValue& time, Int* firstRead) {
  Int wanted = ToTicks(time);
  // A time before the first sample means the first sample.
  if (_firstSampleTime != -1) wanted = std::max(wanted, _firstSampleTime);
  if (NeedsSeek(*this, wanted, firstRead != nullptr))
    VORNA_RETURN_ON_ERROR(SeekToTime(*_session, input, wanted, GetObject()));
  if (SampleEntry* hit = FindInRing(_samples, wanted)) return hit;
  return ReadUntilCovered(*this, wanted, firstRead);
}

Result<Bool> MediaStreamMovieStreamWinMFImportImpl::GetVideoFrame(const MediaConverterInterface& input,
                                                                  const MediaStreamImageDataImportInterface& stream,
                                                                  const TimeValue& time, MEDIASESSIONFLAGS flags) {
  _skippedFrames = 0;
  VORNA_ASSIGN_OR_RETURN(SampleEntry* entry, FindSampleForTime(input, time, nullptr));
  if (!entry) return true;
  // The frame on show is still the right one.
  if (entry->time == _lastDeliveredTime && !(flags & MEDIASESSIONFLAGS_FORCE)) return false;
  // Counted as delivered before anything can fail, so a failed transfer isn't repeated
  // for the same time.
  _lastDeliveredTime = entry->time;
  // A stream tick marks a gap without a picture: nothing is delivered, and the frame
  // on show stays, as it does in a gap behind a frame of known duration.
  if (!entry->sample) return false;
  ComPtr<IMFMediaBuffer> buffer;
  VORNA_RETURN_ON_ERROR(CheckHResult(entry->sample->ConvertToContiguousBuffer(&buffer)));
  if (!buffer) return false;
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties, FrameProperties(*this, stream, *entry));
  VORNA_RETURN_ON_ERROR(stream.InitStream(properties));
  const FrameLayout layout{_width, _height, _rotation, _defaultStride, _session->advancedProcessing};
  VORNA_RETURN_ON_ERROR(TransferFrame(buffer.Get(), layout, _pixelFormat, stream, properties));
  return false;
}

}  // namespace tessel
