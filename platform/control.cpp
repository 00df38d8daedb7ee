// Settings and counters behind tessel_platform_control.h.
#include <atomic>

#include "mfreadwrite/codec_log.h"
#include "mfreadwrite/h264_preset.h"
#include "msvfw32/compressor_chooser.h"
#include "msvfw32/compressor_table.h"
#include "platform_state.h"
#include "platform_counters.h"
#include "tessel_platform_control.h"

namespace tessel::platform {

namespace {
std::atomic<uint64_t> g_version{(uint64_t(10) << 32) | (uint64_t(0) << 16) | 0};
}

WindowsVersion ReportedWindowsVersion() {
  uint64_t v = g_version.load();
  return {uint32_t(v >> 32), uint32_t((v >> 16) & 0xFFFF), uint16_t(v & 0xFFFF)};
}

Counters& GetCounters() {
  static Counters counters;
  return counters;
}

}  // namespace tessel::platform

using tessel::platform::GetCounters;

extern "C" void TesselPlatformSetWindowsVersion(DWORD major, DWORD minor, WORD servicePack) {
  tessel::platform::g_version = (uint64_t(major) << 32) | (uint64_t(minor & 0xFFFF) << 16) | servicePack;
}

extern "C" TesselPlatformCounters TesselPlatformGetCounters() {
  auto& c = GetCounters();
  return {c.mfStartupCalls.load(), c.mfShutdownCalls.load(), c.aviInitCalls.load(), c.aviExitCalls.load(),
          c.liveSourceReaders.load(), c.liveSinkWriters.load()};
}

extern "C" void TesselPlatformFailNextMFStartup(HRESULT status) { GetCounters().failNextMFStartup = status; }

extern "C" void TesselPlatformRefuseAdvancedVideoProcessing(HRESULT status) {
  GetCounters().refuseAdvancedProcessing = status;
}

extern "C" void TesselPlatformFailNextBufferCreation(HRESULT status) { GetCounters().failNextBufferCreation = status; }

extern "C" void TesselPlatformFailNextReadSample(HRESULT status) { GetCounters().failNextReadSample = status; }

extern "C" void TesselPlatformFailNextEncoderOpen(HRESULT status) { GetCounters().failNextEncoderOpen = status; }

extern "C" void TesselPlatformSetSinkDiskSpace(LONGLONG bytes) { GetCounters().sinkDiskSpace = bytes < 0 ? -1 : bytes; }

extern "C" void TesselPlatformSetH264Preset(const char* preset) { tessel::platform::SetH264Preset(preset); }

extern "C" void TesselPlatformShowCodecLog(BOOL show) { tessel::platform::ShowCodecLog(show != FALSE); }

extern "C" void TesselPlatformFailNextGlobalAlloc(DWORD error) { GetCounters().failNextGlobalAlloc = error; }

extern "C" void TesselPlatformSetCompressorChooser(TesselCompressorChooser chooser, void* context) {
  tessel::platform::InstallCompressorChooser(chooser, context);
}

extern "C" DWORD TesselPlatformGetCompressors(TesselCompressor* list, DWORD capacity) {
  auto compressors = tessel::platform::Compressors();
  for (DWORD i = 0; list && i < capacity && i < compressors.size(); ++i) list[i] = compressors[i].info;
  return static_cast<DWORD>(compressors.size());
}
