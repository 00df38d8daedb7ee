// The description of the savers' settings. Each entry is a dictionary of the setting's
// key, its data type, its default and, where it has them, its minimum and its fixed
// choices; two entries finish themselves with a callback: the codec takes its default
// and choices from the saver, the sample rate its choices from the chosen audio codec.
#include "export_settings.h"

#include <iterator>

#include "movie_codecs.h"
#include "setting_description.h"
#include "vorna/datatypelib.h"
#include "vorna/saversettings.h"

namespace tessel {

using namespace vorna;

namespace {

const Id AUDIO_CODECS[] = {"aac", "mp3"};
const Int64 AUDIO_KILOBITRATES[] = {96, 112, 128, 160, 192, 224, 256, 320};
const Int64 AAC_SAMPLERATES[] = {44100, 48000, 96000};
const Int64 MP3_SAMPLERATES[] = {32000, 44100, 48000};

template <typename T, Int N>
Data Choices(const T (&values)[N]) {
  return MakeBlockData<T>(Block<const T>{values, N});
}

Result<void> DescribeCodec(DataDescription& description, const MovieContainer& container) {
  VORNA_ASSIGN_OR_RETURN(DataDictionary entry, NewSettingEntry(g_settingCodec, Id("H.264")));
  if (const MovieCodecEntry* row = FindMovieCodec(*container.defaultSubtype))
    VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionDefaultvalue, row->name));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionEnum, MakeBlockData<Id>(container.allowedCodecs)));
  return description.Add(entry);
}

// The choices of the sample rate follow the audio codec of settings: "aac" when the
// setting is absent, none without settings at all or for another codec.
Result<void> DescribeSamplerate(DataDescription& description, const DataDictionary* settings) {
  VORNA_ASSIGN_OR_RETURN(DataDictionary entry, NewSettingEntry(g_settingAudioSamplerate, Int64(48000)));
  const Id codec = settings ? settings->Get<Id>(g_settingAudioCodec, Id("aac")) : Id();
  if (codec == Id("aac")) VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionEnum, Choices(AAC_SAMPLERATES)));
  if (codec == Id("mp3")) VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionEnum, Choices(MP3_SAMPLERATES)));
  return description.Add(entry);
}

template <typename T, Int N>
Result<void> DescribeChoices(DataDescription& description, const InternedId& key, const T& defaultValue,
                             const T (&values)[N]) {
  VORNA_ASSIGN_OR_RETURN(DataDictionary entry, NewSettingEntry(key, defaultValue));
  VORNA_RETURN_ON_ERROR(entry.Set(g_dataDescriptionEnum, Choices(values)));
  return description.Add(entry);
}

}  // namespace

Result<void> DescribeMovieSettings(DataDescription& description, const DataDictionary* settings,
                                   const MovieContainer& container) {
  VORNA_RETURN_ON_ERROR(DescribeCodec(description, container));
  VORNA_RETURN_ON_ERROR(DescribeFromMinimum(description, g_saverSettingDatarate, BytesValue{0}));
  VORNA_RETURN_ON_ERROR(DescribeFromMinimum(description, g_saverSettingKeyframes, Int32(0)));
  VORNA_ASSIGN_OR_RETURN(DataDictionary srgb, NewSettingEntry(g_saverSettingDisableSrgbConversion, Bool(false)));
  VORNA_RETURN_ON_ERROR(description.Add(srgb));
  VORNA_RETURN_ON_ERROR(DescribeChoices(description, g_settingAudioCodec, Id("aac"), AUDIO_CODECS));
  VORNA_RETURN_ON_ERROR(DescribeSamplerate(description, settings));
  return DescribeChoices(description, g_settingAudioKilobitrate, Int64(192), AUDIO_KILOBITRATES);
}

}  // namespace tessel
