// The compressor table: each code with its name and the encoder behind it.
#include "msvfw32/compressor_table.h"

#include "msvfw32/dib_compressor.h"
#include "msvfw32/ffmpeg_compressor.h"
#include "msvfw32/wmv3_compressor.h"

namespace tessel::platform {

namespace {

constexpr DWORD Code(const char (&text)[5]) { return mmioFOURCC(text[0], text[1], text[2], text[3]); }

using enum QualityControl;
using enum KeyFrameControl;

// Frames of 4:2:0 codecs have even sizes; the vector quantisers work in blocks of 4.
constexpr FfmpegCodec kIyuv{"rawvideo", AV_PIX_FMT_YUV420P, Code("IYUV"), 12, 2, kNone, kIntraOnly, false, ""};
constexpr FfmpegCodec kI420{"rawvideo", AV_PIX_FMT_YUV420P, Code("I420"), 12, 2, kNone, kIntraOnly, false, ""};
constexpr FfmpegCodec kMjpg{"mjpeg", AV_PIX_FMT_YUVJ420P, Code("MJPG"), 24, 2, kLambda, kIntraOnly, true, ""};
constexpr FfmpegCodec kXvid{"mpeg4", AV_PIX_FMT_YUV420P, Code("XVID"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kDivx{"mpeg4", AV_PIX_FMT_YUV420P, Code("DIVX"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kFmp4{"mpeg4", AV_PIX_FMT_YUV420P, Code("FMP4"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kDx50{"mpeg4", AV_PIX_FMT_YUV420P, Code("DX50"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kMp42{"msmpeg4v2", AV_PIX_FMT_YUV420P, Code("MP42"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kMp43{"msmpeg4", AV_PIX_FMT_YUV420P, Code("MP43"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kWmv1{"wmv1", AV_PIX_FMT_YUV420P, Code("WMV1"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kWmv2{"wmv2", AV_PIX_FMT_YUV420P, Code("WMV2"), 12, 2, kLambda, kGopSize, true, ""};
constexpr FfmpegCodec kHfyu{"huffyuv", AV_PIX_FMT_RGB24, Code("HFYU"), 24, 1, kNone, kIntraOnly, false, ""};
constexpr FfmpegCodec kCvid{"cinepak", AV_PIX_FMT_RGB24, Code("cvid"), 24, 4, kLambda, kGopSize, false, ""};
constexpr FfmpegCodec kCram{"msvideo1", AV_PIX_FMT_RGB555LE, Code("CRAM"), 16, 4, kNone, kIntervalAfterMinimum, false,
                            ""};
constexpr FfmpegCodec kFfv1{"ffv1", AV_PIX_FMT_BGR0, Code("FFV1"), 32, 1, kNone, kIntraOnly, false, ""};
// A tight rate tolerance: a short clip ends near the data rate asked instead of well below.
constexpr const char* kX264Options = "preset=faster:x264-params=ratetol=0.1";
constexpr FfmpegCodec kH264{"libx264", AV_PIX_FMT_YUV420P, Code("H264"), 24, 2, kCrf, kGopSize, true, kX264Options};
constexpr FfmpegCodec kX264{"libx264", AV_PIX_FMT_YUV420P, Code("X264"), 24, 2, kCrf, kGopSize, true, kX264Options};

constexpr CompressorEntry kCompressors[] = {
    {{comptypeDIB, "Uncompressed RGB", 0}, &CreateDibCompressor},
    {{Code("iyuv"), "Uncompressed YUV 4:2:0 (IYUV)", CompressorFlags(kIyuv)}, &CreateFfmpeg<kIyuv>},
    {{Code("i420"), "Uncompressed YUV 4:2:0 (I420)", CompressorFlags(kI420)}, &CreateFfmpeg<kI420>},
    {{Code("mjpg"), "Motion JPEG", CompressorFlags(kMjpg)}, &CreateFfmpeg<kMjpg>},
    {{Code("xvid"), "MPEG-4 Part 2 (XVID)", CompressorFlags(kXvid)}, &CreateFfmpeg<kXvid>},
    {{Code("divx"), "MPEG-4 Part 2 (DIVX)", CompressorFlags(kDivx)}, &CreateFfmpeg<kDivx>},
    {{Code("fmp4"), "MPEG-4 Part 2 (FMP4)", CompressorFlags(kFmp4)}, &CreateFfmpeg<kFmp4>},
    {{Code("dx50"), "MPEG-4 Part 2 (DX50)", CompressorFlags(kDx50)}, &CreateFfmpeg<kDx50>},
    {{Code("mp42"), "Microsoft MPEG-4 version 2", CompressorFlags(kMp42)}, &CreateFfmpeg<kMp42>},
    {{Code("mp43"), "Microsoft MPEG-4 version 3", CompressorFlags(kMp43)}, &CreateFfmpeg<kMp43>},
    {{Code("wmv1"), "Windows Media Video 7", CompressorFlags(kWmv1)}, &CreateFfmpeg<kWmv1>},
    {{Code("wmv2"), "Windows Media Video 8", CompressorFlags(kWmv2)}, &CreateFfmpeg<kWmv2>},
    {{Code("wmv3"), "Windows Media Video 9", kWmv3CompressorFlags}, &CreateWmv3Compressor},
    {{Code("hfyu"), "HuffYUV (lossless)", CompressorFlags(kHfyu)}, &CreateFfmpeg<kHfyu>},
    {{Code("cvid"), "Cinepak", CompressorFlags(kCvid)}, &CreateFfmpeg<kCvid>},
    {{Code("msvc"), "Microsoft Video 1", CompressorFlags(kCram)}, &CreateFfmpeg<kCram>},
    {{Code("cram"), "Microsoft Video 1 (CRAM)", CompressorFlags(kCram)}, &CreateFfmpeg<kCram>},
    {{Code("ffv1"), "FFV1 (lossless)", CompressorFlags(kFfv1)}, &CreateFfmpeg<kFfv1>},
    {{Code("h264"), "H.264", CompressorFlags(kH264)}, &CreateFfmpeg<kH264>},
    {{Code("x264"), "H.264 (X264)", CompressorFlags(kX264)}, &CreateFfmpeg<kX264>},
};

constexpr DWORD LowerCase(DWORD code) {
  DWORD lower = 0;
  for (int shift = 0; shift < 32; shift += 8) {
    DWORD c = (code >> shift) & 0xFF;
    if (c >= 'A' && c <= 'Z') c += 'a' - 'A';
    lower |= c << shift;
  }
  return lower;
}

}  // namespace

std::span<const CompressorEntry> Compressors() { return kCompressors; }

const CompressorEntry* FindCompressor(DWORD handler) {
  if (handler == 0) handler = comptypeDIB;
  for (const CompressorEntry& entry : kCompressors) {
    if (LowerCase(entry.info.fccHandler) == LowerCase(handler)) return &entry;
  }
  return nullptr;
}

}  // namespace tessel::platform
