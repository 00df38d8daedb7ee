#include "movie_savers.h"

#include "export_settings.h"
#include "media_win_mf.h"
#include "saver_capabilities.h"
#include "vorna/diagnostics.h"
#include "vorna/formatstring.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"

namespace tessel {

using namespace vorna;

namespace {

// Finishes the movie; a failure is written to the diagnostic output and returned.
Result<void> FinishMovie(WindowsMFMovieWriter& writer) {
  Result<void> finished = writer.Finish();
  if (finished.IsError())
    DiagnosticOutputString(OUTPUT_DIAGNOSTIC, FormatString("@", ErrorOf(finished.GetError())), __LINE__, __FILE__);
  return finished;
}

}  // namespace

template <typename SELF>
Result<void> MovieSaverMF<SELF>::Init() {
  if (const DataType* uchar = DataTypeOf<UChar>()) _bitDepth = *uchar;
  return OK;
}

// A saver destroyed with a movie open finishes it, as Close would have.
template <typename SELF>
MovieSaverMF<SELF>::~MovieSaverMF() {
  if (!_writerOpen) return;
  _writerOpen = false;
  (void)FinishMovie(_writer);
}

template <typename SELF>
Result<Data> MovieSaverMF<SELF>::GetData(const ConstDataPtr& key) const {
  Data capability = SaverCapability(key, _bitDepth, false);
  if (!capability.IsEmpty()) return capability;
  return this->template Super<&DataDictionaryObjectInterface::GetData, DataDictionaryObjectInterface::kGetData>(key);
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::GetObjectDescription(DataDescription& description,
                                                      const DataDictionary* settings) const {
  VORNA_RETURN_ON_ERROR(DescribeMovieSettings(description, settings, SELF::CONTAINER));
  return this->template Super<&DataDescriptionObjectInterface::GetObjectDescription,
                              DataDescriptionObjectInterface::kGetObjectDescription>(description, settings);
}

template <typename SELF>
ObjectRef MovieSaverMF<SELF>::GetFileFormat() const {
  return PublishedSaverFormat(SELF::FILE_FORMAT);
}

template <typename SELF>
Result<BitmapSize> MovieSaverMF<SELF>::CheckBitmapSize(const BitmapSize& wanted) const {
  const FrameSize aligned = AlignFrameSize(*SELF::CONTAINER.container, wanted.width, wanted.height);
  return BitmapSize{aligned.width, aligned.height};
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::Analyze(const ConverterBlock& inputs, Int first, Int second) {
  if (_analyzed) return OK;
  _analyzed = true;
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  VORNA_RETURN_ON_ERROR(input.Analyze(input.GetInputConverter(), first, second));
  return PickExportStreams(input, {_imageStream, _audioStream, _fps, _settings});
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::PrepareExecute(const ConverterBlock& inputs, Int first, Int second) {
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  return input.PrepareExecute(input.GetInputConverter(), first, second);
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) {
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  VORNA_RETURN_ON_ERROR(input.Execute(input.GetInputConverter(), time, flags));
  if (!_imageStream) return OK;
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                         CreateObjectOf<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass, VORNA_SOURCE_LOCATION));
  VORNA_RETURN_ON_ERROR(properties.Init(_imageStream));
  VORNA_RETURN_ON_ERROR(_imageStream.InitStream(properties));
  const Url url = MediaOutputUrlInterface(this->GetObjectPointer()).GetOutputUrl();
  VORNA_RETURN_ON_ERROR(SaveFrame(url, properties, time));
  return _imageStream.FinishStream(properties);
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::SaveFrame(const Url& url, const MediaStreamPropertiesInterface& properties,
                                           const TimeValue& time) {
  VORNA_ASSIGN_OR_RETURN(FrameFormat frame, ReadFrameFormat(properties, this->GetObject()));
  if (!_writerOpen) {
    VORNA_RETURN_ON_ERROR(
        _writer.Init(url, frame.width, frame.height, frame.aspect, SELF::CONTAINER, _fps, _settings, _audioStream));
    _writerOpen = true;
  }
  const ColorProfile profile = ProfileToAsk(_settings, frame.colorProfile);
  VORNA_ASSIGN_OR_RETURN(GetPixelsDelegate getPixels, MakeGetPixels(_imageStream, properties, profile));
  return _writer.WriteFrame(time, TimeValue(1.0 / _fps), getPixels);
}

template <typename SELF>
Result<void> MovieSaverMF<SELF>::Close(const ConverterBlock& inputs) {
  if (_writerOpen) {
    _writerOpen = false;
    VORNA_RETURN_ON_ERROR(FinishMovie(_writer));
  }
  if (inputs.count == 0) return OK;
  const MediaConverterInterface input = Cast<MediaConverterInterface>(inputs[0]);
  return input.Close(input.GetInputConverter());
}

template class MovieSaverMF<MovieSaverMP4Impl>;
template class MovieSaverMF<MovieSaver3GPImpl>;
template class MovieSaverMF<MovieSaverASFImpl>;
template class MovieSaverMF<MovieSaverWMVImpl>;

}  // namespace tessel
