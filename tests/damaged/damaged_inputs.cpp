#include "damaged_inputs.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <vector>

extern "C" {
#include <libavcodec/bsf.h>
#include <libavformat/avformat.h>
}

#include "fixtures.h"

namespace tessel::damaged {

namespace {

[[noreturn]] void Fail(const std::string& what) {
  std::fprintf(stderr, "damaged inputs: %s\n", what.c_str());
  std::abort();
}

Bytes ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) Fail("cannot read " + path);
  return Bytes(std::istreambuf_iterator<char>(in), {});
}

struct InputCloser {
  void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct OutputCloser {
  void operator()(AVFormatContext* context) const {
    if (context->pb) avio_closep(&context->pb);
    avformat_free_context(context);
  }
};
struct PacketFree {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};

struct FilterFree {
  void operator()(AVBSFContext* filter) const { av_bsf_free(&filter); }
};
using Filter = std::unique_ptr<AVBSFContext, FilterFree>;

// H.264 from an MP4 file holds its NAL units behind lengths; every other container the
// cases use wants them behind start codes, as the bitstream filter writes them.
Filter StartCodeFilter(const AVStream* in, const std::string& format) {
  if (format == "mp4" || in->codecpar->codec_id != AV_CODEC_ID_H264) return nullptr;
  AVBSFContext* made = nullptr;
  if (av_bsf_alloc(av_bsf_get_by_name("h264_mp4toannexb"), &made) < 0) Fail("no start-code filter");
  Filter filter(made);
  filter->time_base_in = in->time_base;
  if (avcodec_parameters_copy(filter->par_in, in->codecpar) < 0 || av_bsf_init(filter.get()) < 0) Fail("filter");
  return filter;
}

void WritePacket(AVFormatContext* output, AVPacket* packet, const AVStream* in, const std::string& format) {
  av_packet_rescale_ts(packet, in->time_base, output->streams[packet->stream_index]->time_base);
  packet->pos = -1;
  if (av_interleaved_write_frame(output, packet) < 0) Fail("cannot write a packet of " + format);
}

// Copies every packet of input into a new file at path.
void Remux(AVFormatContext* input, const std::string& path, const std::string& format, const std::string& option) {
  AVFormatContext* made = nullptr;
  if (avformat_alloc_output_context2(&made, nullptr, format.c_str(), path.c_str()) < 0) Fail("no muxer " + format);
  std::unique_ptr<AVFormatContext, OutputCloser> output(made);
  std::vector<Filter> filters;
  for (unsigned i = 0; i < input->nb_streams; ++i) {
    AVStream* stream = avformat_new_stream(output.get(), nullptr);
    filters.push_back(StartCodeFilter(input->streams[i], format));
    const AVCodecParameters* source = filters.back() ? filters.back()->par_out : input->streams[i]->codecpar;
    if (!stream || avcodec_parameters_copy(stream->codecpar, source) < 0) Fail("stream");
    stream->codecpar->codec_tag = 0;
    stream->time_base = input->streams[i]->time_base;
  }
  AVDictionary* options = nullptr;
  const size_t eq = option.find('=');
  if (eq != std::string::npos) av_dict_set(&options, option.substr(0, eq).c_str(), option.substr(eq + 1).c_str(), 0);
  const bool opened = avio_open(&output->pb, path.c_str(), AVIO_FLAG_WRITE) >= 0;
  const int header = opened ? avformat_write_header(output.get(), &options) : -1;
  av_dict_free(&options);
  if (header < 0) Fail("cannot write a header of " + format);
  std::unique_ptr<AVPacket, PacketFree> packet(av_packet_alloc());
  while (av_read_frame(input, packet.get()) >= 0) {
    const AVStream* in = input->streams[packet->stream_index];
    AVBSFContext* filter = filters[size_t(packet->stream_index)].get();
    if (!filter) {
      WritePacket(output.get(), packet.get(), in, format);
      continue;
    }
    if (av_bsf_send_packet(filter, packet.get()) < 0) Fail("cannot filter a packet");
    while (av_bsf_receive_packet(filter, packet.get()) >= 0) WritePacket(output.get(), packet.get(), in, format);
  }
  if (av_write_trailer(output.get()) < 0) Fail("cannot finish " + format);
}

uint32_t NextNoise(uint32_t& state) {
  state = state * 1103515245 + 12345;
  return state >> 16;
}

}  // namespace

