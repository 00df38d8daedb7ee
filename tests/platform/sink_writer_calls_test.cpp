// The sink writer's calls: creation and the choice of container, refused stream types,
// calls out of order, a writer released unfinished, a full disk and an encoder that
// can't be opened.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "codecapi.h"
#include "comdef.h"
#include "mferror.h"
#include "mfidl.h"
#include "tessel_platform_control.h"
#include "writer_support.h"

namespace tessel::platform_test {
namespace {

const HRESULT kDiskFull = HRESULT_FROM_WIN32(ERROR_DISK_FULL);

ComPtr<IMFSinkWriter> CreateWriter(const std::string& path, const GUID* container = nullptr,
                                   HRESULT* status = nullptr) {
  ComPtr<IMFAttributes> attributes;
  MFCreateAttributes(&attributes, 1);
  if (container) attributes->SetGUID(MF_TRANSCODE_CONTAINERTYPE, *container);
  ComPtr<IMFSinkWriter> writer;
  HRESULT hr = MFCreateSinkWriterFromURL(Wide(path).c_str(), nullptr, attributes.Get(), &writer);
  if (status) *status = hr;
  return writer;
}

// Lifts the disk limit again however the test ends.
struct DiskSpace {
  explicit DiskSpace(LONGLONG bytes) { TesselPlatformSetSinkDiskSpace(bytes); }
  ~DiskSpace() { TesselPlatformSetSinkDiskSpace(-1); }
};

TEST(SinkWriterCreation, ContainerComesFromTheAttributeOrTheSuffix) {
  std::filesystem::create_directories(WrittenPath("folder.mp4"));
  std::ofstream(WrittenPath("plain_file")) << "x";
  struct Case {
    const char* name;
    const GUID* container;
    HRESULT status;
  };
  const Case cases[] = {
      {"suffix.mp4", nullptr, S_OK},
      {"suffix.M4V", nullptr, S_OK},
      {"suffix.3gp", nullptr, S_OK},
      {"suffix.wma", nullptr, S_OK},
      {"suffix.avi", nullptr, MF_E_UNSUPPORTED_BYTESTREAM_TYPE},
      {"attribute.avi", &MFTranscodeContainerType_ASF, S_OK},
      {"attribute.mp4", &MFTranscodeContainerType_AVI, MF_E_UNSUPPORTED_BYTESTREAM_TYPE},
      {"missing/folder/clip.mp4", nullptr, HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)},
      {"plain_file/clip.mp4", nullptr, HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)},
      {"folder.mp4", nullptr, E_ACCESSDENIED},
  };
  for (const Case& c : cases) {
    std::string path = WrittenPath(c.name);
    std::error_code ignored;
    if (c.status != E_ACCESSDENIED) std::filesystem::remove(path, ignored);
    HRESULT status = E_FAIL;
    ComPtr<IMFSinkWriter> writer = CreateWriter(path, c.container, &status);
    EXPECT_EQ(status, c.status) << c.name;
    EXPECT_EQ(writer != nullptr, SUCCEEDED(c.status)) << c.name;
    EXPECT_EQ(std::filesystem::is_regular_file(path), SUCCEEDED(c.status)) << c.name << ": made with the writer";
  }
  EXPECT_EQ(std::u16string(_com_error(HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND)).ErrorMessage()),
            u"The system cannot find the path specified.");
}

