#include "vorna/translationunit.h"

#include "compressor_settings.h"

#include "compressor_list.h"
#include "four_character_code.h"
#include "vorna/array.h"
#include "vorna/resourceid.h"
#include "vorna/saversettings.h"

namespace tessel::cli {

namespace {

VORNA_DEFINE_RESOURCE_ID(g_aviType, "avitype");
VORNA_DEFINE_RESOURCE_ID(g_aviHandler, "avihandler");

template <typename T>
SettingInfo StoredSetting(const char* key, const vorna::InternedId& identifier, const T& defaultValue) {
  SettingInfo setting;
  setting.key = key;
  setting.identifier = vorna::MakeData(identifier);
  setting.defaultData = vorna::MakeData(defaultValue);
  setting.type = TypeName(setting.defaultData.GetType()->id);
  setting.defaultValue = ValueOf(setting.defaultData);
  return setting;
}

}  // namespace

std::vector<SettingInfo> CompressorSettings() {
  return {StoredSetting("avitype", g_aviType, vorna::Int32(0)),
          StoredSetting("avihandler", g_aviHandler, vorna::Int32(0)),
          StoredSetting("customdata", vorna::g_saverSettingCustomdata, vorna::Array<vorna::Char>())};
}

bool SetCompressor(uint32_t code, vorna::DataDictionary& settings) {
  vorna::Result<vorna::Int32> stored = settings.Get<vorna::Int32>(g_aviHandler);
  if (stored.IsError() || !SameCompressorCode(DWORD(stored.GetValue()), code))
    settings.Erase(vorna::g_saverSettingCustomdata);
  return !settings.Set(g_aviType, vorna::Int32(ICTYPE_VIDEO)).IsError() &&
         !settings.Set(g_aviHandler, vorna::Int32(code)).IsError();
}

std::optional<std::string> CompressorOf(const vorna::DataDictionary& settings) {
  if (settings.Get<vorna::Int32>(g_aviType).IsError()) return std::nullopt;
  return FourCharacterText(uint32_t(settings.Get<vorna::Int32>(g_aviHandler, 0)));
}

}  // namespace tessel::cli
