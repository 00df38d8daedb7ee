#include "windows_avi_movie_writer.h"

#include <utility>

#include "avi_settings.h"
#include "export_geometry.h"
#include "vorna/ioconnection.h"
#include "vorna/parallelfordynamic.h"
#include "vorna/system.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;

namespace {

Int AlignToFour(Int value) { return (value + 3) & ~Int(3); }

// A 24-bit bitmap of the aligned size, stored bottom-up as its positive height says.
BITMAPINFOHEADER FrameFormat(const WindowsAviMovieWriter& writer) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof(BITMAPINFOHEADER);
  header.biWidth = LONG(writer._alignedWidth);
  header.biHeight = LONG(writer._alignedHeight);
  header.biPlanes = 1;
  header.biBitCount = 24;
  header.biCompression = BI_RGB;
  header.biSizeImage = DWORD(writer._alignedHeight * writer._bytesPerLine);
  return header;
}

AVISTREAMINFOW VideoStreamInfo(const WindowsAviMovieWriter& writer, Float64 fps) {
  const WholeRatio rate = FpsToRatio(fps);
  AVISTREAMINFOW info{};
  info.fccType = streamtypeVIDEO;
  info.dwScale = DWORD(rate.denominator);
  info.dwRate = DWORD(rate.numerator);
  info.dwSuggestedBufferSize = writer._bitmapInfo.biSizeImage;
  info.rcFrame = {0, 0, LONG(writer._alignedWidth), LONG(writer._alignedHeight)};
  return info;
}

// A file already at url is deleted first; only a file, never a directory.
Result<void> DeleteExistingFile(const Url& url) {
  if (IoDetect(url) != IoDetectResult::FILE) return OK;
  return IoDelete(url, false, false);
}

template <typename T>
void Release(T*& handle) {
  if (handle) AVIStreamRelease(std::exchange(handle, nullptr));
}

}  // namespace

Result<void> WindowsAviMovieWriter::Init(const Url& url, Int width, Int height, const DataDictionary& settings,
                                         Float64 fps) {
  VORNA_ASSIGN_OR_RETURN(String path, url.GetSystemPath());
  VORNA_ASSIGN_OR_RETURN(BaseArray<Utf16Char> widePath, path.GetUtf16());
  _pixelFormat = GetPixelFormat(g_pixelFormatBGRu8);
  _width = width;
  _height = height;
  _alignedWidth = AlignToFour(width);
  _alignedHeight = AlignToFour(height);
  _bytesPerLine = _pixelFormat.GetBytesPerLine(_alignedWidth, 4);
  System::Free(std::exchange(_buffer, nullptr));
  VORNA_ASSIGN_OR_RETURN(_buffer, _pixelFormat.CreatePix(_alignedWidth, _alignedHeight, 4));
  _bitmapInfo = FrameFormat(*this);
  VORNA_RETURN_ON_ERROR(DeleteExistingFile(url));
  VORNA_RETURN_ON_ERROR(CheckHResult(
      AVIFileOpenW(&_file, reinterpret_cast<LPCWSTR>(widePath.GetData()), OF_WRITE | OF_CREATE, nullptr)));
  _streamInfo = VideoStreamInfo(*this, fps);
  VORNA_RETURN_ON_ERROR(CheckHResult(AVIFileCreateStreamW(_file, &_stream, &_streamInfo)));
  VORNA_RETURN_ON_ERROR(AviOptionsFromSettings(settings, _options, _compressorState));
  VORNA_RETURN_ON_ERROR(CheckHResult(AVIMakeCompressedStream(&_compressedStream, _stream, &_options, nullptr)));
  return CheckHResult(AVIStreamSetFormat(_compressedStream, 0, &_bitmapInfo, LONG(_bitmapInfo.biSize)));
}

Result<void> WindowsAviMovieWriter::WriteAudio(const AudioObjectInterface& audio) {
  if (!audio || audio.GetSampleCount() <= 0) return OK;
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = WORD(audio.GetChannelCount());
  if (format.nChannels == 0 || format.nChannels > 2) return OK;
  format.nSamplesPerSec = DWORD(audio.GetSampleRate());
  format.wBitsPerSample = WORD(audio.GetBitsPerChannel());
  format.nBlockAlign = WORD((format.wBitsPerSample >> 3) * format.nChannels);
  format.nAvgBytesPerSec = format.nBlockAlign * format.nSamplesPerSec;
  AVISTREAMINFOW info{};
  info.fccType = streamtypeAUDIO;
  info.dwScale = format.nBlockAlign;
  info.dwRate = format.nSamplesPerSec * format.nBlockAlign;
  info.dwQuality = DWORD(-1);
  info.dwSampleSize = format.nBlockAlign;
  PAVISTREAM stream = nullptr;
  VORNA_RETURN_ON_ERROR(CheckHResult(AVIFileCreateStreamW(_file, &stream, &info)));
  const Block<UChar> samples = audio.GetDataPtr();
  HRESULT hr = AVIStreamSetFormat(stream, 0, &format, sizeof(WAVEFORMATEX));
  if (SUCCEEDED(hr))
    hr = AVIStreamWrite(stream, 0, LONG(audio.GetSampleCount()), samples.data, LONG(samples.count), 0, nullptr, nullptr);
  const LONG left = LONG(AVIStreamRelease(stream));
  VORNA_RETURN_ON_ERROR(CheckHResult(hr));
  return CheckHResult(left < 0 ? E_FAIL : S_OK);
}

Result<void> WindowsAviMovieWriter::WriteFrame(const TimeValue&, const TimeValue&, Bool flip,
                                               const GetPixelsDelegate& getPixels) {
  using Handler = GetPixelHandlerStruct<>;
  const Int bitsPerPixel = _pixelFormat.GetBitsPerPixel();
  auto init = [&](ParallelFor::DynamicLoopRange<Handler>& range) -> Result<void> {
    VORNA_ASSIGN_OR_RETURN(range.localData, getPixels(_pixelFormat));
    return OK;
  };
  auto body = [&](Int row, Handler& handler) -> Result<void> {
    const Int pictureRow = flip ? _height - 1 - row : row;
    return handler.getLine(LineRange{0, pictureRow, _width}, LineDestination{_buffer + row * _bytesPerLine, bitsPerPixel},
                           0);
  };
  auto finalise = [](Handler& handler) { handler.GiveUpNow(); };
  VORNA_RETURN_ON_ERROR(ParallelFor::Dynamic<Handler>(Int(0), _height, init, body, finalise, 0, 16, JOBQUEUE_DEFAULT));
  VORNA_RETURN_ON_ERROR(CheckHResult(AVIStreamWrite(_compressedStream, LONG(_frame), 1, _buffer,
                                                    LONG(_bitmapInfo.biSizeImage), 0, nullptr, nullptr)));
  ++_frame;
  return OK;
}

void WindowsAviMovieWriter::End() {
  Release(_stream);
  Release(_compressedStream);
  if (_file) AVIFileRelease(std::exchange(_file, nullptr));
  System::Free(std::exchange(_buffer, nullptr));
}

}  // namespace tessel