TEST(SinkWriterCreation, ArgumentsAndModesNotOffered) {
  ComPtr<IMFSinkWriter> writer;
  std::u16string path = Wide(WrittenPath("arguments.mp4"));
  EXPECT_EQ(MFCreateSinkWriterFromURL(path.c_str(), nullptr, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(MFCreateSinkWriterFromURL(nullptr, nullptr, nullptr, &writer), E_INVALIDARG);
  ComPtr<IMFByteStream> stream;
  ASSERT_EQ(MFCreateFile(MF_ACCESSMODE_WRITE, MF_OPENMODE_DELETE_IF_EXIST, MF_FILEFLAGS_NONE, path.c_str(), &stream),
            S_OK);
  EXPECT_EQ(MFCreateSinkWriterFromURL(path.c_str(), stream.Get(), nullptr, &writer), E_NOTIMPL);
  ComPtr<IMFAttributes> asynchronous;
  MFCreateAttributes(&asynchronous, 1);
  asynchronous->SetUnknown(MF_SINK_WRITER_ASYNC_CALLBACK, stream.Get());
  EXPECT_EQ(MFCreateSinkWriterFromURL(path.c_str(), nullptr, asynchronous.Get(), &writer), E_NOTIMPL);
  EXPECT_EQ(writer, nullptr);
}

TEST(SinkWriterStreams, WhatTheContainersRefuse) {
  struct Case {
    const char* name;
    const char* suffix;
    std::function<ComPtr<IMFMediaType>()> type;
    HRESULT status;
  };
  auto video = [](const char* suffix, const GUID* subtype, std::function<void(IMFMediaType*)> change = {}) {
    return [=] {
      ClipSpec spec{suffix, subtype, nullptr};
      ComPtr<IMFMediaType> type = VideoTargetType(spec);
      if (change) change(type.Get());
      return type;
    };
  };
  auto audio = [](const GUID* subtype, std::function<void(IMFMediaType*)> change = {}) {
    return [=] {
      ClipSpec spec{".mp4", &MFVideoFormat_H264, subtype};
      ComPtr<IMFMediaType> type = AudioTargetType(spec);
      if (change) change(type.Get());
      return type;
    };
  };
  const Case cases[] = {
      {"mp3 in 3gp", ".3gp", audio(&MFAudioFormat_MP3), MF_E_INVALIDMEDIATYPE},
      {"wmv2 in mp4", ".mp4", video(".mp4", &MFVideoFormat_WMV2), MF_E_INVALIDMEDIATYPE},
      {"wmv3 in mp4", ".mp4", video(".mp4", &MFVideoFormat_WMV3), MF_E_INVALIDMEDIATYPE},
      {"wmv1 in 3gp", ".3gp", video(".3gp", &MFVideoFormat_WMV1), MF_E_INVALIDMEDIATYPE},
      {"h264 as sound", ".mp4",
       video(".mp4", &MFVideoFormat_H264, [](IMFMediaType* t) { t->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Audio); }),
       MF_E_INVALIDMEDIATYPE},
      {"no bit rate", ".mp4", video(".mp4", &MFVideoFormat_H264, [](IMFMediaType* t) { t->DeleteItem(MF_MT_AVG_BITRATE); }),
       MF_E_INVALIDMEDIATYPE},
      {"odd width", ".mp4",
       video(".mp4", &MFVideoFormat_H264, [](IMFMediaType* t) { MFSetAttributeSize(t, MF_MT_FRAME_SIZE, 321, 240); }),
       MF_E_INVALIDMEDIATYPE},
      {"interlaced", ".mp4",
       video(".mp4", &MFVideoFormat_H264,
             [](IMFMediaType* t) { t->SetUINT32(MF_MT_INTERLACE_MODE, MFVideoInterlace_FieldInterleavedUpperFirst); }),
       MF_E_INVALIDMEDIATYPE},
      {"high 10", ".mp4",
       video(".mp4", &MFVideoFormat_H264,
             [](IMFMediaType* t) { t->SetUINT32(MF_MT_MPEG2_PROFILE, eAVEncH264VProfile_High10); }),
       MF_E_INVALIDMEDIATYPE},
      {"three channels", ".mp4", audio(&MFAudioFormat_AAC, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, 3); }),
       MF_E_INVALIDMEDIATYPE},
      {"adts payload", ".mp4", audio(&MFAudioFormat_AAC, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AAC_PAYLOAD_TYPE, 1); }),
       MF_E_INVALIDMEDIATYPE},
      {"he-aac", ".mp4",
       audio(&MFAudioFormat_AAC, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, 0x2C); }),
       MF_E_INVALIDMEDIATYPE},
      {"mp3 at 96 kHz", ".mp4",
       audio(&MFAudioFormat_MP3, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, 96000); }),
       MF_E_INVALIDMEDIATYPE},
  };
  for (const Case& c : cases) {
    ComPtr<IMFSinkWriter> writer = CreateWriter(WrittenPath(std::string("refused") + c.suffix));
    DWORD index = 7;
    EXPECT_EQ(writer->AddStream(c.type().Get(), &index), c.status) << c.name;
    EXPECT_EQ(index, 7u) << c.name;
  }
}

