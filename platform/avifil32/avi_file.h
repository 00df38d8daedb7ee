// AviFile: an AVI file being written, the object behind PAVIFILE. It keeps what each
// stream created on it was given and decides what goes into the file when:
//
// - The header goes out with the first frame that reaches the file (or when the file
//   is finished without one); streams must be created and given their format before.
// - Sound is held until the frames that cover its time are written: the sound of each
//   frame's span goes into the file in front of that frame, so the two are interleaved
//   whenever the sound comes.
// - The file is finished when its last reference goes: its own handle and those of its
//   streams, which hold it, in whatever order they are released. Whatever sound remains
//   is written, then the index.
//
// Used by one thread at a time.
#pragma once

#include <memory>
#include <vector>

#include "avifil32/avi_muxer.h"
#include "avifil32/stream_format.h"
#include "com.h"
#include "vfw.h"

namespace tessel::platform {

class AviFile final : public RuntimeClass<RuntimeClassFlags<ClassicCom>, IAVIFile> {
 public:
  explicit AviFile(std::unique_ptr<AviMuxer> muxer) : muxer_(std::move(muxer)) {}
  ~AviFile() override;

  // Streams are created, not looked up or removed; records and extra chunks are not
  // written, as the file interleaves by itself.
  HRESULT STDMETHODCALLTYPE Info(AVIFILEINFOW*, LONG) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE GetStream(PAVISTREAM*, DWORD, LONG) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE CreateStream(PAVISTREAM* ppStream, AVISTREAMINFOW* psi) override;
  HRESULT STDMETHODCALLTYPE WriteData(DWORD, LPVOID, LONG) override { return AVIERR_UNSUPPORTED; }
  HRESULT STDMETHODCALLTYPE ReadData(DWORD, LPVOID, LONG*) override { return AVIERR_NODATA; }
  HRESULT STDMETHODCALLTYPE EndRecord() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE DeleteStream(DWORD, LONG) override { return AVIERR_UNSUPPORTED; }

  // What the streams of the file ask of it, by their number in the file.
  AVISTREAMINFOW StreamInfo(size_t stream) const;
  const std::vector<uint8_t>& StreamFormatBytes(size_t stream) const { return streams_[stream].formatBytes; }
  HRESULT SetStreamFormat(size_t stream, const void* format, LONG size);
  // One frame at its position, which must not come before the next free one.
  HRESULT WriteFrame(size_t stream, LONG position, const void* data, LONG size, bool key);
  // Blocks of sound appended at start, which must be the number of blocks given so far.
  HRESULT WriteSound(size_t stream, LONG start, LONG blocks, const void* data, LONG size);

 private:
  struct Stream {
    AVISTREAMINFOW info{};
    std::vector<uint8_t> formatBytes;
    StreamFormat format;
    int muxerStream = -1;  // the stream's index in the file once the header is out
    LONG next = 0;         // frames: the next free position; sound: the blocks given
    std::vector<uint8_t> sound;  // all blocks given
    LONG soundWritten = 0;       // blocks of it in the file
  };

  HRESULT StartFile();
  // Writes the sound of every stream up to `position` units of `unit` seconds.
  HRESULT WriteSoundUntil(int64_t position, AVRational unit);
  HRESULT WriteSoundBlocks(Stream& stream, LONG until);

  std::unique_ptr<AviMuxer> muxer_;
  std::vector<Stream> streams_;
  // How far frames have been written, for sound that comes after them.
  int64_t framesUntil_ = 0;
  AVRational frameUnit_{1, 1};
};

}  // namespace tessel::platform
