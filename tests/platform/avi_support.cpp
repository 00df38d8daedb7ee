// AVI test helpers on the AVI functions and libavformat.
#include "avi_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>

#include "reader_support.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace tessel::platform_test {

namespace {

// The pattern's colour at (x, y) of the picture, top row 0.
void PatternPixel(int width, int height, int frame, int x, int y, uint8_t* bgr) {
  int blue = x * 255 / width;
  int green = y * 255 / height;
  int red = 128 + int(100 * std::sin((x + 3 * frame) / 23.0) * std::cos((y - 2 * frame) / 17.0));
  if (y >= height / 3 && y < 2 * height / 3) {
    int texture = ((x + 2 * frame) / 8 + y / 8) % 2 ? 60 : 190;
    blue = green = texture;
  }
  int side = width / 5;
  int left = (frame * 4) % (width - side);
  int top = height / 6;
  if (x >= left && x < left + side && y >= top && y < top + side) blue = green = red = 235;
  bgr[0] = uint8_t(blue);
  bgr[1] = uint8_t(green);
  bgr[2] = uint8_t(std::clamp(red, 0, 255));
}

}  // namespace

int DibStride(int width) { return (width * 3 + 3) & ~3; }

std::vector<uint8_t> PatternDib(int width, int height, int frame) {
  std::vector<uint8_t> dib(size_t(DibStride(width)) * height);
  for (int y = 0; y < height; ++y) {
    uint8_t* row = dib.data() + size_t(height - 1 - y) * DibStride(width);
    for (int x = 0; x < width; ++x) PatternPixel(width, height, frame, x, y, row + 3 * x);
  }
  return dib;
}

std::vector<uint8_t> PatternTopDown(int width, int height, int frame) {
  std::vector<uint8_t> picture(size_t(width) * 3 * height);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) PatternPixel(width, height, frame, x, y, picture.data() + (size_t(y) * width + x) * 3);
  return picture;
}

std::vector<int16_t> ToneSamples(int sampleRate, int samples) {
  std::vector<int16_t> sound(size_t(samples) * 2);
  for (int i = 0; i < samples; ++i) {
    sound[2 * i] = int16_t(8000 * std::sin(2 * M_PI * 440 * i / sampleRate));
    sound[2 * i + 1] = int16_t(6000 * std::sin(2 * M_PI * 660 * i / sampleRate));
  }
  return sound;
}

HRESULT AviWriter::Open(const std::string& path, const AviJob& job) {
  AVISTREAMINFOW info{};
  info.fccType = streamtypeVIDEO;
  info.dwScale = job.scale;
  info.dwRate = job.rate;
  info.dwSuggestedBufferSize = DWORD(DibStride(job.width) * job.height);
  info.rcFrame = {0, 0, job.width, job.height};
  AVICOMPRESSOPTIONS options{};
  options.fccHandler = job.handler;
  options.dwQuality = job.quality;
  options.dwKeyFrameEvery = job.keyFrameEvery;
  options.dwBytesPerSecond = job.bytesPerSecond;
  options.dwFlags = AVICOMPRESSF_VALID | (job.keyFrameEvery ? AVICOMPRESSF_KEYFRAMES : 0) |
                    (job.bytesPerSecond ? AVICOMPRESSF_DATARATE : 0);
  BITMAPINFOHEADER header{40, job.width, job.height, 1, 24, BI_RGB, info.dwSuggestedBufferSize, 0, 0, 0, 0};
  HRESULT hr = AVIFileOpenW(&file, Wide(path).c_str(), OF_WRITE | OF_CREATE, nullptr);
  if (SUCCEEDED(hr)) hr = AVIFileCreateStreamW(file.Get(), &stream, &info);
  if (SUCCEEDED(hr)) hr = AVIMakeCompressedStream(&compressed, stream.Get(), &options, nullptr);
  if (SUCCEEDED(hr)) hr = AVIStreamSetFormat(compressed.Get(), 0, &header, sizeof(header));
  return hr;
}

HRESULT AviWriter::CreateSound(const AviJob& job, Microsoft::WRL::ComPtr<IAVIStream>* sound) {
  WAVEFORMATEX wave{WAVE_FORMAT_PCM, 2, DWORD(job.soundRate), DWORD(job.soundRate) * 4, 4, 16, 0};
  AVISTREAMINFOW info{};
  info.fccType = streamtypeAUDIO;
  info.dwScale = wave.nBlockAlign;
  info.dwRate = wave.nSamplesPerSec * wave.nBlockAlign;
  info.dwQuality = DWORD(-1);
  info.dwSampleSize = wave.nBlockAlign;
  HRESULT hr = AVIFileCreateStreamW(file.Get(), &*sound, &info);
  return SUCCEEDED(hr) ? AVIStreamSetFormat(sound->Get(), 0, &wave, sizeof(wave)) : hr;
}

