// The sink writer's containers. MPEG-4 and 3GP put their index in front of the media
// data (fast start), so that a player can begin while the file is still loading; MPEG-4
// also carries the colour description of its video in the container. ASF keeps one time
// per frame, so its pictures must come in the order they are shown.
#include "mfreadwrite/sink_container.h"

#include <algorithm>
#include <cctype>

#include "mfapi.h"
#include "mferror.h"
#include "mfidl.h"

namespace tessel::platform {

namespace {

constexpr const GUID* kMpeg4Video[] = {&MFVideoFormat_H264};
constexpr const GUID* kMpeg4Audio[] = {&MFAudioFormat_AAC, &MFAudioFormat_MP3};
constexpr const GUID* k3gpAudio[] = {&MFAudioFormat_AAC};
constexpr const GUID* kAsfVideo[] = {&MFVideoFormat_H264, &MFVideoFormat_WMV1, &MFVideoFormat_WMV2,
                                     &MFVideoFormat_WMV3};
constexpr const char* kMpeg4Suffixes[] = {".mp4", ".m4v"};
constexpr const char* k3gpSuffixes[] = {".3gp"};
constexpr const char* kAsfSuffixes[] = {".asf", ".wmv", ".wma"};

const SinkContainer kContainers[] = {
    {&MFTranscodeContainerType_MPEG4, "mp4", "movflags=+faststart+write_colr", true, kMpeg4Video, kMpeg4Audio,
     kMpeg4Suffixes},
    {&MFTranscodeContainerType_3GP, "3gp", "movflags=+faststart", true, kMpeg4Video, k3gpAudio, k3gpSuffixes},
    // ASF has no edit list for the AAC encoder's delay: its first packet keeps its time
    // before zero, inside the file's preroll, so that the pictures still start at zero
    // and the sound stays in step with them.
    {&MFTranscodeContainerType_ASF, "asf", "avoid_negative_ts=disabled", false, kAsfVideo, kMpeg4Audio,
     kAsfSuffixes},
};

bool EndsWith(const std::string& text, const char* suffix) {
  std::string tail(suffix);
  if (text.size() < tail.size()) return false;
  return std::equal(tail.begin(), tail.end(), text.end() - tail.size(),
                    [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

}  // namespace

HRESULT ChooseContainer(IMFAttributes* attributes, const std::string& path, const SinkContainer** container) {
  GUID type = GUID_NULL;
  bool named = attributes && SUCCEEDED(attributes->GetGUID(MF_TRANSCODE_CONTAINERTYPE, &type));
  for (const SinkContainer& candidate : kContainers) {
    bool chosen = named ? *candidate.type == type
                        : std::any_of(candidate.suffixes.begin(), candidate.suffixes.end(),
                                      [&](const char* suffix) { return EndsWith(path, suffix); });
    if (chosen) {
      *container = &candidate;
      return S_OK;
    }
  }
  return MF_E_UNSUPPORTED_BYTESTREAM_TYPE;
}

bool Holds(const SinkContainer& container, REFGUID subtype) {
  auto same = [&](const GUID* held) { return *held == subtype; };
  return std::any_of(container.video.begin(), container.video.end(), same) ||
         std::any_of(container.audio.begin(), container.audio.end(), same);
}

}  // namespace tessel::platform
