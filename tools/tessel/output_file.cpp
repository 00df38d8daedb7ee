#include "output_file.h"

#include <unistd.h>

#include <filesystem>

namespace tessel::cli {

namespace fs = std::filesystem;

OutputFile::~OutputFile() {
  std::error_code ignored;
  if (!_committed && !_temporary.empty()) fs::remove(_temporary, ignored);
}

bool OutputFile::Prepare(const std::string& out, Failure& failure) {
  fs::path path(out);
  fs::path folder = path.parent_path().empty() ? fs::path(".") : path.parent_path();
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    failure = {kExitFailure, out + ": the folder " + folder.string() + " does not exist"};
    return false;
  }
  if (fs::is_directory(path, error) || path.filename().empty()) {
    failure = {kExitFailure, out + ": is a folder, not a file"};
    return false;
  }
  _out = out;
  std::string name = "." + path.stem().string() + ".tessel-" + std::to_string(::getpid()) + path.extension().string();
  _temporary = (folder / name).string();
  return true;
}

bool OutputFile::Commit(Failure& failure) {
  std::error_code error;
  fs::rename(_temporary, _out, error);
  if (error) {
    failure = {kExitFailure, _out + ": " + error.message()};
    return false;
  }
  _committed = true;
  return true;
}

int64_t OutputFile::Bytes() const {
  std::error_code error;
  uintmax_t size = fs::file_size(_out, error);
  return error ? -1 : int64_t(size);
}

}  // namespace tessel::cli
