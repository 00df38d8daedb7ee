// Streams of the media session: one track between two converters, with its formats,
// the selected one and whether somebody subscribed to it; the properties of a format
// or of one delivered frame; and the image and audio streams through which pixels and
// sound travel.
#pragma once

#include "vorna/basearray.h"
#include "vorna/delegate.h"
#include "vorna/gfx_image_pixelformats.h"
#include "vorna/mediasession_base.h"
#include "vorna/pixelhandler.h"

namespace vorna {

// A format of a stream, or the properties of one frame: a dictionary of the
// vorna.mediaformat.* and vorna.mediaproperties.* keys.
VORNA_DECLARED_INTERFACE(MediaStreamFormatInterface, DataDictionaryObjectInterface, "vorna.MediaStreamFormatInterface#1", refclass::COPY_ON_WRITE);
using MediaStreamFormat = COWRef<MediaStreamFormatInterface>;

class MediaStreamInterface;

class MediaStreamPropertiesInterface : public MediaStreamFormatInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamPropertiesInterface#1";
  static constexpr Int COUNT = 2;
  static constexpr UInt32 REFCLASS = refclass::COPY_ON_WRITE;
  enum : Int { kInitWithFormat, kInit };
  static InterfaceRecord _record;
  using MediaStreamFormatInterface::MediaStreamFormatInterface;

  // Binds the properties to the stream and starts them as a copy of the keys of the
  // stream's format formatId.
  Result<void> Init(const MediaStreamInterface& stream, const Data& formatId) const;
  // Binds the properties to the stream they describe.
  Result<void> Init(const MediaStreamInterface& stream) const;
};
using MediaStreamProperties = COWRef<MediaStreamPropertiesInterface>;

// Second base: vorna.HierarchyObjectInterface#1.
class MediaStreamInterface : public MediaBaseInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamInterface#1";
  static constexpr Int COUNT = 8;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int {
    kGetFormats, kGetFormat, kGetSelectedFormat, kSetSelectedFormat, kAddFormat, kSubscribeStream,
    kUnsubscribeStream, kIsSubscribed
  };
  static InterfaceRecord _record;
  using MediaBaseInterface::MediaBaseInterface;

  // The ids of the formats, in the order they were added.
  Result<BaseArray<Data>> GetFormats() const { return Invoke<&MediaStreamInterface::GetFormats, kGetFormats>(); }
  MediaStreamFormat GetFormat(const Data& id) const { return Invoke<&MediaStreamInterface::GetFormat, kGetFormat>(id); }
  Data GetSelectedFormat() const { return Invoke<&MediaStreamInterface::GetSelectedFormat, kGetSelectedFormat>(); }
  Result<void> SetSelectedFormat(const Data& id) const {
    return Invoke<&MediaStreamInterface::SetSelectedFormat, kSetSelectedFormat>(id);
  }
  Result<void> AddFormat(const Data& id, const MediaStreamFormatInterface& format) const {
    return Invoke<&MediaStreamInterface::AddFormat, kAddFormat>(id, format);
  }
  Result<void> SubscribeStream(const Data& id) const {
    return Invoke<&MediaStreamInterface::SubscribeStream, kSubscribeStream>(id);
  }
  Result<void> UnsubscribeStream() const {
    return Invoke<&MediaStreamInterface::UnsubscribeStream, kUnsubscribeStream>();
  }
  Bool IsSubscribed() const { return Invoke<&MediaStreamInterface::IsSubscribed, kIsSubscribed>(); }
};
using MediaStream = StrongRef<MediaStreamInterface>;

using PropertiesInitFromFormat = Result<void> (MediaStreamPropertiesInterface::*)(const MediaStreamInterface&,
                                                                                  const Data&) const;
using PropertiesInit = Result<void> (MediaStreamPropertiesInterface::*)(const MediaStreamInterface&) const;

inline Result<void> MediaStreamPropertiesInterface::Init(const MediaStreamInterface& stream, const Data& formatId) const {
  return Invoke<static_cast<PropertiesInitFromFormat>(&MediaStreamPropertiesInterface::Init), kInitWithFormat>(stream,
                                                                                                                formatId);
}
inline Result<void> MediaStreamPropertiesInterface::Init(const MediaStreamInterface& stream) const {
  return Invoke<static_cast<PropertiesInit>(&MediaStreamPropertiesInterface::Init), kInit>(stream);
}

VORNA_DECLARED_INTERFACE(MediaStreamImageBaseInterface, MediaStreamInterface, "vorna.MediaStreamImageBaseInterface#1", refclass::STRONG);
VORNA_DECLARED_INTERFACE(MediaStreamExifDataInterface, MediaStreamInterface, "vorna.MediaStreamExifDataInterface#1", refclass::STRONG,
                         kSetCallbackHandler, kHandleExifData, kFinishStream);