TEST(SinkWriterStreams, InputTypesThatDontFitAreRefused) {
  ClipSpec spec{".asf", &MFVideoFormat_H264, &MFAudioFormat_AAC};
  struct Case {
    const char* name;
    bool video;
    std::function<void(IMFMediaType*)> change;
  };
  const Case cases[] = {
      {"other size", true, [](IMFMediaType* t) { MFSetAttributeSize(t, MF_MT_FRAME_SIZE, 640, 480); }},
      {"other rate", true, [](IMFMediaType* t) { MFSetAttributeRatio(t, MF_MT_FRAME_RATE, 30, 1); }},
      {"other aspect", true, [](IMFMediaType* t) { MFSetAttributeRatio(t, MF_MT_PIXEL_ASPECT_RATIO, 4, 3); }},
      {"nv12", true, [](IMFMediaType* t) { t->SetGUID(MF_MT_SUBTYPE, MFVideoFormat_NV12); }},
      {"narrow stride", true, [](IMFMediaType* t) { t->SetUINT32(MF_MT_DEFAULT_STRIDE, 320); }},
      {"pcm as video", true, [](IMFMediaType* t) { t->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_PCM); }},
      {"12 bits", false, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, 12); }},
      {"9 channels", false, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, 9); }},
      {"float", false, [](IMFMediaType* t) { t->SetGUID(MF_MT_SUBTYPE, MFAudioFormat_Float); }},
      {"block alignment", false, [](IMFMediaType* t) { t->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, 3); }},
  };
  ComPtr<IMFSinkWriter> writer = CreateWriter(WrittenPath("inputs.asf"));
  DWORD audio = 0, video = 0;
  ASSERT_EQ(writer->AddStream(AudioTargetType(spec).Get(), &audio), S_OK);
  ASSERT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
  EXPECT_EQ(audio, 0u) << "indices follow the calls";
  EXPECT_EQ(video, 1u);
  for (const Case& c : cases) {
    ComPtr<IMFMediaType> type = c.video ? VideoInputType(spec) : PcmInputType(spec);
    c.change(type.Get());
    EXPECT_EQ(writer->SetInputMediaType(c.video ? video : audio, type.Get(), nullptr), MF_E_INVALIDMEDIATYPE) << c.name;
  }
}

