// CompressedStream: the stream AVIMakeCompressedStream gives. It takes 24-bit DIB
// frames, compresses them with a compressor of the table and writes what comes out to
// its source stream, with the compressed format set there. It holds the source; when
// it is released it gives the compressor's held-back frames to the source first.
#pragma once

#include <memory>
#include <vector>

#include "avifil32/write_only_stream.h"
#include "msvfw32/compressor_table.h"

namespace tessel::platform {

class CompressedStream final : public WriteOnlyStream {
 public:
  // AVIERR_NOCOMPRESSOR for a code without compressor, AVIERR_UNSUPPORTED for a source
  // that is not video, AVIERR_BADPARAM for a quality above 10000.
  static HRESULT Create(IAVIStream* source, const AVICOMPRESSOPTIONS& options, IAVIStream** stream);
  ~CompressedStream() override;

  // The source's information with the compressor's code.
  HRESULT STDMETHODCALLTYPE Info(AVISTREAMINFOW* psi, LONG lSize) override;
  // The format of the frames that are written to it.
  HRESULT STDMETHODCALLTYPE ReadFormat(LONG lPos, LPVOID lpFormat, LONG* lpcbFormat) override;
  // Opens the compressor for a 24-bit BI_RGB BITMAPINFOHEADER; AVIERR_BADFORMAT for any
  // other format and for a frame size the compressor can't take.
  HRESULT STDMETHODCALLTYPE SetFormat(LONG lPos, LPVOID lpFormat, LONG cbFormat) override;
  // One frame at its position; AVIIF_KEYFRAME asks for a key frame where the
  // compressor can make one on demand.
  HRESULT STDMETHODCALLTYPE Write(LONG lStart, LONG lSamples, LPVOID lpBuffer, LONG cbBuffer, DWORD dwFlags,
                                  LONG* plSampWritten, LONG* plBytesWritten) override;

 private:
  CompressedStream(ComPtr<IAVIStream> source, const AVISTREAMINFOW& sourceInfo, const CompressorEntry& compressor,
                   const CompressorSettings& settings);
  // Writes one compressed frame to the source.
  HRESULT Pass(const CompressedFrame& frame);

  ComPtr<IAVIStream> source_;
  AVISTREAMINFOW sourceInfo_;
  const CompressorEntry& entry_;
  CompressorSettings settings_;
  std::vector<uint8_t> inputFormat_;
  size_t frameBytes_ = 0;
  std::unique_ptr<VideoCompressor> compressor_;
  LONG next_ = 0;               // the next free position
  LONG bytesPassed_ = 0;        // bytes written to the source during one Write
};

}  // namespace tessel::platform