// An image stream into which a converter delivers frames, line by line.
class MediaStreamImageDataImportInterface : public MediaStreamImageBaseInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamImageDataImportInterface#1";
  static constexpr Int COUNT = 4;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kSetCallbackHandler, kInitStream, kSetPixelStream, kFinishStream };
  static InterfaceRecord _record;
  using MediaStreamImageBaseInterface::MediaStreamImageBaseInterface;

  // Before a frame: the frame's properties, among them its pixel format and size.
  Result<void> InitStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamImageDataImportInterface::InitStream, kInitStream>(properties);
  }
  // A handler that takes lines in the frame's pixel format; one per thread that delivers.
  Result<SetPixelHandlerStruct> SetPixelStream(const MediaStreamPropertiesInterface& properties,
                                               const ChannelOffsets& channelOffsets, Int flags) const {
    return Invoke<&MediaStreamImageDataImportInterface::SetPixelStream, kSetPixelStream>(properties, channelOffsets,
                                                                                          flags);
  }
  // After a frame.
  Result<void> FinishStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamImageDataImportInterface::FinishStream, kFinishStream>(properties);
  }
};

VORNA_DECLARED_INTERFACE(MediaStreamImageDataForwardImportInterface, MediaStreamImageDataImportInterface, "vorna.MediaStreamImageDataForwardImportInterface#1", refclass::STRONG,
                         kSetSourceStream);

// An image stream from which a converter fetches frames, line by line, in a pixel
// format of its choosing.
class MediaStreamImageDataExportInterface : public MediaStreamImageBaseInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamImageDataExportInterface#1";
  static constexpr Int COUNT = 4;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kSetCallbackHandler, kInitStream, kGetPixelStream, kFinishStream };
  static InterfaceRecord _record;
  using MediaStreamImageBaseInterface::MediaStreamImageBaseInterface;

  Result<void> InitStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamImageDataExportInterface::InitStream, kInitStream>(properties);
  }
  // A handler that gives lines of the frame in format; may be asked from several
  // threads at once, one handler each.
  Result<GetPixelHandlerStruct<>> GetPixelStream(const MediaStreamPropertiesInterface& properties,
                                                 const PixelFormatInterface& format, const ChannelOffsets& channelOffsets,
                                                 const ColorProfile& profile, Int flags) const {
    return Invoke<&MediaStreamImageDataExportInterface::GetPixelStream, kGetPixelStream>(properties, format,
                                                                                          channelOffsets, profile, flags);
  }
  Result<void> FinishStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamImageDataExportInterface::FinishStream, kFinishStream>(properties);
  }
};

// One block of sound as the platform delivered it.
struct AudioDataBlock {
  const UChar* data = nullptr;
  Int size = 0;
};
using AudioDataCallback = Delegate<Result<void>(const AudioDataBlock& block)>;

// An audio stream into which a converter delivers sound, block by block.
class MediaStreamAudioDataImportInterface : public MediaStreamInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamAudioDataImportInterface#1";
  static constexpr Int COUNT = 4;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kSetCallbackHandler, kInitStream, kSetAudioDataCallback, kFinishStream };
  static InterfaceRecord _record;
  using MediaStreamInterface::MediaStreamInterface;

  Result<void> InitStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamAudioDataImportInterface::InitStream, kInitStream>(properties);
  }
  // The delegate that takes the blocks of sound.
  Result<AudioDataCallback> SetAudioDataCallback(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamAudioDataImportInterface::SetAudioDataCallback, kSetAudioDataCallback>(properties);
  }
  Result<void> FinishStream(const MediaStreamPropertiesInterface& properties) const {
    return Invoke<&MediaStreamAudioDataImportInterface::FinishStream, kFinishStream>(properties);
  }
};

class AudioObjectInterface;

// An audio stream that holds its whole sound as an audio object.
class MediaStreamAudioDataExportInterface : public MediaStreamInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaStreamAudioDataExportInterface#1";
  static constexpr Int COUNT = 5;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kInitWithAudioData, kGetAudioObject, kSetCallbackHandler, kInitStream, kFinishStream };
  static InterfaceRecord _record;
  using MediaStreamInterface::MediaStreamInterface;

  // The sound, or a null reference when the stream has none.
  ObjectRef GetAudioObject() const {
    return Invoke<&MediaStreamAudioDataExportInterface::GetAudioObject, kGetAudioObject>();
  }
};

extern ObjectUseRecord g_MediaStreamAudioDataExportClass;
extern ObjectUseRecord g_MediaStreamAudioDataImportClass;
extern ObjectUseRecord g_MediaStreamBaseClass;
extern ObjectUseRecord g_MediaStreamExifDataClass;
extern ObjectUseRecord g_MediaStreamFormatClass;
extern ObjectUseRecord g_MediaStreamForwardImageDataStreamsImportClass;
extern ObjectUseRecord g_MediaStreamImageBaseClass;
extern ObjectUseRecord g_MediaStreamImageDataExportClass;
extern ObjectUseRecord g_MediaStreamImageDataImportClass;
extern ObjectUseRecord g_MediaStreamPropertiesClass;

}  // namespace vorna
