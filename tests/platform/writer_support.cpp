// Helpers of the sink writer tests.
#include "writer_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <map>

#include "codecapi.h"
#include "fixtures.h"
#include "frame_code.h"
#include "mmreg.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

namespace tessel::platform_test {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr UINT32 kAudioBytesPerSecond = 24000;

uint8_t Wave(double phase, double middle, double swing) {
  return uint8_t(std::lround(middle + swing * std::sin(2 * kPi * phase)));
}

// One decoder on the first stream of a type; frames in decode output order.
class Decoder {
 public:
  Decoder(const std::string& path, AVMediaType type) {
    if (avformat_open_input(&input_, path.c_str(), nullptr, nullptr) < 0) return;
    avformat_find_stream_info(input_, nullptr);
    stream_ = av_find_best_stream(input_, type, -1, -1, nullptr, 0);
    if (stream_ < 0) return;
    const AVCodec* codec = avcodec_find_decoder(input_->streams[stream_]->codecpar->codec_id);
    context_ = codec ? avcodec_alloc_context3(codec) : nullptr;
    if (!context_ || avcodec_parameters_to_context(context_, input_->streams[stream_]->codecpar) < 0 ||
        avcodec_open2(context_, codec, nullptr) < 0) {
      avcodec_free_context(&context_);
    }
  }
  ~Decoder() {
    av_frame_free(&frame_);
    av_packet_free(&packet_);
    avcodec_free_context(&context_);
    avformat_close_input(&input_);
  }
  double Seconds(int64_t time) const { return double(time) * av_q2d(input_->streams[stream_]->time_base); }

  // The next frame, valid until the next call; null at the end.
  const AVFrame* Next() {
    if (!context_) return nullptr;
    av_frame_unref(frame_);
    for (;;) {
      int got = avcodec_receive_frame(context_, frame_);
      if (got == 0) return frame_;
      if (got != AVERROR(EAGAIN)) return nullptr;
      if (av_read_frame(input_, packet_) < 0) {
        avcodec_send_packet(context_, nullptr);
        continue;
      }
      if (packet_->stream_index == stream_) avcodec_send_packet(context_, packet_);
      av_packet_unref(packet_);
    }
  }

 private:
  AVFormatContext* input_ = nullptr;
  AVCodecContext* context_ = nullptr;
  AVPacket* packet_ = av_packet_alloc();
  AVFrame* frame_ = av_frame_alloc();
  int stream_ = -1;
};

void DescribeStream(const AVStream& stream, StreamFacts* facts) {
  const AVCodecParameters& codec = *stream.codecpar;
  facts->present = true;
  facts->codec = codec.codec_id;
  facts->profile = codec.profile;
  facts->level = codec.level;
  facts->width = codec.width;
  facts->height = codec.height;
  facts->aspect = codec.sample_aspect_ratio;
  facts->containerAspect = stream.sample_aspect_ratio;
  facts->frameRate = stream.r_frame_rate;
  facts->matrix = codec.color_space;
  facts->primaries = codec.color_primaries;
  facts->transfer = codec.color_trc;
  facts->range = codec.color_range;
  facts->sampleRate = codec.sample_rate;
  facts->channels = codec.ch_layout.nb_channels;
  facts->start = 1e9;
}

// A packet without a duration (ASF stores none) lasts one frame of the stream's rate.
void CountPacket(const AVPacket& packet, const AVStream& stream, StreamFacts* facts) {
  if (packet.flags & AV_PKT_FLAG_KEY) facts->keyPackets.push_back(facts->packets);
  ++facts->packets;
  facts->bytes += packet.size;
  int64_t pts = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
  double seconds = double(pts) * av_q2d(stream.time_base);
  facts->start = std::min(facts->start, seconds);
  double duration = packet.duration ? double(packet.duration) * av_q2d(stream.time_base)
                                    : stream.r_frame_rate.num ? 1 / av_q2d(stream.r_frame_rate) : 0;
  facts->end = std::max(facts->end, seconds + duration);
}

}  // namespace

std::string WrittenPath(const std::string& name) {
  std::string folder = tessel::fixtures::Path("written");
  std::filesystem::create_directories(folder);
  return folder + "/" + name;
}

ComPtr<IMFMediaType> VideoInputType(const ClipSpec& spec, const GUID& subtype) {
  ComPtr<IMFMediaType> type = OutputType(MFMediaType_Video, subtype, spec.width, spec.height);
  type->SetUINT32(MF_MT_INTERLACE_MODE, MFVideoInterlace_Progressive);
  MFSetAttributeRatio(type.Get(), MF_MT_FRAME_RATE, spec.rateNumerator, spec.rateDenominator);
  MFSetAttributeRatio(type.Get(), MF_MT_PIXEL_ASPECT_RATIO, spec.aspectNumerator, spec.aspectDenominator);
  return type;
}

