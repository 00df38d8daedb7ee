#include "export_settings.h"

#include "compressor_list.h"
#include "compressor_settings.h"
#include "four_character_code.h"
#include "host_text.h"
#include "settings_file.h"
#include "terminal_chooser.h"
#include "vorna_export.h"

namespace tessel::cli {

namespace {

// The options' settings, each value read as the type the saver describes.
bool SetOptions(const SaverInfo& saver, const ConvertJob& job, vorna::DataDictionary& settings, Failure& failure) {
  for (const auto& [key, text] : job.settings) {
    const SettingInfo* setting = FindSetting(saver, key);
    if (!setting) {
      failure = UsageFailure("the saver " + saver.id + " has no setting \"" + key + "\" (tessel describe " + saver.id +
                             " lists them)");
      return false;
    }
    vorna::Data value;
    std::string error;
    if (!ParseValue(text, setting->type, setting->defaultData.GetType(), value, error) ||
        settings.Set(vorna::ConstDataPtr(setting->identifier), value).IsError()) {
      failure = UsageFailure("setting " + key + ": " + (error.empty() ? "cannot be set" : error));
      return false;
    }
  }
  return true;
}

bool HasSystemOptions(const SaverInfo& saver, const char* option, Failure& failure) {
  if (!saver.systemSettings.empty()) return true;
  failure = UsageFailure(std::string(option) + ": the saver " + saver.id +
                         " has no compressor to choose (it goes with savers that have system options, such as avi)");
  return false;
}

bool SetCompressorOption(const SaverInfo& saver, ConvertJob& job, Failure& failure) {
  if (!HasSystemOptions(saver, "--compressor", failure)) return false;
  uint32_t code = 0;
  std::vector<TesselCompressor> compressors = PlatformCompressors();
  const TesselCompressor* compressor =
      ParseFourCharacterCode(job.compressor, code) ? FindCompressor(compressors, code) : nullptr;
  if (!compressor) {
    failure = UsageFailure("--compressor: no compressor has the code \"" + job.compressor +
                           "\" (tessel compressors lists them)");
    return false;
  }
  if (!SetCompressor(compressor->fccHandler, job.request.settings)) {
    failure = {kExitFailure, "--compressor: the settings cannot be set"};
    return false;
  }
  return true;
}

// The saver's system options over settings, with no window to own the dialog.
vorna::Result<vorna::Bool> EditSystemOptions(const std::string& saverId, vorna::DataDictionary& settings) {
  VORNA_ASSIGN_OR_RETURN(vorna::StrongRef<vorna::MediaOutputUrlInterface> saver, vorna::host::CreateSaver(saverId));
  vorna::GetWindowDelegate noWindow;
  VORNA_RETURN_ON_ERROR(noWindow.Set([]() -> vorna::Result<void*> { return nullptr; }));
  return saver.EditSystemOptions(settings, noWindow);
}

// The system options on the terminal, which change the settings only when the user
// confirms a compressor.
bool Choose(const SaverInfo& saver, ConvertJob& job, Failure& failure) {
  TerminalChooser chooser;
  if (!HasSystemOptions(saver, "--choose", failure) || !chooser.Install(failure)) return false;
  vorna::Result<vorna::Bool> chosen = EditSystemOptions(saver.id, job.request.settings);
  if (chosen.IsError()) {
    failure = {kExitFailure, "the compressor chooser failed: " + ErrorMessage(chosen.GetError())};
    return false;
  }
  if (chosen.GetValue()) return true;
  std::string kept = job.settingsFile.empty() ? "" : ", and " + job.settingsFile + " is as it was";
  failure = {kExitChoiceCancelled, job.output + ": the compressor choice was cancelled; nothing was written" + kept};
  return false;
}

}  // namespace

bool SettleSettings(const SaverInfo& saver, ConvertJob& job, Failure& failure) {
  vorna::DataDictionary& settings = job.request.settings;
  if (!job.settingsFile.empty() && !ReadSettingsFile(job.settingsFile, saver, settings, failure)) return false;
  if (!SetOptions(saver, job, settings, failure)) return false;
  if (!job.compressor.empty() && !SetCompressorOption(saver, job, failure)) return false;
  if (job.choose && !Choose(saver, job, failure)) return false;
  return job.settingsFile.empty() || WriteSettingsFile(job.settingsFile, settings, failure);
}

}  // namespace tessel::cli
