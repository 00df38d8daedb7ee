// The media session's stream and format classes as the host provides them:
// vorna.MediaStreamFormatClass and vorna.MediaStreamPropertiesClass keep a format's or a
// frame's keys; vorna.MediaStreamBaseClass keeps a stream's formats, the selected one and
// the subscription. A stream holds its formats; properties know their stream only by
// address, so that no cycle of references keeps either alive.
#include "vorna/translationunit.h"

#include <cstring>

#include "classes/dictionary_objects.h"
#include "vorna/component.h"
#include "vorna/mediasession_stream.h"

namespace vorna::host {

namespace {

constexpr SourceLocation STREAM_LOCATION{"host/mediastream", 1, 0};

class MediaStreamFormatComponent : public Component<MediaStreamFormatComponent> {
 public:
  static ClassRecord _classRecord;
};

class MediaStreamPropertiesComponent : public Component<MediaStreamPropertiesComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> InitFromFormat(const MediaStreamInterface& stream, const Data& formatId) {
    MediaStreamFormat format = stream.GetFormat(formatId);
    if (!format) return RaiseError(g_IllegalArgumentErrorObject, STREAM_LOCATION);
    VORNA_RETURN_ON_ERROR(CopyProperties(format, GetObject()));
    return Init(stream);
  }
  Result<void> Init(const MediaStreamInterface& stream) {
    _stream = stream.GetPointer();
    return OK;
  }
  Result<void> CopyFrom(const MediaStreamPropertiesComponent& source) {
    _stream = source._stream;
    return OK;
  }

 private:
  const void* _stream = nullptr;
};

class MediaStreamComponent : public Component<MediaStreamComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> ConnectToSession(const ObjectInterface& session) {
    _session = session.GetPointer();
    return OK;
  }
  ObjectInterface GetSession() const { return ObjectInterface(const_cast<void*>(_session)); }

  Result<BaseArray<Data>> GetFormats() const {
    BaseArray<Data> ids;
    for (const Format& format : _formats)
      if (!ids.Append(format.id)) return CreateError(STREAM_LOCATION, 0);
    return ids;
  }
  MediaStreamFormat GetFormat(const Data& id) const {
    const Format* format = Find(id);
    return format ? format->format : MediaStreamFormat();
  }
  Data GetSelectedFormat() const { return _selected; }
  Result<void> SetSelectedFormat(const Data& id) {
    if (!Find(id)) return RaiseError(g_IllegalArgumentErrorObject, STREAM_LOCATION);
    _selected = id;
    return OK;
  }
  Result<void> AddFormat(const Data& id, const MediaStreamFormatInterface& format) {
    Format* added = _formats.Append(Format{id, MediaStreamFormat(format)});
    if (!added || added->id.IsEmpty() != id.IsEmpty()) return CreateError(STREAM_LOCATION, 0);
    return OK;
  }
  // Subscribing selects the format as well.
  Result<void> SubscribeStream(const Data& id) {
    VORNA_RETURN_ON_ERROR(SetSelectedFormat(id));
    _subscribed = true;
    return OK;
  }
  Result<void> UnsubscribeStream() {
    _subscribed = false;
    return OK;
  }
  Bool IsSubscribed() const { return _subscribed; }

 private:
  struct Format {
    Data id;
    MediaStreamFormat format;
  };

  // Ids are equal when they have one type and one value.
  static Bool SameId(const Data& a, const Data& b) {
    return a.GetType() == b.GetType() && a.GetType() &&
           std::memcmp(a.GetAddress(), b.GetAddress(), size_t(a.GetType()->size)) == 0;
  }
  const Format* Find(const Data& id) const {
    for (const Format& format : _formats)
      if (SameId(format.id, id)) return &format;
    return nullptr;
  }

  BaseArray<Format> _formats;
  Data _selected;
  Bool _subscribed = false;
  const void* _session = nullptr;
};

}  // namespace

VORNA_COMPONENT_CLASS(MediaStreamFormatComponent, g_mediaStreamFormatClass, "vorna.MediaStreamFormatClass", "",
                      &g_DataDictionaryObjectClass, &MediaStreamFormatInterface::_record);
VORNA_COMPONENT_CLASS(MediaStreamPropertiesComponent, g_mediaStreamPropertiesClass, "vorna.MediaStreamPropertiesClass",
                      "", &g_DataDictionaryObjectClass, &MediaStreamPropertiesInterface::_record,
                      ::vorna::WriteOverride<static_cast<PropertiesInitFromFormat>(&MediaStreamPropertiesInterface::Init),
                                             MediaStreamPropertiesInterface::kInitWithFormat,
                                             &MediaStreamPropertiesComponent::InitFromFormat>(cls, record),
                      ::vorna::WriteOverride<static_cast<PropertiesInit>(&MediaStreamPropertiesInterface::Init),
                                             MediaStreamPropertiesInterface::kInit, &MediaStreamPropertiesComponent::Init>(
                          cls, record));
VORNA_COMPONENT_CLASS(MediaStreamComponent, g_mediaStreamBaseClass, "vorna.MediaStreamBaseClass", "",
                      &g_DataDictionaryObjectClass, &MediaStreamInterface::_record,
                      VORNA_OVERRIDE(MediaBaseInterface, ConnectToSession),
                      VORNA_OVERRIDE(MediaBaseInterface, GetSession), VORNA_OVERRIDE(MediaStreamInterface, GetFormats),
                      VORNA_OVERRIDE(MediaStreamInterface, GetFormat),
                      VORNA_OVERRIDE(MediaStreamInterface, GetSelectedFormat),
                      VORNA_OVERRIDE(MediaStreamInterface, SetSelectedFormat),
                      VORNA_OVERRIDE(MediaStreamInterface, AddFormat),
                      VORNA_OVERRIDE(MediaStreamInterface, SubscribeStream),
                      VORNA_OVERRIDE(MediaStreamInterface, UnsubscribeStream),
                      VORNA_OVERRIDE(MediaStreamInterface, IsSubscribed));

}  // namespace vorna::host