ComPtr<IMFMediaType> VideoTargetType(const ClipSpec& spec) {
  ComPtr<IMFMediaType> type = VideoInputType(spec, *spec.video);
  type->SetUINT32(MF_MT_AVG_BITRATE, spec.bitRate);
  if (spec.keyFrames) type->SetUINT32(MF_MT_MAX_KEYFRAME_SPACING, spec.keyFrames);
  if (*spec.video == MFVideoFormat_H264) {
    type->SetUINT32(MF_MT_MPEG2_PROFILE, spec.profile);
    type->SetUINT32(MF_MT_MPEG2_LEVEL, spec.level);
  }
  return type;
}

ComPtr<IMFMediaType> AudioTargetType(const ClipSpec& spec) {
  ComPtr<IMFMediaType> type = OutputType(MFMediaType_Audio, *spec.audio);
  type->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, spec.inputChannels == 1 ? 1 : 2);
  type->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, spec.soundRate);
  type->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, kAudioBytesPerSecond);
  if (*spec.audio == MFAudioFormat_MP3) {
    MPEGLAYER3WAVEFORMAT format{};
    format.wID = MPEGLAYER3_ID_MPEG;
    format.fdwFlags = MPEGLAYER3_FLAG_PADDING_OFF;
    format.nBlockSize = WORD(kAudioBytesPerSecond * 1152 / spec.soundRate);
    format.nFramesPerBlock = 1;
    const auto* bytes = reinterpret_cast<const UINT8*>(&format);
    type->SetBlob(MF_MT_USER_DATA, bytes + sizeof(WAVEFORMATEX), sizeof(format) - sizeof(WAVEFORMATEX));
  } else {
    type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, 16);
    type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, 1);
    type->SetUINT32(MF_MT_AAC_AUDIO_PROFILE_LEVEL_INDICATION, 0x29);
    type->SetUINT32(MF_MT_AUDIO_CHANNEL_MASK, 3);
    type->SetUINT32(MF_MT_AAC_PAYLOAD_TYPE, 0);
  }
  return type;
}

ComPtr<IMFMediaType> PcmInputType(const ClipSpec& spec) {
  ComPtr<IMFMediaType> type = OutputType(MFMediaType_Audio, MFAudioFormat_PCM);
  UINT32 blockAlign = spec.inputChannels * (spec.inputBits / 8);
  type->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, spec.inputRate);
  type->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, spec.inputChannels);
  type->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, spec.inputRate * blockAlign);
  type->SetUINT32(MF_MT_AUDIO_BLOCK_ALIGNMENT, blockAlign);
  type->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, spec.inputBits);
  type->SetUINT32(MF_MT_ALL_SAMPLES_INDEPENDENT, 1);
  return type;
}

std::vector<uint8_t> PatternPicture(int index, UINT32 width, UINT32 height) {
  std::vector<uint8_t> picture(size_t(width) * height * 4);
  UINT32 box = std::max<UINT32>(height / 6, 2);
  UINT32 boxX = UINT32(index * 7) % (width - box);
  UINT32 boxY = height / 2 + UINT32(index * 3) % (height / 2 - box);
  for (UINT32 y = 0; y < height; ++y) {
    for (UINT32 x = 0; x < width; ++x) {
      uint8_t* pixel = &picture[(size_t(y) * width + x) * 4];
      if (y < UINT32(tessel::fixtures::FrameCodeHeight(int(height)))) {
        bool set = tessel::fixtures::FrameCodeBitSet(index, int(x), int(y), int(width), int(height));
        uint8_t level = set ? tessel::fixtures::kFrameCodeWhite : tessel::fixtures::kFrameCodeBlack;
        pixel[0] = pixel[1] = pixel[2] = level;
      } else if (x >= boxX && x < boxX + box && y >= boxY && y < boxY + box) {
        pixel[0] = 40, pixel[1] = 220, pixel[2] = 230;
      } else {
        pixel[0] = Wave(double(x + y) / (width + height) * 2 - index / 40.0, 128, 60);
        pixel[1] = Wave(double(y) / height + index / 70.0, 128, 100);
        pixel[2] = Wave(double(x) / width + index / 50.0, 128, 100);
      }
      pixel[3] = 0;
    }
  }
  return picture;
}