TEST(SinkWriterOrder, CallsOutOfOrderAreInvalidRequests) {
  ClipSpec spec{".mp4", &MFVideoFormat_H264, nullptr};
  ComPtr<IMFSinkWriter> writer = CreateWriter(WrittenPath("order.mp4"));
  EXPECT_EQ(writer->BeginWriting(), MF_E_INVALIDREQUEST) << "no stream";
  DWORD video = 0;
  ASSERT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
  EXPECT_EQ(writer->WriteSample(video, PatternSample(spec, 0, true).Get()), MF_E_INVALIDREQUEST);
  EXPECT_EQ(writer->Finalize(), MF_E_INVALIDREQUEST);
  EXPECT_EQ(writer->BeginWriting(), MF_E_TRANSFORM_TYPE_NOT_SET);
  EXPECT_EQ(writer->SetInputMediaType(3, VideoInputType(spec).Get(), nullptr), MF_E_INVALIDSTREAMNUMBER);
  ASSERT_EQ(writer->SetInputMediaType(video, VideoInputType(spec).Get(), nullptr), S_OK);
  ASSERT_EQ(writer->BeginWriting(), S_OK);
  EXPECT_EQ(writer->BeginWriting(), MF_E_INVALIDREQUEST);
  DWORD late = 0;
  EXPECT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &late), MF_E_INVALIDREQUEST);
  EXPECT_EQ(writer->SetInputMediaType(video, VideoInputType(spec).Get(), nullptr), MF_E_INVALIDREQUEST);
  EXPECT_EQ(writer->WriteSample(3, PatternSample(spec, 0, true).Get()), MF_E_INVALIDSTREAMNUMBER);
  ComPtr<IMFSample> untimed;
  MFCreateSample(&untimed);
  EXPECT_EQ(writer->WriteSample(video, untimed.Get()), MF_E_NO_SAMPLE_TIMESTAMP);
  EXPECT_EQ(writer->WriteSample(video, MakeSample(std::vector<uint8_t>(100), 0, 0).Get()), MF_E_BUFFERTOOSMALL);
  EXPECT_EQ(writer->PlaceMarker(video, nullptr), MF_E_INVALIDREQUEST) << "only for asynchronous writers";
  EXPECT_EQ(writer->SendStreamTick(video, 0), S_OK);
  // The same time twice: the second picture takes the next frame slot.
  for (int i : {0, 0, 1}) ASSERT_EQ(writer->WriteSample(video, PatternSample(spec, i, true).Get()), S_OK);
  ASSERT_EQ(writer->Finalize(), S_OK);
  EXPECT_EQ(writer->WriteSample(video, PatternSample(spec, 2, true).Get()), MF_E_INVALIDREQUEST);
  EXPECT_EQ(writer->Finalize(), MF_E_INVALIDREQUEST);
  MF_SINK_WRITER_STATISTICS statistics{};
  statistics.cb = sizeof(statistics);
  ASSERT_EQ(writer->GetStatistics(MF_SINK_WRITER_ALL_STREAMS, &statistics), S_OK);
  EXPECT_EQ(statistics.qwNumSamplesReceived, 5u) << "the untimed, the short and three pictures";
  EXPECT_EQ(statistics.qwNumSamplesProcessed, 3u);
  EXPECT_EQ(ProbeMovie(WrittenPath("order.mp4")).video.packets, 3);
}

// Released without Finalize: the file holds what the muxer wrote, and the writer, its
// encoders and its muxer are gone.
TEST(SinkWriterRelease, UnfinishedWriterLeavesItsFile) {
  for (const char* suffix : {".mp4", ".asf"}) {
    ClipSpec spec{suffix, &MFVideoFormat_H264, &MFAudioFormat_AAC};
    std::string path = WrittenPath(std::string("unfinished") + suffix);
    int64_t before = TesselPlatformGetCounters().liveSinkWriters;
    {
      DWORD video = 0, audio = 0;
      ComPtr<IMFSinkWriter> writer = BeginClip(spec, path, &video, &audio);
      ASSERT_TRUE(writer);
      EXPECT_EQ(TesselPlatformGetCounters().liveSinkWriters, before + 1);
      ASSERT_EQ(writer->WriteSample(audio, MakeSample(TonePcm(1, 44100, 2, 16), 0, Ticks(1)).Get()), S_OK);
      for (int i = 0; i < 10; ++i) ASSERT_EQ(writer->WriteSample(video, PatternSample(spec, i, true).Get()), S_OK);
    }
    EXPECT_EQ(TesselPlatformGetCounters().liveSinkWriters, before);
    EXPECT_GT(std::filesystem::file_size(path), 0u);
  }
  EXPECT_FALSE(ProbeMovie(WrittenPath("unfinished.mp4")).opened) << "an MPEG-4 file without its index";
}

