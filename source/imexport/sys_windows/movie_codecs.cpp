#include "movie_codecs.h"

#include <mfapi.h>
#include <mfreadwrite.h>

#include <iterator>

#include "export_settings.h"
#include "vorna/formatstring.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;

namespace {

const MovieCodecEntry CODECS[] = {
    {"H.264", MFVideoFormat_H264, true},
    {"WMV1", MFVideoFormat_WMV1, false},
    {"WMV2", MFVideoFormat_WMV2, false},
    {"WMV3", MFVideoFormat_WMV3, false},
};

const Id H264_ONLY[] = {"H.264"};
const Id EVERY_CODEC[] = {"H.264", "WMV1", "WMV2", "WMV3"};

const MovieCodecEntry* FindMovieCodec(const Id& name) {
  for (const MovieCodecEntry& entry : movieCodecTable)
    if (entry.name == name) return &entry;
  return nullptr;
}

Bool Allows(const MovieContainer& container, const Id& name) {
  for (const Id& allowed : container.allowedCodecs)
    if (allowed == name) return true;
  return false;
}

ErrorResult UnsupportedCodec(const Char* text, const Id& name) {
  String message = FormatToString(text, name);
  return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
}

}  // namespace

const Block<const MovieCodecEntry> movieCodecTable{CODECS, Int(std::size(CODECS))};

// The WMV saver sets no container type: the platform picks its sink by the suffix.
const MovieContainer mp4Container{&MFTranscodeContainerType_MPEG4, &MFVideoFormat_H264,
                                  {H264_ONLY, Int(std::size(H264_ONLY))}};
const MovieContainer threeGpContainer{&MFTranscodeContainerType_3GP, &MFVideoFormat_H264,
                                      {H264_ONLY, Int(std::size(H264_ONLY))}};
const MovieContainer asfContainer{&MFTranscodeContainerType_ASF, &MFVideoFormat_H264,
                                  {EVERY_CODEC, Int(std::size(EVERY_CODEC))}};
const MovieContainer wmvContainer{&GUID_NULL, &MFVideoFormat_WMV3, {EVERY_CODEC, Int(std::size(EVERY_CODEC))}};

const MovieCodecEntry* FindMovieCodec(const GUID& subtype) {
  for (const MovieCodecEntry& entry : movieCodecTable)
    if (entry.subtype == subtype) return &entry;
  return nullptr;
}

Result<const MovieCodecEntry*> ChooseMovieCodec(const DataDictionary& settings, const MovieContainer& container) {
  Result<Id> name = settings.Get<Id>(g_settingCodec);
  if (!name.IsError()) {
    if (!Allows(container, name.GetValue()))
      return UnsupportedCodec("Unsupported Codec for this container format: @.", name.GetValue());
    const MovieCodecEntry* entry = FindMovieCodec(name.GetValue());
    if (!entry) return UnsupportedCodec("Unsupported Codec: @.", name.GetValue());
    return entry;
  }
  const MovieCodecEntry* entry = FindMovieCodec(*container.defaultSubtype);
  if (!entry) {
    String message = FormatToString("Unsupported Codec: @.", *container.defaultSubtype);
    return RaiseError(g_IllegalArgumentErrorObject, VORNA_SOURCE_LOCATION, &message);
  }
  return entry;
}

}  // namespace tessel
