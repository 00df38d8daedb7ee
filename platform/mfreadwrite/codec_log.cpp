// The filter in front of FFmpeg's console lines.
#include "mfreadwrite/codec_log.h"

#include <atomic>
#include <cstdarg>
#include <mutex>

extern "C" {
#include <libavutil/log.h>
}

namespace tessel::platform {

namespace {

std::atomic<bool> g_show{false};

void FilterLine(void* context, int level, const char* format, va_list arguments) {
  if (g_show.load(std::memory_order_relaxed)) av_log_default_callback(context, level, format, arguments);
}

}  // namespace

void TakeOverCodecLog() {
  static std::once_flag once;
  std::call_once(once, [] { av_log_set_callback(&FilterLine); });
}

void ShowCodecLog(bool show) {
  TakeOverCodecLog();
  g_show = show;
}

}  // namespace tessel::platform