TEST(SinkWriterFailures, FullDiskFailsBeginWritingWriteSampleAndFinalize) {
  ClipSpec spec{".asf", &MFVideoFormat_WMV2, nullptr};
  DWORD video = 0, audio = 0;
  ComPtr<IMFSinkWriter> starting = CreateWriter(WrittenPath("full_at_the_start.asf"));
  ASSERT_EQ(starting->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
  ASSERT_EQ(starting->SetInputMediaType(video, VideoInputType(spec).Get(), nullptr), S_OK);
  ComPtr<IMFSinkWriter> writing = BeginClip(spec, WrittenPath("full_while_writing.asf"), &video, &audio);
  ComPtr<IMFSinkWriter> finishing = BeginClip(spec, WrittenPath("full_at_the_end.asf"), &video, &audio);
  for (int i = 0; i < spec.frames; ++i) ASSERT_EQ(finishing->WriteSample(video, PatternSample(spec, i, false).Get()), S_OK);
  HRESULT status = S_OK;
  {
    DiskSpace full(0);
    EXPECT_EQ(starting->BeginWriting(), kDiskFull) << "ASF writes its header at once";
    EXPECT_EQ(starting->BeginWriting(), MF_E_INVALIDREQUEST);
    for (int i = 0; i < spec.frames && SUCCEEDED(status); ++i) {
      status = writing->WriteSample(video, PatternSample(spec, i, false).Get());
    }
    EXPECT_EQ(status, kDiskFull);
    EXPECT_EQ(writing->Finalize(), kDiskFull);
    EXPECT_EQ(finishing->Finalize(), kDiskFull);
  }
  EXPECT_EQ(std::u16string(_com_error(kDiskFull).ErrorMessage()), u"There is not enough space on the disk.");
}

TEST(SinkWriterFailures, EncoderThatCannotBeOpened) {
  ClipSpec spec{".mp4", &MFVideoFormat_H264, &MFAudioFormat_AAC};
  ComPtr<IMFSinkWriter> writer = CreateWriter(WrittenPath("encoder.mp4"));
  DWORD audio = 0, video = 0;
  ASSERT_EQ(writer->AddStream(AudioTargetType(spec).Get(), &audio), S_OK);
  ASSERT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
  for (auto [stream, type] : {std::pair{audio, PcmInputType(spec)}, std::pair{video, VideoInputType(spec)}}) {
    TesselPlatformFailNextEncoderOpen(MF_E_TOPO_CODEC_NOT_FOUND);
    EXPECT_EQ(writer->SetInputMediaType(stream, type.Get(), nullptr), MF_E_TOPO_CODEC_NOT_FOUND);
    EXPECT_EQ(writer->BeginWriting(), MF_E_TRANSFORM_TYPE_NOT_SET);
    EXPECT_EQ(writer->SetInputMediaType(stream, type.Get(), nullptr), S_OK) << "the failure was for one opening";
  }
  EXPECT_EQ(writer->BeginWriting(), S_OK);
}

// WMV3 has the platform's own encoder, which takes up to 4096 pixels a side and fails
// its opening like FFmpeg's do.
TEST(SinkWriterFailures, Wmv3EncoderRefusalsComeAtTheInputType) {
  ClipSpec wide{".asf", &MFVideoFormat_WMV3, nullptr};
  wide.width = 4352;
  ComPtr<IMFSinkWriter> writer = CreateWriter(WrittenPath("wide.asf"));
  DWORD video = 0;
  ASSERT_EQ(writer->AddStream(VideoTargetType(wide).Get(), &video), S_OK);
  EXPECT_EQ(writer->SetInputMediaType(video, VideoInputType(wide).Get(), nullptr), MF_E_INVALIDMEDIATYPE);

  ClipSpec spec{".asf", &MFVideoFormat_WMV3, nullptr};
  writer = CreateWriter(WrittenPath("wmv3_open.asf"));
  ASSERT_EQ(writer->AddStream(VideoTargetType(spec).Get(), &video), S_OK);
  TesselPlatformFailNextEncoderOpen(E_OUTOFMEMORY);
  EXPECT_EQ(writer->SetInputMediaType(video, VideoInputType(spec).Get(), nullptr), E_OUTOFMEMORY);
  EXPECT_EQ(writer->SetInputMediaType(video, VideoInputType(spec).Get(), nullptr), S_OK);
  EXPECT_EQ(writer->BeginWriting(), S_OK);
}

}  // namespace
}  // namespace tessel::platform_test
