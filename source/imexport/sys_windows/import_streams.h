// The stream objects of the import: a movie stream and an audio stream component on the
// host's import stream classes. Each is a record with an index into the file's one
// source reader; the analysis fills it, the loader's Execute reads and updates it. A
// stream object is used by the thread of the host's Execute only; nothing here locks.
#pragma once

#include <mfidl.h>

#include "mf_reader_session.h"
#include "sample_ring.h"
#include "vorna/component.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/mediasession_converter.h"
#include "vorna/timevalue.h"

namespace tessel {

class MediaStreamMovieStreamWinMFImportImpl : public vorna::Component<MediaStreamMovieStreamWinMFImportImpl> {
 public:
  static vorna::ClassRecord _classRecord;

  // Delivers the frame to show at time into stream (the object of this component):
  // true when there is no frame for that time. A frame already on show is delivered
  // again only with MEDIASESSIONFLAGS_FORCE.
  vorna::Result<vorna::Bool> GetVideoFrame(const vorna::MediaConverterInterface& input,
                                           const vorna::MediaStreamImageDataImportInterface& stream,
                                           const vorna::TimeValue& time, vorna::MEDIASESSIONFLAGS flags);
  // The ring entry to show at time, reading and seeking as needed; null when none.
  // firstRead, when given, receives the timestamp of the first read and turns seeking off.
  vorna::Result<SampleEntry*> FindSampleForTime(const vorna::MediaConverterInterface& input,
                                                const vorna::TimeValue& time, vorna::Int* firstRead);

  // Written by the analysis.
  UINT32 _streamIndex = 0;
  SessionRef _session;
  // Written when the stream is prepared for its first frame.
  vorna::PixelFormat _pixelFormat;
  vorna::Int _defaultStride = 0;
  // Published size, after the rotation swap, and the delivered size.
  vorna::Int _displayWidth = 0;
  vorna::Int _width = 0;
  vorna::Int _displayHeight = 0;
  vorna::Int _height = 0;
  // As read, before any rotation; 1.0 and 0/0 when the type has none.
  vorna::Float64 _pixelAspectRatio = 0.0;
  UINT32 _pixelAspectNumerator = 0;
  UINT32 _pixelAspectDenominator = 0;
  // Samples that the last fetch read and passed over.
  vorna::Int _skippedFrames = 0;
  vorna::TimeValue _duration;
  vorna::Float64 _frameRate = 0.0;
  INT32 _rotation = 0;
  vorna::Bool _prepared = false;
  // How far, in ticks, a wanted time may lie ahead of the ring and still be reached by
  // reading on: half a second until prepared, then five frames; seeks can raise it.
  vorna::Int _maxSeekDifference = 5000000;
  vorna::Bool _awaitFirstSample = true;
  vorna::Int _firstSampleTime = -1;
  vorna::Int _lastDeliveredTime = -1;
  SampleRing _samples;
};

class MediaStreamAudioStreamWinMFImportImpl : public vorna::Component<MediaStreamAudioStreamWinMFImportImpl> {
 public:
  static vorna::ClassRecord _classRecord;

  // Delivers the whole sound of the stream at its first call, from the start of the
  // file, whatever time is asked; later calls deliver nothing.
  vorna::Result<void> GetAudioData(const vorna::MediaConverterInterface& input,
                                   const vorna::MediaStreamAudioDataImportInterface& stream,
                                   const vorna::TimeValue& time, vorna::MEDIASESSIONFLAGS flags);
  // Rewinds the reader and hands every buffer of the stream to audioData.
  vorna::Result<void> ReadAudioSamples(const vorna::MediaConverterInterface& input,
                                       const vorna::AudioDataCallback& audioData);

  UINT32 _streamIndex = 0;
  SessionRef _session;
  vorna::Bool _audioDelivered = false;
};

}  // namespace tessel
