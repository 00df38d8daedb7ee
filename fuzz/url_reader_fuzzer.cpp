// The read side through the platform's own url reader: the fuzzer's bytes in a file,
// read as read_fuzzer reads its memory url, with g_mediaFoundationUseMSUrlReader set, so
// that the platform opens the file by its path instead of the module's byte stream.
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz_host.h"
#include "media_reading.h"
#include "vorna_host.h"

namespace {

// One file per fuzzing process, rewritten for each input.
std::string g_path;

bool WriteFile(const std::vector<uint8_t>& bytes) {
  std::FILE* file = std::fopen(g_path.c_str(), "wb");
  if (!file) return false;
  bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && written;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tessel::fuzz::StartHostWithModule();
  if (!vorna::host::SetConfiguration("g_mediaFoundationUseMSUrlReader", "true")) std::abort();
  const char* directory = std::getenv("TMPDIR");
  g_path = std::string(directory && *directory ? directory : "/tmp") + "/tessel-url-reader-fuzz-" +
           std::to_string(getpid());
  std::atexit([] { std::remove(g_path.c_str()); });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  FuzzedDataProvider data(bytes, size);
  tessel::fuzz::ReadPlan plan = tessel::fuzz::TakeReadPlan(data);
  if (!WriteFile(data.ConsumeRemainingBytes<uint8_t>())) std::abort();
  vorna::Url url;
  if (!url.Set(g_path.c_str()).IsError()) tessel::fuzz::ReadMedia(url, plan);
  return 0;
}
