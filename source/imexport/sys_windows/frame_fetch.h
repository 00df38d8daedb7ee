// Frames by time: the body of the loaders' Execute, and the seek that moves a reader
// and refills a movie stream's ring. Runs on the thread of the host's Execute.
#pragma once

#include "mf_reader_session.h"
#include "vorna/mediasession_converter.h"
#include "vorna/timevalue.h"

namespace tessel {

// Selects the subscribed streams of input, prepares movie streams once, and delivers
// each stream's frame or sound for time; the EOF error "End of stream" when the last
// subscribed movie stream has no frame for time.
vorna::Result<void> ExecuteOnStreams(MFReaderSession& session, const vorna::MediaConverterInterface& input,
                                     const vorna::TimeValue& time, vorna::MEDIASESSIONFLAGS flags);

// Moves the reader to ticks less the session's seek margin; for a movie stream, refills
// its ring and grows the margin while the reader lands behind the target. For any other
// stream (the rewind of the sound) it only moves the reader.
vorna::Result<void> SeekToTime(MFReaderSession& session, const vorna::MediaConverterInterface& input,
                               vorna::Int ticks, const vorna::ObjectInterface& stream);

}  // namespace tessel
