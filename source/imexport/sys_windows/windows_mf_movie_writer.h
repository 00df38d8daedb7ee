// WindowsMFMovieWriter: the module's one wrapper round the platform's sink writer. A
// saver embeds one, opens it on the first frame with everything the platform is told
// about the movie (container, codec, bit rate, size, rate, aspect, the sound), hands it
// one frame per call, and finishes it at the end. Used by one thread at a time; only the
// row loop of WriteFrame runs on several, and it only fills a memory buffer.
#pragma once

#include <mfreadwrite.h>
#include <wrl/client.h>

#include "export_geometry.h"
#include "movie_codecs.h"
#include "vorna/audioobject.h"
#include "vorna/delegate.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/mediasession_stream.h"
#include "vorna/pixelhandler.h"
#include "vorna/timevalue.h"
#include "vorna/url.h"

namespace tessel {

using GetPixelsDelegate = vorna::Delegate<vorna::Result<vorna::GetPixelHandlerStruct<>>(const vorna::PixelFormat&)>;

class WindowsMFMovieWriter {
 public:
  // Opens the sink writer with its audio stream (if audio has a sound object) and its
  // video stream, starts writing and gives the platform the whole sound at time 0. On
  // failure nothing stays open; a file the platform created stays as it left it.
  vorna::Result<void> Init(const vorna::Url& url, vorna::Int width, vorna::Int height, vorna::Float64 pixelAspect,
                           const MovieContainer& container, vorna::Float64 fps, const vorna::DataDictionary& settings,
                           const vorna::MediaStreamAudioDataExportInterface& audio);

  // Packs one picture, fetched row by row in the writer's pixel format, into a sample
  // at time for duration and writes it. A failed fetch writes nothing.
  vorna::Result<void> WriteFrame(const vorna::TimeValue& time, const vorna::TimeValue& duration,
                                 const GetPixelsDelegate& getPixels);

  // Finalizes the file. On failure the sink writer is kept, released with the writer.
  vorna::Result<void> Finish();

  // Owned; null while no movie is open. Releasing it without Finish leaves the file as
  // the platform left it.
  Microsoft::WRL::ComPtr<IMFSinkWriter> _sinkWriter;
  DWORD _videoStream = 0;
  vorna::Int _width = 0;
  vorna::Int _alignedWidth = 0;
  vorna::Int _height = 0;
  vorna::Int _alignedHeight = 0;
  vorna::Bool _flipRows = false;
  vorna::Bool _yuvInput = false;
};

}  // namespace tessel
