// The media session's converter classes as the host provides them:
// vorna.MediaConverterBaseClass keeps a converter's output streams and input converters
// and does nothing of its own in Analyze, PrepareExecute, Execute and Close;
// vorna.MediaOutputUrlBaseClass adds the url an output writes, with capabilities that
// all read as absent until a derived class answers them.
#include "vorna/translationunit.h"

#include "media/media_converter_classes.h"

#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"

namespace vorna::host {

namespace {

constexpr SourceLocation CONVERTER_LOCATION{"host/mediaconverter", 1, 0};

class MediaConverterComponent : public Component<MediaConverterComponent> {
 public:
  static ClassRecord _classRecord;

  Int SupportImportStrategy() const { return 0; }
  Int SupportExportStrategy() const { return 0; }
  ConverterBlock GetInputConverter() const { return {inputs.GetData(), inputs.GetCount()}; }
  Result<void> AddOutputStream(const MediaStreamInterface& stream) {
    if (!_outputs.Append(MediaStream(stream))) return CreateError(CONVERTER_LOCATION, 0);
    return OK;
  }
  Result<void> RemoveOutputStream(const MediaStreamInterface& stream) {
    BaseArray<MediaStream> kept;
    for (const MediaStream& output : _outputs)
      if (output.GetPointer() != stream.GetPointer() && !kept.Append(output)) return CreateError(CONVERTER_LOCATION, 0);
    _outputs = std::move(kept);
    return OK;
  }
  Result<BaseArray<MediaStream>> GetOutputStreams(Int) const {
    BaseArray<MediaStream> copy;
    if (!copy.Append(_outputs.GetData(), _outputs.GetCount())) return CreateError(CONVERTER_LOCATION, 0);
    return copy;
  }
  Result<void> Analyze(const ConverterBlock&, Int, Int) { return OK; }
  Result<void> PrepareExecute(const ConverterBlock&, Int, Int) { return OK; }
  Result<void> Execute(const ConverterBlock&, const TimeValue&, MEDIASESSIONFLAGS) { return OK; }
  Result<void> Close(const ConverterBlock&) { return OK; }
  // A converter of this class has no settings of its own to describe.
  Result<void> GetObjectDescription(DataDescription&, const DataDictionary*) const { return OK; }

  // Set by the session that connects this converter behind others.
  BaseArray<ObjectRef> inputs;

 private:
  BaseArray<MediaStream> _outputs;
};

class MediaOutputUrlComponent : public Component<MediaOutputUrlComponent> {
 public:
  static ClassRecord _classRecord;

  Url GetOutputUrl() const { return _url; }
  Result<void> SetOutputUrl(const Url& url) {
    _url = url;
    return OK;
  }
  ObjectRef GetFileFormat() const { return ObjectRef(); }
  Result<Bool> EditSystemOptions(DataDictionary&, const GetWindowDelegate&) const { return false; }
  Result<BitmapSize> CheckBitmapSize(const BitmapSize& wanted) const { return wanted; }

  // The capabilities of an output: no image, no video, no sound, no system options,
  // nothing of resolutions and bit depths; other keys go to the dictionary.
  Result<Data> GetData(const ConstDataPtr& key) const {
    const InternedId* id = key.As<InternedId>();
    for (const InternedId* flag : {&g_mediaOutputUrlSupportsImage, &g_mediaOutputUrlSupportsVideo,
                                   &g_mediaOutputUrlSupportsAudio, &g_mediaOutputUrlSupportsSystemoptions,
                                   &g_mediaOutputUrlEmbedColorprofile})
      if (id && *id == *flag) return MakeData(Bool(false));
    for (const InternedId* number : {&g_mediaOutputUrlMaximalalphachannels, &g_mediaOutputUrlMaximalimageresolution,
                                     &g_mediaOutputUrlMaximallayerresolution})
      if (id && *id == *number) return MakeData(Int64(0));
    return Super<&DataDictionaryObjectInterface::GetData, DataDictionaryObjectInterface::kGetData>(key);
  }

 private:
  Url _url;
};

}  // namespace

VORNA_COMPONENT_CLASS(MediaConverterComponent, g_mediaConverterBaseClass, "vorna.MediaConverterBaseClass", "",
                      &g_DataDictionaryObjectClass, &MediaConverterInterface::_record,
                      VORNA_OVERRIDE(MediaConverterInterface, SupportImportStrategy),
                      VORNA_OVERRIDE(MediaConverterInterface, SupportExportStrategy),
                      VORNA_OVERRIDE(MediaConverterInterface, GetInputConverter),
                      VORNA_OVERRIDE(MediaConverterInterface, AddOutputStream),
                      VORNA_OVERRIDE(MediaConverterInterface, RemoveOutputStream),
                      VORNA_OVERRIDE(MediaConverterInterface, GetOutputStreams),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze),
                      VORNA_OVERRIDE(MediaConverterInterface, PrepareExecute),
                      VORNA_OVERRIDE(MediaConverterInterface, Execute), VORNA_OVERRIDE(MediaConverterInterface, Close),
                      VORNA_OVERRIDE(DataDescriptionObjectInterface, GetObjectDescription));

namespace {
VORNA_DEFINE_OBJECT_USE(g_converterBase, "vorna.MediaConverterBaseClass");
}

VORNA_COMPONENT_CLASS(MediaOutputUrlComponent, g_mediaOutputUrlBaseClass, "vorna.MediaOutputUrlBaseClass", "",
                      &g_converterBase, &MediaOutputUrlInterface::_record,
                      VORNA_OVERRIDE(MediaOutputUrlInterface, GetOutputUrl),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, SetOutputUrl),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, GetFileFormat),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, EditSystemOptions),
                      VORNA_OVERRIDE(MediaOutputUrlInterface, CheckBitmapSize),
                      VORNA_OVERRIDE(DataDictionaryObjectInterface, GetData));

Result<void> SetInputConverters(const ObjectInterface& converter, Block<const ObjectRef> inputs) {
  MediaConverterComponent* component = GetComponent<MediaConverterComponent>(converter);
  if (!component) return RaiseError(g_IllegalArgumentErrorObject, CONVERTER_LOCATION);
  component->inputs.Flush();
  if (!component->inputs.Append(inputs.data, inputs.count)) return CreateError(CONVERTER_LOCATION, 0);
  return OK;
}

}  // namespace vorna::host
