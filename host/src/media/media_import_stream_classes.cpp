// The import stream classes as the host provides them: vorna.MediaStreamImageDataImportClass
// and vorna.MediaStreamAudioDataImportClass. A converter delivers into them; what the
// host does with a frame or a block of sound is up to the target set on the stream, such
// as the sinks of vorna_sinks.h. Without a target, deliveries succeed and are dropped.
#include "vorna/translationunit.h"

#include <algorithm>
#include <atomic>
#include <mutex>

#include "loading/registries.h"
#include "media/import_targets.h"
#include "vorna/component.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_stream.h"
#include "vorna/referencedata.h"
#include "vorna/timevalue.h"
#include "vorna_sinks.h"

namespace vorna::host {

namespace {

constexpr SourceLocation SINK_LOCATION{"host/sinks", 1, 0};

PixelFormat FindPixelFormat(const std::string& id);

// A time of a frame's properties, a TimeValue or plain seconds.
std::optional<double> ReadSeconds(const MediaStreamPropertiesInterface& properties, const InternedId& key) {
  Result<TimeValue> time = properties.Get<TimeValue>(key);
  if (!time.IsError()) return time.GetValue().GetSeconds();
  Result<Float64> seconds = properties.Get<Float64>(key);
  return seconds.IsError() ? std::nullopt : std::optional<double>(seconds.GetValue());
}

// Keeps the frame being delivered apart from the last finished one.
class ImageSinkImpl : public ImageSink, public ImageImportTarget {
 public:
  explicit ImageSinkImpl(PixelFormat target) : _target(std::move(target)) {}

  ImageFrame GetFrame() const override {
    std::lock_guard lock(_mutex);
    return _finished;
  }
  void VisitFrame(const std::function<void(const ImageFrame&)>& visit) const override {
    std::lock_guard lock(_mutex);
    visit(_finished);
  }
  int64_t GetFrameCount() const override { return _frames.load(); }

  Result<void> Init(const MediaStreamPropertiesInterface& properties) override {
    Result<Data> format = properties.GetData(g_mediaFormatImagePixelformat);
    if (format.IsError()) return format.GetErrorResult();
    _source = PixelFormat(GetObjectFromData<PixelFormatInterface>(&format.GetValue()));
    Int width = properties.Get<Int64>(g_mediaFormatImageWidth).GetValue();
    Int height = properties.Get<Int64>(g_mediaFormatImageHeight).GetValue();
    Result<ConvertPixelFunc> convert = _target.GetConvertPixelFunc(_source, _source.GetChannelOffsets(),
                                                                   _target.GetChannelOffsets(), nullptr, nullptr);
    if (convert.IsError()) return convert.GetErrorResult();
    if (!convert.GetValue() || width < 0 || height < 0 || width > 1 << 16 || height > 1 << 16)
      return RaiseError(g_IllegalArgumentErrorObject, SINK_LOCATION);
    _convert = convert.GetValue();
    // The buffer of the frame before last is reused: a player's frames keep their size,
    // and a fresh allocation per frame costs more than the frame's conversion. Lines that
    // don't arrive are cleared when the frame finishes.
    std::vector<uint8_t> pixels = std::move(_current.pixels);
    _current = ImageFrame{width, height, _target.GetBytesPerLine(width, 1), _target.GetShortName().GetCString(), {}, 0, {}, {}, {}};
    pixels.resize(size_t(_current.bytesPerLine * height));
    _current.pixels = std::move(pixels);
    _stored.assign(size_t(height), 0);
    _lines = 0;
    return OK;
  }

  // Lines of one frame come in any order and from several threads at once; each line
  // writes its own bytes.
  Result<void> StoreLine(const LineRange& range, const LineSource& source) override {
    if (range.y < 0 || range.y >= _current.height || range.x < 0 || range.count < 0 ||
        range.x + range.count > _current.width)
      return RaiseError(g_IllegalArgumentErrorObject, SINK_LOCATION);
    Int bytesPerPixel = (_target.GetBitsPerPixel() + 7) / 8;
    UChar* destination = _current.pixels.data() + range.y * _current.bytesPerLine + range.x * bytesPerPixel;
    _convert(destination, source.pixels, range.count, source.pixelStep);
    _stored[size_t(range.y)] = 1;
    _lines.fetch_add(1);
    return OK;
  }

  Result<void> Finish(const MediaStreamPropertiesInterface& properties) override {
    std::lock_guard lock(_mutex);
    _current.deliveredLines = _lines.load();
    ClearMissingLines();
    _current.sampleTime = ReadSeconds(properties, g_mediaPropertiesVideoSampletime);
    _current.sampleDuration = ReadSeconds(properties, g_mediaPropertiesVideoSampleduration);
    Result<Int64> skipped = properties.Get<Int64>(g_mediaPropertiesVideoSkippedframes);
    _current.skippedFrames = skipped.IsError() ? std::nullopt : std::optional<int64_t>(skipped.GetValue());
    std::swap(_finished, _current);
    _frames.fetch_add(1);
    return OK;
  }

 private:
  void ClearMissingLines() {
    for (size_t y = 0; y < _stored.size(); ++y)
      if (!_stored[y]) std::fill_n(_current.pixels.begin() + Int(y) * _current.bytesPerLine, _current.bytesPerLine, 0);
  }

