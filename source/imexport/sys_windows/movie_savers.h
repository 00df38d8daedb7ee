// The four Media Foundation savers, MP4, 3GP, ASF and WMV: one body, whose only
// difference per container is what it passes to the writer (container type, default
// codec, allowed codecs) and the file format it names. A saver lives for one export, as
// the last converter of a media session: it takes the first image stream and the first
// audio stream of its input, opens its writer on the first frame, writes one frame per
// Execute and finishes the movie in Close, or in its destructor if Close never came.
// The session drives it on one thread at a time; nothing here locks.
#pragma once

#include "saver_session.h"
#include "vorna/component.h"
#include "vorna/datadescription.h"
#include "vorna/fileformat.h"

namespace tessel {

template <typename SELF>
class MovieSaverMF : public vorna::Component<SELF> {
 public:
  vorna::Result<void> Init();
  ~MovieSaverMF();

  vorna::Result<vorna::Data> GetData(const vorna::ConstDataPtr& key) const;
  vorna::Result<void> GetObjectDescription(vorna::DataDescription& description,
                                           const vorna::DataDictionary* settings) const;
  vorna::ObjectRef GetFileFormat() const;
  vorna::Result<vorna::BitmapSize> CheckBitmapSize(const vorna::BitmapSize& wanted) const;

  vorna::Result<void> Analyze(const vorna::ConverterBlock& inputs, vorna::Int first, vorna::Int second);
  vorna::Result<void> PrepareExecute(const vorna::ConverterBlock& inputs, vorna::Int first, vorna::Int second);
  vorna::Result<void> Execute(const vorna::ConverterBlock& inputs, const vorna::TimeValue& time,
                              vorna::MEDIASESSIONFLAGS flags);
  vorna::Result<void> Close(const vorna::ConverterBlock& inputs);

  // Reads a frame's format, opens the writer on the first frame and writes the frame.
  vorna::Result<void> SaveFrame(const vorna::Url& url, const vorna::MediaStreamPropertiesInterface& properties,
                                const vorna::TimeValue& time);

  ImageExportStream _imageStream;
  AudioExportStream _audioStream;
  WindowsMFMovieWriter _writer;
  vorna::Float64 _fps = 1.0;
  vorna::DataDictionary _settings;
  vorna::Bool _writerOpen = false;
  vorna::DataType _bitDepth{};
  vorna::Bool _analyzed = false;
};

class MovieSaverMP4Impl : public MovieSaverMF<MovieSaverMP4Impl> {
 public:
  static vorna::ClassRecord _classRecord;
  static const MovieContainer& CONTAINER;
  static vorna::ObjectUseRecord& FILE_FORMAT;
};

class MovieSaver3GPImpl : public MovieSaverMF<MovieSaver3GPImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static const MovieContainer& CONTAINER;
  static vorna::ObjectUseRecord& FILE_FORMAT;
};

class MovieSaverASFImpl : public MovieSaverMF<MovieSaverASFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static const MovieContainer& CONTAINER;
  static vorna::ObjectUseRecord& FILE_FORMAT;
};

class MovieSaverWMVImpl : public MovieSaverMF<MovieSaverWMVImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static const MovieContainer& CONTAINER;
  static vorna::ObjectUseRecord& FILE_FORMAT;
};

}  // namespace tessel
