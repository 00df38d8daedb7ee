// Start-up counters, live objects and injected failures of the stand-in.
#pragma once

#include <atomic>
#include <cstdint>

namespace tessel::platform {

struct Counters {
  std::atomic<int64_t> mfStartupCalls{0};
  std::atomic<int64_t> mfShutdownCalls{0};
  std::atomic<int64_t> aviInitCalls{0};
  std::atomic<int64_t> aviExitCalls{0};
  std::atomic<int32_t> failNextMFStartup{0};
  std::atomic<int32_t> failNextBufferCreation{0};
  std::atomic<int32_t> failNextReadSample{0};
  std::atomic<int32_t> refuseAdvancedProcessing{0};
  std::atomic<uint32_t> failNextGlobalAlloc{0};
  std::atomic<int64_t> liveSourceReaders{0};
  std::atomic<int64_t> liveSinkWriters{0};
  std::atomic<int32_t> failNextEncoderOpen{0};
  // Bytes the sink writers' files may still take; -1 for no limit.
  std::atomic<int64_t> sinkDiskSpace{-1};
};

Counters& GetCounters();

}  // namespace tessel::platform