std::vector<uint8_t> TonePcm(double seconds, UINT32 rate, UINT32 channels, UINT32 bits) {
  size_t frames = size_t(std::llround(seconds * rate));
  UINT32 bytes = bits / 8;
  std::vector<uint8_t> pcm(frames * channels * bytes);
  for (size_t i = 0; i < frames; ++i) {
    double value = std::sin(2 * kPi * 440.0 * double(i) / rate) / 3;
    int32_t sample = int32_t(std::lround(value * 2147483647.0));
    for (UINT32 c = 0; c < channels; ++c) {
      uint8_t* out = &pcm[(i * channels + c) * bytes];
      if (bits == 8) {
        out[0] = uint8_t((sample >> 24) + 128);
      } else {
        // The high bytes of the 32-bit value, little-endian.
        for (UINT32 b = 0; b < bytes; ++b) out[b] = uint8_t(uint32_t(sample) >> (8 * (4 - bytes + b)));
      }
    }
  }
  return pcm;
}

LONGLONG Ticks(double seconds) { return LONGLONG(seconds * 1e6 * 10 + 0.5); }

ComPtr<IMFSample> MakeSample(const std::vector<uint8_t>& bytes, LONGLONG time, LONGLONG duration) {
  ComPtr<IMFMediaBuffer> buffer;
  EXPECT_EQ(MFCreateMemoryBuffer(DWORD(bytes.size()), &buffer), S_OK);
  BYTE* data = nullptr;
  buffer->Lock(&data, nullptr, nullptr);
  if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
  buffer->Unlock();
  buffer->SetCurrentLength(DWORD(bytes.size()));
  ComPtr<IMFSample> sample;
  EXPECT_EQ(MFCreateSample(&sample), S_OK);
  sample->AddBuffer(buffer.Get());
  sample->SetSampleTime(time);
  sample->SetSampleDuration(duration);
  return sample;
}

bool ModuleRowsBottomUp(const ClipSpec& spec) { return *spec.video == MFVideoFormat_H264; }

ComPtr<IMFSample> PatternSample(const ClipSpec& spec, int index, bool bottomUp) {
  std::vector<uint8_t> picture = PatternPicture(index, spec.width, spec.height);
  if (bottomUp) {
    std::vector<uint8_t> flipped(picture.size());
    size_t rowBytes = size_t(spec.width) * 4;
    for (UINT32 y = 0; y < spec.height; ++y) {
      std::memcpy(&flipped[y * rowBytes], &picture[(spec.height - 1 - y) * rowBytes], rowBytes);
    }
    picture.swap(flipped);
  }
  double frame = double(spec.rateDenominator) / spec.rateNumerator;
  return MakeSample(picture, Ticks(index * frame), Ticks(frame));
}

ComPtr<IMFSinkWriter> BeginClip(const ClipSpec& spec, const std::string& path, DWORD* videoStream,
                                DWORD* audioStream) {
  ComPtr<IMFAttributes> attributes;
  MFCreateAttributes(&attributes, 1);
  attributes->SetUINT32(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 1);
  ComPtr<IMFSinkWriter> writer;
  EXPECT_EQ(MFCreateSinkWriterFromURL(Wide(path).c_str(), nullptr, attributes.Get(), &writer), S_OK) << path;
  if (!writer) return nullptr;
  if (spec.audio) {
    EXPECT_EQ(writer->AddStream(AudioTargetType(spec).Get(), audioStream), S_OK);
    EXPECT_EQ(writer->SetInputMediaType(*audioStream, PcmInputType(spec).Get(), nullptr), S_OK);
  }
  EXPECT_EQ(writer->AddStream(VideoTargetType(spec).Get(), videoStream), S_OK);
  EXPECT_EQ(writer->SetInputMediaType(*videoStream, VideoInputType(spec).Get(), nullptr), S_OK);
  EXPECT_EQ(writer->BeginWriting(), S_OK);
  return writer;
}

HRESULT WriteClip(const ClipSpec& spec, const std::string& path) {
  DWORD videoStream = 0, audioStream = 0;
  ComPtr<IMFSinkWriter> writer = BeginClip(spec, path, &videoStream, &audioStream);
  if (!writer) return E_FAIL;
  double seconds = double(spec.frames) * spec.rateDenominator / spec.rateNumerator;
  if (spec.audio) {
    double soundSeconds = spec.soundSeconds > 0 ? spec.soundSeconds : seconds;
    auto pcm = TonePcm(soundSeconds, spec.inputRate, spec.inputChannels, spec.inputBits);
    HRESULT hr = writer->WriteSample(audioStream, MakeSample(pcm, 0, Ticks(soundSeconds)).Get());
    if (FAILED(hr)) return hr;
  }
  for (int i = 0; i < spec.frames; ++i) {
    HRESULT hr = writer->WriteSample(videoStream, PatternSample(spec, i, ModuleRowsBottomUp(spec)).Get());
    if (FAILED(hr)) return hr;
  }
  return writer->Finalize();
}