HRESULT AviWriter::WriteSound(const AviJob& job) {
  Microsoft::WRL::ComPtr<IAVIStream> sound;
  HRESULT hr = CreateSound(job, &sound);
  return SUCCEEDED(hr) ? WriteTone(sound.Get(), job) : hr;
}

HRESULT AviWriter::WriteFrame(const AviJob& job, int position, int picture, DWORD flags) {
  std::vector<uint8_t> dib = PatternDib(job.width, job.height, picture);
  return AVIStreamWrite(compressed.Get(), position, 1, dib.data(), LONG(dib.size()), flags, nullptr, nullptr);
}

void AviWriter::Release() {
  stream = nullptr;
  compressed = nullptr;
  file = nullptr;
}

HRESULT WriteAvi(const std::string& path, const AviJob& job) {
  AviWriter writer;
  HRESULT hr = writer.Open(path, job);
  if (SUCCEEDED(hr) && job.soundRate > 0) hr = writer.WriteSound(job);
  for (int frame = 0; SUCCEEDED(hr) && frame < job.frames; ++frame) hr = writer.WriteFrame(job, frame, frame);
  return hr;
}

AviContents ReadAvi(const std::string& path) {
  AviContents contents;
  AVFormatContext* input = nullptr;
  if (avformat_open_input(&input, path.c_str(), nullptr, nullptr) < 0) return contents;
  avformat_find_stream_info(input, nullptr);
  int video = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  int sound = av_find_best_stream(input, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
  contents.opened = video >= 0;
  if (video >= 0) {
    const AVStream* stream = input->streams[video];
    contents.videoCodec = stream->codecpar->codec_id;
    contents.videoTag = stream->codecpar->codec_tag;
    contents.width = stream->codecpar->width;
    contents.height = stream->codecpar->height;
    contents.frameRate = av_inv_q(stream->time_base);
  }
  if (sound >= 0) {
    contents.hasSound = true;
    contents.soundRate = input->streams[sound]->codecpar->sample_rate;
    contents.soundChannels = input->streams[sound]->codecpar->ch_layout.nb_channels;
  }
  AVPacket* packet = av_packet_alloc();
  double videoUntil = 0;
  double soundUntil = 0;
  while (av_read_frame(input, packet) >= 0) {
    const AVStream* stream = input->streams[packet->stream_index];
    if (packet->stream_index == video) {
      contents.keyFrames.push_back(packet->flags & AV_PKT_FLAG_KEY);
      contents.videoBytes += packet->size;
      videoUntil = double(packet->pts + 1) * av_q2d(stream->time_base);
    } else if (packet->stream_index == sound) {
      int64_t samples = packet->size / input->streams[sound]->codecpar->block_align;
      soundUntil = double(packet->pts + samples) * av_q2d(stream->time_base);
      contents.soundLead = std::max(contents.soundLead, soundUntil - videoUntil);
    }
    av_packet_unref(packet);
  }
  av_packet_free(&packet);
  avformat_close_input(&input);
  return contents;
}

HRESULT WriteTone(IAVIStream* sound, const AviJob& job) {
  std::vector<int16_t> tone = ToneSamples(job.soundRate, job.soundSamples);
  return AVIStreamWrite(sound, 0, job.soundSamples, tone.data(), LONG(tone.size() * 2), 0, nullptr, nullptr);
}

IndexedFrame LastFrameThroughIndex(const std::string& path) {
  IndexedFrame found;
  AVFormatContext* input = nullptr;
  if (avformat_open_input(&input, path.c_str(), nullptr, nullptr) < 0) return found;
  int video = av_find_best_stream(input, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  AVPacket* packet = av_packet_alloc();
  if (video >= 0) {
    found.entries = avformat_index_get_entries_count(input->streams[video]);
    if (av_seek_frame(input, video, found.entries - 1, 0) >= 0) {
      while (av_read_frame(input, packet) >= 0 && packet->stream_index != video) av_packet_unref(packet);
      found.position = packet->pts;
      found.bytes.assign(packet->data, packet->data + packet->size);
    }
  }
  av_packet_free(&packet);
  avformat_close_input(&input);
  return found;
}

namespace {

std::filesystem::path TestFolder() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  return std::filesystem::temp_directory_path() / "tessel_avi" /
         TestName(std::string(test->test_suite_name()) + "_" + test->name());
}

}  // namespace

std::string TempAviPath(const std::string& name) {
  std::filesystem::create_directories(TestFolder());
  return (TestFolder() / name).string();
}

void RemoveTempAvis() {
  std::error_code ignored;
  std::filesystem::remove_all(TestFolder(), ignored);
}

}  // namespace tessel::platform_test
