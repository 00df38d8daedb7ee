// WindowsAviMovieWriter: one AVI file through Video for Windows, with one compressed
// video stream and at most one stream of sound. The AVI saver embeds one, opens it on
// the first frame, gives it the sound once and one frame per call, and ends it by
// releasing its handles. Frames have no time of their own: they are numbered, and the
// stream's rate does the rest. Used by one thread at a time; only WriteFrame's row loop
// runs on several, each job writing its own rows of the one frame buffer.
#pragma once

#include <vfw.h>

#include "vorna/audioobject.h"
#include "vorna/basearray.h"
#include "vorna/datadictionary.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/url.h"
#include "windows_mf_movie_writer.h"

namespace tessel {

class WindowsAviMovieWriter {
 public:
  // Creates the file (replacing a file that is there), the video stream, its compressor
  // (the stored choice of settings, or raw I420 without one) and the frame format.
  // Nothing is undone on a failure: End releases what exists.
  vorna::Result<void> Init(const vorna::Url& url, vorna::Int width, vorna::Int height,
                           const vorna::DataDictionary& settings, vorna::Float64 fps);

  // Writes the whole sound as a stream of its own; nothing for an empty sound or one of
  // more than two channels.
  vorna::Result<void> WriteAudio(const vorna::AudioObjectInterface& audio);

  // Fetches one picture as 8-bit BGR rows into the frame buffer, bottom row first when
  // flip is set, and writes it as the next frame. time and duration are not read: the
  // frame's number is its place.
  vorna::Result<void> WriteFrame(const vorna::TimeValue& time, const vorna::TimeValue& duration, vorna::Bool flip,
                                 const GetPixelsDelegate& getPixels);

  // Releases the streams and the file, which finishes it, and frees the frame buffer.
  void End();

  PAVIFILE _file = nullptr;
  PAVISTREAM _stream = nullptr;
  PAVISTREAM _compressedStream = nullptr;
  AVISTREAMINFOW _streamInfo{};
  vorna::BaseArray<vorna::Char> _compressorState;
  AVICOMPRESSOPTIONS _options{};
  BITMAPINFOHEADER _bitmapInfo{};
  vorna::PixelFormat _pixelFormat;
  vorna::UInt32 _frame = 0;
  vorna::Int _width = 0;
  vorna::Int _height = 0;
  vorna::Int _alignedWidth = 0;
  vorna::Int _alignedHeight = 0;
  vorna::Int _bytesPerLine = 0;
  vorna::UChar* _buffer = nullptr;
};

}  // namespace tessel
