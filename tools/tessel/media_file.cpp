#include "media_file.h"

#include <filesystem>

#include "host_text.h"
#include "vorna/url.h"

namespace tessel::cli {

namespace {

// A path that names no file, or a directory, fails before any file format is asked.
bool CheckLocalFile(const std::string& path, const std::string& name, Failure& failure) {
  std::error_code error;
  std::filesystem::file_status status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) {
    failure = {kExitMissingFile, name + ": no such file"};
    return false;
  }
  if (std::filesystem::is_directory(status)) {
    failure = {kExitNoReader, name + ": is a directory, not a media file"};
    return false;
  }
  return true;
}

}  // namespace

bool ResolveInput(const std::string& file, vorna::Url& url, Failure& failure) {
  bool isUrl = file.find("://") != std::string::npos;
  if (!isUrl && !CheckLocalFile(file, file, failure)) return false;
  if (url.Set(file.c_str()).IsError()) {
    failure = UsageFailure(file + ": not a path or url");
    return false;
  }
  vorna::Result<vorna::String> path = url.GetSystemPath();
  return !isUrl || path.IsError() || CheckLocalFile(ToStdString(path.GetValue()), file, failure);
}

bool MediaFile::Open(const std::string& file, Failure& failure) {
  _name = file;
  vorna::Url url;
  if (!ResolveInput(file, url, failure)) return false;
  _urlText = ToStdString(url.ToString());
  vorna::Result<std::unique_ptr<vorna::host::ReadingSession>> opened = vorna::host::ReadingSession::Open(url);
  if (opened.IsError()) {
    bool noReader = vorna::IsErrorOfClass(opened.GetError(), vorna::g_IoErrorObject);
    failure = {noReader ? kExitNoReader : kExitFailure, file + ": " + ErrorMessage(opened.GetError())};
    return false;
  }
  _reading = std::move(opened.GetValue());
  return true;
}

Failure MediaFile::ExecuteFailure(vorna::ErrorWord error, double seconds) const {
  if (vorna::IsErrorOfClass(error, vorna::g_MediaStreamEOFErrorObject))
    return {kExitPastEnd, _name + ": nothing at " + SecondsText(seconds) + ": " + ErrorMessage(error)};
  return {kExitFailure, _name + ": reading at " + SecondsText(seconds) + " failed: " + ErrorMessage(error)};
}

}  // namespace tessel::cli