MovieFacts ProbeMovie(const std::string& path) {
  MovieFacts facts;
  AVFormatContext* input = nullptr;
  if (avformat_open_input(&input, path.c_str(), nullptr, nullptr) < 0) return facts;
  facts.opened = avformat_find_stream_info(input, nullptr) >= 0;
  std::map<int, StreamFacts*> byIndex;
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    AVStream* stream = input->streams[i];
    bool video = stream->codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
    StreamFacts* target = video ? &facts.video : &facts.audio;
    if (target->present) continue;
    DescribeStream(*stream, target);
    byIndex[int(i)] = target;
  }
  std::vector<std::pair<StreamFacts*, double>> order;
  AVPacket* packet = av_packet_alloc();
  while (av_read_frame(input, packet) >= 0) {
    auto found = byIndex.find(packet->stream_index);
    if (found != byIndex.end()) {
      const AVStream& stream = *input->streams[packet->stream_index];
      CountPacket(*packet, stream, found->second);
      order.emplace_back(found->second, double(packet->dts) * av_q2d(stream.time_base));
    }
    av_packet_unref(packet);
  }
  av_packet_free(&packet);
  avformat_close_input(&input);
  double together = std::min(facts.video.end, facts.audio.present ? facts.audio.end : facts.video.end);
  std::map<StreamFacts*, double> latest;
  for (auto& [stream, seconds] : order) {
    latest[stream] = seconds;
    for (auto& [other, last] : latest) {
      if (other != stream && seconds <= together) facts.interleaveGap = std::max(facts.interleaveGap, std::abs(seconds - last));
    }
  }
  return facts;
}

std::vector<std::vector<uint8_t>> DecodePictures(const std::string& path) {
  std::vector<std::vector<uint8_t>> pictures;
  Decoder decoder(path, AVMEDIA_TYPE_VIDEO);
  while (const AVFrame* frame = decoder.Next()) {
    SwsContext* scaler = sws_getContext(frame->width, frame->height, AVPixelFormat(frame->format), frame->width,
                                        frame->height, AV_PIX_FMT_BGRA, SWS_BICUBIC, nullptr, nullptr, nullptr);
    const int* matrix = sws_getCoefficients(frame->colorspace == AVCOL_SPC_BT709 ? SWS_CS_ITU709 : SWS_CS_ITU601);
    sws_setColorspaceDetails(scaler, matrix, frame->color_range == AVCOL_RANGE_JPEG, matrix, 1, 0, 1 << 16, 1 << 16);
    std::vector<uint8_t> picture(size_t(frame->width) * frame->height * 4);
    uint8_t* planes[4] = {picture.data()};
    int pitches[4] = {frame->width * 4};
    sws_scale(scaler, frame->data, frame->linesize, 0, frame->height, planes, pitches);
    sws_freeContext(scaler);
    for (size_t i = 3; i < picture.size(); i += 4) picture[i] = 0;
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

double SoundOnset(const std::string& path) {
  Decoder decoder(path, AVMEDIA_TYPE_AUDIO);
  SwrContext* resampler = nullptr;
  double onset = -1;
  while (const AVFrame* frame = decoder.Next()) {
    if (!resampler) {
      AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
      AVChannelLayout layout = frame->ch_layout;
      swr_alloc_set_opts2(&resampler, &mono, AV_SAMPLE_FMT_S16, frame->sample_rate, &layout,
                          AVSampleFormat(frame->format), frame->sample_rate, 0, nullptr);
      if (!resampler || swr_init(resampler) < 0) break;
    }
    std::vector<int16_t> samples(size_t(frame->nb_samples) + 64);
    uint8_t* out[1] = {reinterpret_cast<uint8_t*>(samples.data())};
    int count = swr_convert(resampler, out, int(samples.size()), const_cast<const uint8_t**>(frame->extended_data),
                            frame->nb_samples);
    for (int i = 0; i < count; ++i) {
      if (std::abs(int(samples[size_t(i)])) >= 32768 / 10) {
        onset = decoder.Seconds(frame->best_effort_timestamp) + double(i) / frame->sample_rate;
        break;
      }
    }
    if (onset >= 0) break;
  }
  swr_free(&resampler);
  return onset;
}

}  // namespace tessel::platform_test
