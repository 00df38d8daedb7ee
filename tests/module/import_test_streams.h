// Movie and audio stream objects of the import's own classes, as this test program
// defines them, over a session whose reader is a scripted one; with a sink each, so
// tests see what was delivered.
#pragma once

#include <memory>

#include "import_streams.h"
#include "scripted_source_reader.h"
#include "vorna_sinks.h"

namespace tessel::testing {

// A session over reader (which it takes a reference on).
SessionRef SessionOver(ScriptedSourceReader* reader);

struct TestMovieStream {
  vorna::ObjectRef object;
  MediaStreamMovieStreamWinMFImportImpl* movie = nullptr;
  std::shared_ptr<vorna::host::ImageSink> sink;

  vorna::MediaStreamImageDataImportInterface Stream() const {
    return vorna::Cast<vorna::MediaStreamImageDataImportInterface>(object);
  }
};

// A prepared 2x2 BGR:u8 movie stream at index streamIndex of session, lasting
// durationTicks, whose frames land in an RGBA sink.
TestMovieStream MakeMovieStream(const SessionRef& session, UINT32 streamIndex, vorna::Int durationTicks);

struct TestAudioStream {
  vorna::ObjectRef object;
  MediaStreamAudioStreamWinMFImportImpl* audio = nullptr;
  std::shared_ptr<vorna::host::AudioSink> sink;

  vorna::MediaStreamAudioDataImportInterface Stream() const {
    return vorna::Cast<vorna::MediaStreamAudioDataImportInterface>(object);
  }
};

TestAudioStream MakeAudioStream(const SessionRef& session, UINT32 streamIndex);

// The blue byte of the last delivered frame: the index of the scripted read it came from.
int DeliveredIndex(const vorna::host::ImageSink& sink);

}  // namespace tessel::testing
