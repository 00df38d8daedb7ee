// The export side: the host's test pattern, of a frame size, rate and pixel aspect taken
// from the fuzzer's bytes, written for a few frames through one of the registered
// savers into a file of a temporary directory, with a settings dictionary of keys,
// types and values taken from the bytes too. Frames of more than MAX_PIXELS are passed
// over: the reader never delivers frames that large, and encoding them would only slow
// the fuzzer down.
#include "vorna/translationunit.h"

#include <fuzzer/FuzzedDataProvider.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "fuzz_host.h"
#include "vorna/array.h"
#include "vorna/datadictionary.h"
#include "vorna/resourceid.h"
#include "vorna_export.h"
#include "vorna_host.h"

namespace {

using namespace vorna;

VORNA_DEFINE_RESOURCE_ID(g_codecKey, "codec");
VORNA_DEFINE_RESOURCE_ID(g_audioCodecKey, "audio.codec");
VORNA_DEFINE_RESOURCE_ID(g_audioRateKey, "audio.samplerate");
VORNA_DEFINE_RESOURCE_ID(g_audioKilobitsKey, "audio.kilobitrate");
VORNA_DEFINE_RESOURCE_ID(g_dataRateKey, "datarate");
VORNA_DEFINE_RESOURCE_ID(g_keyFramesKey, "keyframes");
VORNA_DEFINE_RESOURCE_ID(g_srgbKey, "disable srgb conversion");
VORNA_DEFINE_RESOURCE_ID(g_aviTypeKey, "avitype");
VORNA_DEFINE_RESOURCE_ID(g_aviHandlerKey, "avihandler");
VORNA_DEFINE_RESOURCE_ID(g_qualityKey, "quality");
VORNA_DEFINE_RESOURCE_ID(g_customDataKey, "customdata");
VORNA_DEFINE_RESOURCE_ID(g_bitmapHeaderKey, "bitmapinfoheader");

const InternedId* const SETTING_KEYS[] = {&g_codecKey,    &g_audioCodecKey, &g_audioRateKey,  &g_audioKilobitsKey,
                                          &g_dataRateKey, &g_keyFramesKey,  &g_srgbKey,       &g_aviTypeKey,
                                          &g_aviHandlerKey, &g_qualityKey,  &g_customDataKey, &g_bitmapHeaderKey};
// Texts a setting of type Id or String is most likely to meet.
const char* const WORDS[] = {"H.264", "WMV1", "WMV2", "WMV3", "aac", "mp3", "opus", "vidc", "iyuv", "mjpg", ""};

constexpr Int MAX_PIXELS = Int(1) << 18;
constexpr Int MAX_SIDE = 40000;
constexpr int MAX_FRAMES = 3;
constexpr int MAX_SETTINGS = 8;

std::vector<std::string> g_savers;
std::filesystem::path g_directory;

// A number of the kind settings, rates and aspects get wrong: the edges first, else any.
Float64 PickNumber(FuzzedDataProvider& data) {
  const Float64 edges[] = {0.0,  -1.0, 1.0, 0.5, 1e-300, 1e300, std::numeric_limits<Float64>::infinity(),
                           std::numeric_limits<Float64>::quiet_NaN(), 29.97, 4.0 / 3, 65536.5, -1e300};
  if (data.ConsumeBool()) return edges[data.ConsumeIntegralInRange<size_t>(0, std::size(edges) - 1)];
  return data.ConsumeFloatingPoint<Float64>();
}

std::string PickText(FuzzedDataProvider& data) {
  if (data.ConsumeBool()) return WORDS[data.ConsumeIntegralInRange<size_t>(0, std::size(WORDS) - 1)];
  return data.ConsumeRandomLengthString(16);
}

Id OwnedId(const std::string& text) {
  Id id;
  (void)id.Init(text.data(), Int(text.size()));
  return id;
}

// A value of one of the types settings hold, or of one they never do.
Data PickValue(FuzzedDataProvider& data) {
  switch (data.ConsumeIntegralInRange(0, 10)) {
    case 0: return MakeData(data.ConsumeIntegral<Int32>());
    case 1: return MakeData(data.ConsumeIntegral<Int64>());
    case 2: return MakeData(data.ConsumeIntegral<UInt32>());
    case 3: return MakeData(PickNumber(data));
    case 4: return MakeData(Bool(data.ConsumeBool()));
    case 5: return MakeData(OwnedId(PickText(data)));
    case 6: {
      String text;
      std::string bytes = PickText(data);
      (void)text.SetCString(bytes.data(), Int(bytes.size()));
      return MakeData(text);
    }
    case 7: return MakeData(BytesValue{data.ConsumeIntegral<Int64>()});
    case 8: {
      Array<Char> bytes;
      std::string state = data.ConsumeRandomLengthString(64);
      if (BaseArray<Char>* writable = bytes.MakeWritable()) (void)writable->Append(state.data(), Int(state.size()));
      return MakeData(bytes);
    }
    case 9: return MakeData(TimeValue(PickNumber(data)));
    default: return MakeData(DataDictionary());
  }
}

DataDictionary PickSettings(FuzzedDataProvider& data) {
  DataDictionary settings;
  const int count = data.ConsumeIntegralInRange(0, MAX_SETTINGS);
  for (int i = 0; i < count; ++i) {
    Data value = PickValue(data);
    if (data.ConsumeIntegralInRange(0, 3) != 0) {
      const InternedId& key = *SETTING_KEYS[data.ConsumeIntegralInRange<size_t>(0, std::size(SETTING_KEYS) - 1)];
      (void)settings.Set(key, value);
    } else {
      (void)settings.Set(ConstDataPtr(MakeData(OwnedId(PickText(data)))), value);
    }
  }
  return settings;
}

// A side of a frame: mostly small, sometimes at or past the savers' limits.
Int PickSide(FuzzedDataProvider& data) {
  const Int edges[] = {0, 1, 2, 3, 15, 16, 17, 32000, 32001, MAX_SIDE};
  if (data.ConsumeBool()) return edges[data.ConsumeIntegralInRange<size_t>(0, std::size(edges) - 1)];
  return data.ConsumeIntegralInRange<Int>(0, 512);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  tessel::fuzz::StartHostWithModule();
  g_savers = host::ListRegistry("vorna.ImageSavers");
  const char* directory = std::getenv("TMPDIR");
  g_directory = std::filesystem::path(directory && *directory ? directory : "/tmp") /
                ("tessel-export-fuzz-" + std::to_string(getpid()));
  std::filesystem::create_directories(g_directory);
  std::atexit([] { std::filesystem::remove_all(g_directory); });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  if (g_savers.empty()) return -1;
  FuzzedDataProvider data(bytes, size);
  host::TestPatternOptions pattern;
  pattern.width = PickSide(data);
  pattern.height = PickSide(data);
  if (pattern.width * pattern.height > MAX_PIXELS) return -1;
  pattern.fps = data.ConsumeFloatingPointInRange<Float64>(0.5, 240);
  pattern.duration = data.ConsumeIntegralInRange(1, MAX_FRAMES) / pattern.fps;
  pattern.pixelAspect = PickNumber(data);
  pattern.toneHertz = data.ConsumeBool() ? 440 : 0;
  pattern.floatSound = data.ConsumeBool();
  host::ExportRequest request;
  request.saver = g_savers[data.ConsumeIntegralInRange<size_t>(0, g_savers.size() - 1)];
  if (data.ConsumeBool()) request.fps = PickNumber(data);
  request.settings = PickSettings(data);
  const std::filesystem::path output = g_directory / ("movie." + request.saver);
  if (request.output.Set(output.c_str()).IsError()) return -1;
  Result<std::unique_ptr<host::ExportSession>> session = host::ExportSession::OpenTestPattern(pattern, request);
  tessel::fuzz::RequireClearAnswer(session);
  if (!session.IsError()) tessel::fuzz::RequireClearAnswer(session.GetValue()->Run(nullptr));
  std::filesystem::remove(output);
  return 0;
}
