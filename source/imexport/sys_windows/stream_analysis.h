// Stream analysis: what a file holds, in the host's terms. AnalyzeSource opens the
// reader and walks its streams once (AnalyzeOpenedSource is that walk alone),
// publishing stream objects with their formats into input (or, for a detection, only
// answering whether a stream can be served); PrepareVideoStream commits a movie stream
// to one output type before its first frame. Both run on the caller's thread, one at a
// time per session.
#pragma once

#include <mfidl.h>

#include "import_streams.h"
#include "mf_reader_session.h"
#include "vorna/mediasession_converter.h"
#include "vorna/url.h"

namespace tessel {

// input is the loader that receives the streams, or a null reference for a detection.
// detectVideo: succeed at the first video stream that takes an output type, else the
// wrong-type error. detectAudio: stop at the first audio stream. skipVideo: pass over
// video streams.
vorna::Result<void> AnalyzeSource(MFReaderSession& session, const vorna::Url& url,
                                  const vorna::MediaConverterInterface& input, vorna::Bool detectVideo,
                                  vorna::Bool detectAudio, vorna::Bool skipVideo);

// The walk of AnalyzeSource over a session whose reader is open already.
vorna::Result<void> AnalyzeOpenedSource(MFReaderSession& session, const vorna::MediaConverterInterface& input,
                                        vorna::Bool detectVideo, vorna::Bool detectAudio, vorna::Bool skipVideo);

// squarePixels: the host selected a negative format key.
vorna::Result<void> PrepareVideoStream(MediaStreamMovieStreamWinMFImportImpl& stream, MFReaderSession& session,
                                       vorna::Bool squarePixels);

// The row pitch of mediaType in bytes, negative for bottom-up rows.
vorna::Result<vorna::Int> GetDefaultStrideFromType(IMFMediaType* mediaType);

}  // namespace tessel
