// MovieSaverWinAviImpl: the AVI saver. As the last converter of a media session it takes
// the first image stream and the first audio stream of its input, opens its AVI writer
// on the first frame and gives it the sound there, and writes one numbered frame per
// Execute; Close ends the file. It is the one saver with a system dialog:
// EditSystemOptions lets the user pick a compressor and stores the choice in the export
// settings, which the next export reads without asking. Driven by one thread at a time.
#pragma once

#include "saver_session.h"
#include "vorna/component.h"
#include "vorna/datadescription.h"
#include "windows_avi_movie_writer.h"

namespace tessel {

class MovieSaverWinAviImpl : public vorna::Component<MovieSaverWinAviImpl> {
 public:
  static vorna::ClassRecord _classRecord;

  vorna::Result<void> Init();
  ~MovieSaverWinAviImpl();

  vorna::Result<vorna::Data> GetData(const vorna::ConstDataPtr& key) const;
  vorna::Result<void> GetObjectDescription(vorna::DataDescription& description,
                                           const vorna::DataDictionary* settings) const;
  vorna::ObjectRef GetFileFormat() const;
  vorna::Result<vorna::Bool> EditSystemOptions(vorna::DataDictionary& settings,
                                               const vorna::GetWindowDelegate& getWindow) const;
  vorna::Result<vorna::BitmapSize> CheckBitmapSize(const vorna::BitmapSize& wanted) const;

  vorna::Result<void> Analyze(const vorna::ConverterBlock& inputs, vorna::Int first, vorna::Int second);
  vorna::Result<void> PrepareExecute(const vorna::ConverterBlock& inputs, vorna::Int first, vorna::Int second);
  vorna::Result<void> Execute(const vorna::ConverterBlock& inputs, const vorna::TimeValue& time,
                              vorna::MEDIASESSIONFLAGS flags);
  vorna::Result<void> Close(const vorna::ConverterBlock& inputs);

  ImageExportStream _imageStream;
  AudioExportStream _audioStream;
  WindowsAviMovieWriter _writer;
  vorna::Float64 _fps = 1.0;
  vorna::DataDictionary _settings;
  vorna::Bool _writerOpen = false;
  vorna::DataType _bitDepth{};
  vorna::Bool _audioWritten = false;

 private:
  // Opens the writer on the first frame, gives it the sound once and writes the frame.
  vorna::Result<void> SaveFrame(const vorna::Url& url, const vorna::MediaStreamPropertiesInterface& properties,
                                const vorna::TimeValue& time);
};

// vorna.FileFormats:movie.avi.
extern vorna::ObjectUseRecord g_aviFileFormatUse;

}  // namespace tessel
