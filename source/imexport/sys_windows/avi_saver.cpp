#include "avi_saver.h"

#include "avi_compressor_choice.h"
#include "avi_settings.h"
#include "media_win_mf.h"
#include "saver_capabilities.h"

namespace tessel {

using namespace vorna;

Result<void> MovieSaverWinAviImpl::Init() {
  if (const DataType* uchar = DataTypeOf<UChar>()) _bitDepth = *uchar;
  return OK;
}

MovieSaverWinAviImpl::~MovieSaverWinAviImpl() { _writer.End(); }

Result<Data> MovieSaverWinAviImpl::GetData(const ConstDataPtr& key) const {
  Data capability = SaverCapability(key, _bitDepth, true);
  if (!capability.IsEmpty()) return capability;
  return Super<&DataDictionaryObjectInterface::GetData, DataDictionaryObjectInterface::kGetData>(key);
}

Result<void> MovieSaverWinAviImpl::GetObjectDescription(DataDescription& description,
                                                        const DataDictionary* settings) const {
  VORNA_RETURN_ON_ERROR(DescribeAviSettings(description));
  return Super<&DataDescriptionObjectInterface::GetObjectDescription,
               DataDescriptionObjectInterface::kGetObjectDescription>(description, settings);
}

ObjectRef MovieSaverWinAviImpl::GetFileFormat() const { return PublishedSaverFormat(g_aviFileFormatUse); }

Result<Bool> MovieSaverWinAviImpl::EditSystemOptions(DataDictionary& settings, const GetWindowDelegate& getWindow) const {
  return ChooseAviCompressor(settings, getWindow);
}

// Both sides round up to a multiple of 4, as the rows of a bitmap are.
Result<BitmapSize> MovieSaverWinAviImpl::CheckBitmapSize(const BitmapSize& wanted) const {
  return BitmapSize{(wanted.width + 3) & ~Int(3), (wanted.height + 3) & ~Int(3)};
}

Result<void> MovieSaverWinAviImpl::Analyze(const ConverterBlock& inputs, Int first, Int second) {
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  VORNA_RETURN_ON_ERROR(input.Analyze(input.GetInputConverter(), first, second));
  return PickExportStreams(input, {_imageStream, _audioStream, _fps, _settings});
}

Result<void> MovieSaverWinAviImpl::PrepareExecute(const ConverterBlock& inputs, Int first, Int second) {
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  return input.PrepareExecute(input.GetInputConverter(), first, second);
}

Result<void> MovieSaverWinAviImpl::Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) {
  VORNA_ASSIGN_OR_RETURN(MediaConverterInterface input, SingleInput(inputs));
  VORNA_RETURN_ON_ERROR(input.Execute(input.GetInputConverter(), time, flags));
  if (!_imageStream) return OK;
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties,
                         CreateObjectOf<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass, VORNA_SOURCE_LOCATION));
  VORNA_RETURN_ON_ERROR(properties.Init(_imageStream));
  VORNA_RETURN_ON_ERROR(_imageStream.InitStream(properties));
  VORNA_RETURN_ON_ERROR(SaveFrame(MediaOutputUrlInterface(GetObjectPointer()).GetOutputUrl(), properties, time));
  return _imageStream.FinishStream(properties);
}

// The writer counts as open as soon as it is tried, so that Close releases what a
// failed opening left.
Result<void> MovieSaverWinAviImpl::SaveFrame(const Url& url, const MediaStreamPropertiesInterface& properties,
                                             const TimeValue& time) {
  VORNA_ASSIGN_OR_RETURN(FrameFormat frame, ReadFrameFormat(properties, GetObject()));
  if (!_writerOpen) {
    _writerOpen = true;
    VORNA_RETURN_ON_ERROR(_writer.Init(url, frame.width, frame.height, _settings, _fps));
  }
  if (_audioStream && !_audioWritten) {
    const ObjectRef sound = _audioStream.GetAudioObject();
    VORNA_RETURN_ON_ERROR(_writer.WriteAudio(Cast<AudioObjectInterface>(sound)));
    _audioWritten = true;
  }
  const ColorProfile profile = ProfileToAsk(_settings, frame.colorProfile);
  VORNA_ASSIGN_OR_RETURN(GetPixelsDelegate getPixels, MakeGetPixels(_imageStream, properties, profile));
  return _writer.WriteFrame(time, TimeValue(1.0 / _fps), true, getPixels);
}

Result<void> MovieSaverWinAviImpl::Close(const ConverterBlock& inputs) {
  if (_writerOpen) {
    _writerOpen = false;
    _writer.End();
  }
  if (inputs.count == 0) return OK;
  const MediaConverterInterface input = Cast<MediaConverterInterface>(inputs[0]);
  return input.Close(input.GetInputConverter());
}

}  // namespace tessel