  PixelFormat _target;
  PixelFormat _source;
  ConvertPixelFunc _convert = nullptr;
  ImageFrame _current;
  std::vector<uint8_t> _stored;  // per line of _current: 1 once stored
  std::atomic<int64_t> _lines{0};
  mutable std::mutex _mutex;
  ImageFrame _finished;
  std::atomic<int64_t> _frames{0};
};

class AudioSinkImpl : public AudioSink, public AudioImportTarget {
 public:
  std::vector<uint8_t> GetBytes() const override {
    std::lock_guard lock(_mutex);
    return _bytes;
  }
  int64_t GetBlockCount() const override { return _blocks.load(); }

  Result<void> Store(const AudioDataBlock& block) override {
    if (block.size < 0 || (block.size > 0 && !block.data)) return RaiseError(g_IllegalArgumentErrorObject, SINK_LOCATION);
    std::lock_guard lock(_mutex);
    _bytes.insert(_bytes.end(), block.data, block.data + block.size);
    _blocks.fetch_add(1);
    return OK;
  }

 private:
  mutable std::mutex _mutex;
  std::vector<uint8_t> _bytes;
  std::atomic<int64_t> _blocks{0};
};

Result<void> DropLine(const LineRange&, const LineSource&, Int) { return OK; }
Result<void> DropBlock(const AudioDataBlock&) { return OK; }

class MediaStreamImageImportComponent : public Component<MediaStreamImageImportComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> InitStream(const MediaStreamPropertiesInterface& properties) {
    return target ? target->Init(properties) : OK;
  }
  Result<SetPixelHandlerStruct> SetPixelStream(const MediaStreamPropertiesInterface&, const ChannelOffsets&, Int) {
    SetPixelHandlerStruct handler;
    Result<void> set =
        target ? handler.setLine.Set([to = target](const LineRange& range, const LineSource& source, Int) {
          return to->StoreLine(range, source);
        })
               : handler.setLine.Set(&DropLine);
    if (set.IsError()) return set.GetErrorResult();
    return handler;
  }
  Result<void> FinishStream(const MediaStreamPropertiesInterface& properties) {
    return target ? target->Finish(properties) : OK;
  }

  std::shared_ptr<ImageImportTarget> target;
};

class MediaStreamAudioImportComponent : public Component<MediaStreamAudioImportComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> InitStream(const MediaStreamPropertiesInterface&) { return OK; }
  Result<AudioDataCallback> SetAudioDataCallback(const MediaStreamPropertiesInterface&) {
    AudioDataCallback callback;
    Result<void> set = target ? callback.Set([to = target](const AudioDataBlock& block) { return to->Store(block); })
                              : callback.Set(&DropBlock);
    if (set.IsError()) return set.GetErrorResult();
    return callback;
  }
  Result<void> FinishStream(const MediaStreamPropertiesInterface&) { return OK; }

  std::shared_ptr<AudioImportTarget> target;
};

VORNA_DEFINE_OBJECT_USE(g_streamBase, "vorna.MediaStreamBaseClass");

PixelFormat FindPixelFormat(const std::string& id) {
  return PixelFormat(GetObjectFromData<PixelFormatInterface>(FindPublished(Id(id.c_str()))));
}

}  // namespace

VORNA_COMPONENT_CLASS(MediaStreamImageImportComponent, g_imageImportStreamClass,
                      "vorna.MediaStreamImageDataImportClass", "", &g_streamBase,
                      &MediaStreamImageDataImportInterface::_record,
                      VORNA_OVERRIDE(MediaStreamImageDataImportInterface, InitStream),
                      VORNA_OVERRIDE(MediaStreamImageDataImportInterface, SetPixelStream),
                      VORNA_OVERRIDE(MediaStreamImageDataImportInterface, FinishStream));
VORNA_COMPONENT_CLASS(MediaStreamAudioImportComponent, g_audioImportStreamClass,
                      "vorna.MediaStreamAudioDataImportClass", "", &g_streamBase,
                      &MediaStreamAudioDataImportInterface::_record,
                      VORNA_OVERRIDE(MediaStreamAudioDataImportInterface, InitStream),
                      VORNA_OVERRIDE(MediaStreamAudioDataImportInterface, SetAudioDataCallback),
                      VORNA_OVERRIDE(MediaStreamAudioDataImportInterface, FinishStream));

Bool SetImageImportTarget(const ObjectInterface& stream, std::shared_ptr<ImageImportTarget> target) {
  auto* component = GetComponent<MediaStreamImageImportComponent>(stream);
  if (component) component->target = std::move(target);
  return component != nullptr;
}

Bool SetAudioImportTarget(const ObjectInterface& stream, std::shared_ptr<AudioImportTarget> target) {
  auto* component = GetComponent<MediaStreamAudioImportComponent>(stream);
  if (component) component->target = std::move(target);
  return component != nullptr;
}

std::shared_ptr<ImageSink> AttachImageSink(const ObjectInterface& stream, const std::string& pixelFormat) {
  PixelFormat target = FindPixelFormat(pixelFormat);
  if (!target) return nullptr;
  auto sink = std::make_shared<ImageSinkImpl>(std::move(target));
  return SetImageImportTarget(stream, sink) ? sink : nullptr;
}

std::shared_ptr<AudioSink> AttachAudioSink(const ObjectInterface& stream) {
  auto sink = std::make_shared<AudioSinkImpl>();
  return SetAudioImportTarget(stream, sink) ? sink : nullptr;
}

}  // namespace vorna::host
