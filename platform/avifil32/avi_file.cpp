// The AVI file: its streams, the header, and the interleaving of sound with frames.
#include "avifil32/avi_file.h"

#include <algorithm>
#include <limits>
#include <new>

#include "avifil32/file_stream.h"

namespace tessel::platform {

namespace {

// FFmpeg's AVI muxer holds at most this many streams.
constexpr size_t kMaxStreams = 100;
// Sound that is written at once, past the last frame, goes in pieces of this many per
// second.
constexpr int kSoundPiecesPerSecond = 25;

AVRational UnitOf(const AVISTREAMINFOW& info) {
  return {static_cast<int>(info.dwScale), static_cast<int>(info.dwRate)};
}

}  // namespace

AviFile::~AviFile() {
  bool anyFormat = std::any_of(streams_.begin(), streams_.end(), [](const Stream& s) { return !s.formatBytes.empty(); });
  if (!muxer_->Started() && anyFormat) StartFile();
  if (muxer_->Started()) WriteSoundUntil(std::numeric_limits<int64_t>::max(), {1, 1});
  muxer_->Finish();
}

HRESULT AviFile::CreateStream(PAVISTREAM* ppStream, AVISTREAMINFOW* psi) {
  if (!ppStream || !psi) return AVIERR_BADPARAM;
  *ppStream = nullptr;
  if (psi->fccType != streamtypeVIDEO && psi->fccType != streamtypeAUDIO) return AVIERR_UNSUPPORTED;
  if (psi->fccType == streamtypeVIDEO && (psi->dwRate == 0 || psi->dwScale == 0 || psi->dwRate > INT32_MAX ||
                                          psi->dwScale > INT32_MAX)) {
    return AVIERR_BADPARAM;
  }
  if (muxer_->Started() || streams_.size() >= kMaxStreams) return AVIERR_UNSUPPORTED;
  try {
    streams_.emplace_back().info = *psi;
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  ComPtr<IAVIStream> stream = Make<FileStream>(ComPtr<AviFile>(this), streams_.size() - 1);
  if (!stream) {
    streams_.pop_back();
    return AVIERR_MEMORY;
  }
  *ppStream = stream.Detach();
  return S_OK;
}

AVISTREAMINFOW AviFile::StreamInfo(size_t stream) const {
  AVISTREAMINFOW info = streams_[stream].info;
  info.dwLength = static_cast<DWORD>(streams_[stream].next);
  return info;
}

HRESULT AviFile::SetStreamFormat(size_t stream, const void* format, LONG size) {
  if (muxer_->Started()) return AVIERR_UNSUPPORTED;
  Stream& s = streams_[stream];
  StreamFormat read;
  HRESULT hr = ReadStreamFormat(s.info.fccType, format, size, &read);
  if (FAILED(hr)) return hr;
  try {
    const auto* bytes = static_cast<const uint8_t*>(format);
    s.formatBytes.assign(bytes, bytes + size);
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  s.format = std::move(read);
  return S_OK;
}

HRESULT AviFile::WriteFrame(size_t stream, LONG position, const void* data, LONG size, bool key) {
  Stream& s = streams_[stream];
  if (s.formatBytes.empty()) return AVIERR_BADFORMAT;
  if (position < s.next || position == INT32_MAX || size < 0 || (!data && size > 0)) return AVIERR_BADPARAM;
  HRESULT hr = muxer_->Started() ? S_OK : StartFile();
  if (SUCCEEDED(hr)) hr = WriteSoundUntil(int64_t(position) + 1, UnitOf(s.info));
  if (SUCCEEDED(hr)) hr = muxer_->Write(s.muxerStream, static_cast<const uint8_t*>(data), size_t(size), position, key);
  if (FAILED(hr)) return hr;
  s.next = position + 1;
  framesUntil_ = s.next;
  frameUnit_ = UnitOf(s.info);
  return S_OK;
}

HRESULT AviFile::WriteSound(size_t stream, LONG start, LONG blocks, const void* data, LONG size) {
  Stream& s = streams_[stream];
  if (s.formatBytes.empty()) return AVIERR_BADFORMAT;
  if (start != s.next || blocks < 0 || (!data && blocks > 0)) return AVIERR_BADPARAM;
  if (int64_t(blocks) * s.format.blockAlign != size) return AVIERR_BADSIZE;
  if (int64_t(s.next) + blocks > INT32_MAX) return AVIERR_BADSIZE;
  try {
    const auto* bytes = static_cast<const uint8_t*>(data);
    s.sound.insert(s.sound.end(), bytes, bytes + size);
  } catch (const std::bad_alloc&) {
    return AVIERR_MEMORY;
  }
  s.next += blocks;
  // Sound for the time that frames already cover goes in now.
  return muxer_->Started() ? WriteSoundUntil(framesUntil_, frameUnit_) : S_OK;
}

HRESULT AviFile::StartFile() {
  for (Stream& s : streams_) {
    if (s.formatBytes.empty()) continue;
    AVRational unit = s.info.fccType == streamtypeVIDEO ? UnitOf(s.info) : AVRational{1, s.format.sampleRate};
    HRESULT hr = muxer_->AddStream(s.format, unit, &s.muxerStream);
    if (FAILED(hr)) return hr;
  }
  return muxer_->Start();
}

HRESULT AviFile::WriteSoundUntil(int64_t position, AVRational unit) {
  for (Stream& s : streams_) {
    if (s.info.fccType != streamtypeAUDIO || s.muxerStream < 0) continue;
    int64_t until = position == std::numeric_limits<int64_t>::max()
                        ? s.next
                        : std::min<int64_t>(s.next, av_rescale_q(position, unit, {1, s.format.sampleRate}));
    HRESULT hr = WriteSoundBlocks(s, static_cast<LONG>(until));
    if (FAILED(hr)) return hr;
  }
  return S_OK;
}

HRESULT AviFile::WriteSoundBlocks(Stream& s, LONG until) {
  const LONG piece = std::max(1, s.format.sampleRate / kSoundPiecesPerSecond);
  while (s.soundWritten < until) {
    LONG blocks = std::min(piece, until - s.soundWritten);
    const uint8_t* data = s.sound.data() + size_t(s.soundWritten) * s.format.blockAlign;
    HRESULT hr = muxer_->Write(s.muxerStream, data, size_t(blocks) * s.format.blockAlign, s.soundWritten, true);
    if (FAILED(hr)) return hr;
    s.soundWritten += blocks;
  }
  return S_OK;
}

}  // namespace tessel::platform
