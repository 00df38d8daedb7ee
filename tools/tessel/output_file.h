// Where an export writes: a temporary file beside OUT whose name keeps OUT's suffix
// (savers may choose their container by it), renamed onto OUT only when the movie is
// whole. Until then OUT is untouched: a failed or stopped export removes its temporary
// file and leaves no half-written OUT, nor clobbers one that was there.
#pragma once

#include <cstdint>
#include <string>

#include "failure.h"

namespace tessel::cli {

class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  // Removes the temporary file unless it was committed.
  ~OutputFile();

  // Picks the temporary name; fails when OUT's folder does not exist or OUT is a folder.
  bool Prepare(const std::string& out, Failure& failure);
  const std::string& TemporaryPath() const { return _temporary; }
  // Renames the temporary file onto OUT.
  bool Commit(Failure& failure);
  // The size of OUT after Commit.
  int64_t Bytes() const;

 private:
  std::string _out;
  std::string _temporary;
  bool _committed = false;
};

}  // namespace tessel::cli
