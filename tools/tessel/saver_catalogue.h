// The savers that the loaded modules entered in vorna.ImageSavers, as the command line
// shows and uses them: the suffixes of their file formats, their capabilities, and the
// settings they describe through GetObjectDescription, and what their system options
// keep beside those. Needs a started Session.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "failure.h"
#include "setting_values.h"
#include "vorna/datadictionary.h"
#include "vorna/fileformat.h"

namespace tessel::cli {

struct SettingInfo {
  std::string key;
  std::string type;  // the X of vorna.DataTypes:vorna.X
  SettingValue defaultValue;
  SettingValue minimum;
  SettingValue maximum;
  std::vector<SettingValue> choices;
  vorna::Data identifier;    // the key as the saver gave it, for the settings dictionary
  vorna::Data defaultData;   // the default as the saver gave it, whose type a value takes
};

struct SaverInfo {
  std::string id;
  std::vector<std::string> suffixes;
  // The capabilities the saver answers: the part of the key behind
  // vorna.mediaoutputurlproperties. and the value.
  std::vector<std::pair<std::string, SettingValue>> capabilities;
  std::vector<SettingInfo> settings;
  // What a saver with system options (supports_systemoptions) keeps beside its settings
  // without describing it: the compressor its chooser picks (compressor_settings.h).
  std::vector<SettingInfo> systemSettings;
};

std::vector<std::string> ListSavers();
// The common suffixes a file format names.
std::vector<std::string> SuffixesOf(const vorna::FileFormatInterface& format);
// The first saver whose file format names suffix (without the dot, any case); empty
// when none does.
std::string FindSaverForSuffix(const std::string& suffix);
// What the saver id is and describes; settings, when given, are the values so far, on
// which a description may depend. A usage failure for an id that is no saver.
bool DescribeSaver(const std::string& id, const vorna::DataDictionary* settings, SaverInfo& info, Failure& failure);
// The setting named key, or null.
const SettingInfo* FindSetting(const SaverInfo& saver, const std::string& key);

}  // namespace tessel::cli
