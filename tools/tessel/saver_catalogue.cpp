#include "saver_catalogue.h"

#include <algorithm>
#include <cctype>

#include "compressor_settings.h"
#include "host_text.h"
#include "vorna/datatypelib.h"
#include "vorna/mediasession_keys.h"
#include "vorna/mediasession_output.h"
#include "vorna/referencedata.h"
#include "vorna_export.h"
#include "vorna_host.h"

namespace tessel::cli {

namespace {

using vorna::InternedId;

struct Capability {
  const char* name;
  const InternedId* key;
};

const Capability CAPABILITIES[] = {
    {"supports_image", &vorna::g_mediaOutputUrlSupportsImage},
    {"supports_video", &vorna::g_mediaOutputUrlSupportsVideo},
    {"supports_audio", &vorna::g_mediaOutputUrlSupportsAudio},
    {"supports_systemoptions", &vorna::g_mediaOutputUrlSupportsSystemoptions},
    {"maximalalphachannels", &vorna::g_mediaOutputUrlMaximalalphachannels},
    {"maximalimageresolution", &vorna::g_mediaOutputUrlMaximalimageresolution},
    {"maximallayerresolution", &vorna::g_mediaOutputUrlMaximallayerresolution},
    {"bitdepthsimage", &vorna::g_mediaOutputUrlBitdepthsimage},
    {"bitdepthslayer", &vorna::g_mediaOutputUrlBitdepthslayer},
    {"embed_colorprofile", &vorna::g_mediaOutputUrlEmbedColorprofile},
};

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return char(std::tolower(c)); });
  return text;
}

constexpr const char* TYPE_BLOCK = "vorna.ParametricTypes:Block<vorna.DataTypes:vorna.DataType>";

// What a capability is: a plain value, or a block of data types (the bit depths) as
// their names joined by blanks.
SettingValue CapabilityValue(const vorna::Data& data) {
  if (std::string(data.GetType()->id.GetCString()) != TYPE_BLOCK) return ValueOf(data);
  std::string names;
  for (const vorna::DataType& type : *static_cast<const vorna::Block<const vorna::DataType>*>(data.GetAddress()))
    names += (names.empty() ? "" : " ") + TypeName(type.id);
  return {SettingValue::Kind::kText, names, 0, 0, false};
}

vorna::Data EntryValue(const vorna::DataDictionary& entry, const InternedId& key) {
  vorna::Result<vorna::Data> value = entry.Get(key);
  return value.IsError() ? vorna::Data() : value.GetValue();
}

SettingInfo DescribeSetting(const vorna::DataDictionary& entry) {
  SettingInfo setting;
  setting.identifier = EntryValue(entry, vorna::g_dataDescriptionIdentifier);
  setting.key = ToText(ValueOf(setting.identifier));
  vorna::Data type = EntryValue(entry, vorna::g_dataDescriptionDatatype);
  if (type.GetType() == vorna::DataTypeOf<vorna::Id>())
    setting.type = TypeName(*static_cast<const vorna::Id*>(type.GetAddress()));
  setting.defaultData = EntryValue(entry, vorna::g_dataDescriptionDefaultvalue);
  setting.defaultValue = ValueOf(setting.defaultData);
  setting.minimum = ValueOf(EntryValue(entry, vorna::g_dataDescriptionMinvalue));
  setting.maximum = ValueOf(EntryValue(entry, vorna::g_dataDescriptionMaxvalue));
  setting.choices = ChoicesOf(EntryValue(entry, vorna::g_dataDescriptionEnum));
  return setting;
}

}  // namespace

std::vector<std::string> ListSavers() { return vorna::host::ListRegistry("vorna.ImageSavers"); }

std::vector<std::string> SuffixesOf(const vorna::FileFormatInterface& format) {
  std::vector<std::string> suffixes;
  vorna::Result<vorna::Data> data = format.GetData(vorna::g_fileFormatCommonsuffixes);
  if (data.IsError()) return suffixes;
  for (const vorna::String& suffix : vorna::GetBlockFromData<vorna::String>(data.GetValue()))
    suffixes.push_back(ToStdString(suffix));
  return suffixes;
}

std::string FindSaverForSuffix(const std::string& suffix) {
  for (const std::string& id : ListSavers()) {
    vorna::Result<vorna::StrongRef<vorna::MediaOutputUrlInterface>> saver = vorna::host::CreateSaver(id);
    if (saver.IsError()) continue;
    vorna::FileFormatInterface format = vorna::Cast<vorna::FileFormatInterface>(saver.GetValue().GetFileFormat());
    for (const std::string& named : SuffixesOf(format))
      if (Lower(named) == Lower(suffix)) return id;
  }
  return "";
}

bool DescribeSaver(const std::string& id, const vorna::DataDictionary* settings, SaverInfo& info, Failure& failure) {
  std::vector<std::string> savers = ListSavers();
  if (std::find(savers.begin(), savers.end(), id) == savers.end()) {
    failure = UsageFailure("no saver is called " + id + " (tessel formats lists them)");
    return false;
  }
  vorna::Result<vorna::StrongRef<vorna::MediaOutputUrlInterface>> made = vorna::host::CreateSaver(id);
  if (made.IsError()) {
    failure = {kExitFailure, "cannot make the saver " + id + ": " + ErrorMessage(made.GetError())};
    return false;
  }
  const vorna::StrongRef<vorna::MediaOutputUrlInterface>& saver = made.GetValue();
  info.id = id;
  info.suffixes = SuffixesOf(vorna::Cast<vorna::FileFormatInterface>(saver.GetFileFormat()));
  for (const Capability& capability : CAPABILITIES) {
    vorna::Result<vorna::Data> value = saver.GetData(*capability.key);
    if (!value.IsError() && value.GetValue().GetType())
      info.capabilities.emplace_back(capability.name, CapabilityValue(value.GetValue()));
  }
  vorna::DataDescription description;
  vorna::Result<void> described = saver.AsDescriptionObject().GetObjectDescription(description, settings);
  if (described.IsError()) {
    failure = {kExitFailure, "the saver " + id + " cannot describe its settings: " + ErrorMessage(described.GetError())};
    return false;
  }
  for (vorna::Int i = 0; i < description.GetCount(); ++i) info.settings.push_back(DescribeSetting(*description.GetEntry(i)));
  if (saver.Get<vorna::Bool>(vorna::g_mediaOutputUrlSupportsSystemoptions, false))
    info.systemSettings = CompressorSettings();
  return true;
}

const SettingInfo* FindSetting(const SaverInfo& saver, const std::string& key) {
  for (const SettingInfo& setting : saver.settings)
    if (setting.key == key) return &setting;
  return nullptr;
}

}  // namespace tessel::cli
