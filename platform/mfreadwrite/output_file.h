// OutputFile: the file of a sink writer and the AVIO context through which its muxer
// writes it. The file is made when the writer is made. Every byte written counts against
// the disk space that the control door can limit. One thread at a time.
#pragma once

#include <memory>
#include <string>

#include "mfreadwrite/ffmpeg_owners.h"
#include "windows.h"

namespace tessel::platform {

class OutputFile {
 public:
  // Creates or empties the file. A missing folder gives ERROR_PATH_NOT_FOUND, one that
  // can't be written E_ACCESSDENIED, as HRESULTs.
  static HRESULT Create(const std::string& path, std::unique_ptr<OutputFile>* file);
  // Hands what the AVIO context still holds to the file, then closes it.
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  AVIOContext* Io() const { return io_.get(); }
  const std::string& Path() const { return path_; }

 private:
  OutputFile(int fd, std::string path) : fd_(fd), path_(std::move(path)) {}
  static int Write(void* opaque, uint8_t* data, int size);
  static int64_t Seek(void* opaque, int64_t offset, int whence);

  int fd_;
  std::string path_;
  AvioContextPtr io_;
};

}  // namespace tessel::platform
