// The read side through the host and the module: the fuzzer's bytes as a memory url,
// detected, analysed and read as a player reads a file (media_reading.h). The module
// opens memory urls through its own byte stream over the host's input stream.
#include <cstdint>

#include "fuzz_host.h"
#include "media_reading.h"
#include "vorna_host.h"

namespace {
constexpr const char* BLOB = "fuzz-input";
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tessel::fuzz::StartHostWithModule();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  FuzzedDataProvider data(bytes, size);
  tessel::fuzz::ReadPlan plan = tessel::fuzz::TakeReadPlan(data);
  std::vector<uint8_t> media = data.ConsumeRemainingBytes<uint8_t>();
  vorna::host::RegisterMemoryBlob(BLOB, std::move(media));
  vorna::Url url;
  if (!url.Set((std::string("memory://") + BLOB).c_str()).IsError()) tessel::fuzz::ReadMedia(url, plan);
  vorna::host::UnregisterMemoryBlob(BLOB);
  return 0;
}