Bytes Clip(const std::string& name) { return ReadFile(fixtures::Path(name)); }

Bytes Remuxed(const std::string& clip, const std::string& format, const std::string& option) {
  AVFormatContext* opened = nullptr;
  if (avformat_open_input(&opened, fixtures::Path(clip).c_str(), nullptr, nullptr) < 0) Fail("cannot open " + clip);
  std::unique_ptr<AVFormatContext, InputCloser> input(opened);
  if (avformat_find_stream_info(input.get(), nullptr) < 0) Fail("cannot read " + clip);
  const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                     ("tessel-damaged-" + std::to_string(getpid()) + "." + format);
  Remux(input.get(), path.string(), format, option);
  Bytes bytes = ReadFile(path.string());
  std::filesystem::remove(path);
  return bytes;
}

Bytes CutAt(Bytes bytes, double fraction) {
  bytes.resize(size_t(double(bytes.size()) * fraction));
  return bytes;
}

Bytes GarbageAfter(Bytes bytes, size_t count, uint32_t seed) {
  uint32_t state = seed;
  for (size_t i = count; i < bytes.size(); ++i) bytes[i] = uint8_t(NextNoise(state));
  return bytes;
}

Bytes Noise(size_t count, uint32_t seed) { return GarbageAfter(Bytes(count), 0, seed); }

Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

size_t FindTag(const Bytes& bytes, const char* tag, int n) {
  for (size_t i = 0; i + 4 <= bytes.size(); ++i)
    if (std::memcmp(&bytes[i], tag, 4) == 0 && n-- == 0) return i;
  Fail(std::string("no tag ") + tag);
}

Bytes WithBigEndian(Bytes bytes, size_t offset, uint64_t value, int size) {
  if (offset + size_t(size) > bytes.size()) Fail("a patch past the end");
  for (int i = 0; i < size; ++i) bytes[offset + size_t(i)] = uint8_t(value >> (8 * (size - 1 - i)));
  return bytes;
}

Bytes WithLittleEndian(Bytes bytes, size_t offset, uint64_t value, int size) {
  if (offset + size_t(size) > bytes.size()) Fail("a patch past the end");
  for (int i = 0; i < size; ++i) bytes[offset + size_t(i)] = uint8_t(value >> (8 * i));
  return bytes;
}

// FLV: a 9-byte header and a 4-byte tag size, then tags of an 11-byte header (type,
// 24-bit data size, 24-bit timestamp and its upper 8 bits, stream id), data and the
// 4-byte size of the tag.
Bytes FlvTimestampsBackwards(Bytes flv, int step) {
  constexpr size_t HEADER = 13;
  std::vector<size_t> tags;
  for (size_t at = HEADER; at + 11 <= flv.size();) {
    tags.push_back(at);
    at += 11 + ((size_t(flv[at + 1]) << 16) | (size_t(flv[at + 2]) << 8) | flv[at + 3]) + 4;
  }
  int64_t last[256] = {};
  for (size_t i = 0; i < tags.size(); ++i) {
    uint8_t* tag = &flv[tags[i]];
    int64_t stamp = (int64_t(tag[7]) << 24) | (tag[4] << 16) | (tag[5] << 8) | tag[6];
    if (i >= tags.size() / 2) stamp = std::max<int64_t>(last[tag[0] & 0x1F] - step, 0);
    last[tag[0] & 0x1F] = stamp;
    tag[4] = uint8_t(stamp >> 16), tag[5] = uint8_t(stamp >> 8), tag[6] = uint8_t(stamp), tag[7] = uint8_t(stamp >> 24);
  }
  return flv;
}

}  // namespace tessel::damaged
