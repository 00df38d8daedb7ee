// The set-up of the sink writer and the end of a movie. Everything the platform learns
// about the movie is told here, attribute by attribute: the container, the codec and
// its bit rate and key-frame distance, the frame size, rate and pixel aspect, and the
// input the rows will arrive in.
#include "windows_mf_movie_writer.h"

#include <codecapi.h>
#include <mfapi.h>
#include <wrl/client.h>

#include <utility>

#include "export_settings.h"
#include "mf_writer_audio.h"
#include "vorna/saversettings.h"
#include "vorna/win_com.h"
#include "windows_version.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;
namespace {

// The rate and aspect of the stream, for the output and the input type alike.
struct VideoGeometry {
  WholeRatio rate;
  WholeRatio aspect;
};

HRESULT SetRatio(IMFMediaType* type, REFGUID key, const WholeRatio& ratio) {
  return MFSetAttributeRatio(type, key, UINT32(ratio.numerator), UINT32(ratio.denominator));
}

// The part both types share: interlace mode, frame size, rate and pixel aspect.
HRESULT SetPictureAttributes(IMFMediaType* type, const WindowsMFMovieWriter& writer, const VideoGeometry& geometry) {
  HRESULT hr = MFSetAttributeSize(type, MF_MT_FRAME_SIZE, UINT32(writer._alignedWidth), UINT32(writer._alignedHeight));
  if (SUCCEEDED(hr)) hr = SetRatio(type, MF_MT_FRAME_RATE, geometry.rate);
  if (SUCCEEDED(hr)) hr = SetRatio(type, MF_MT_PIXEL_ASPECT_RATIO, geometry.aspect);
  return hr;
}

// The output type's attributes in the platform's order; the choice of input for H.264
// (YUY2 before Windows 8, whose encoder takes no RGB) is made between level and size.
Result<ComPtr<IMFMediaType>> VideoOutputType(WindowsMFMovieWriter& writer, const MovieCodecEntry& codec,
                                             const DataDictionary& settings, const VideoGeometry& geometry) {
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMediaType(&type)));
  const Int64 datarate = settings.Get<BytesValue>(g_saverSettingDatarate, BytesValue{0}).bytes;
  const Int32 keyframes = settings.Get<Int32>(g_saverSettingKeyframes, 0);
  const Bool h264 = codec.subtype == MFVideoFormat_H264;
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_SUBTYPE, codec.subtype)));
  // The WMV8 and WMV9 encoders take their key-frame distance from the bit rate alone.
  if (keyframes != 0 && codec.subtype != MFVideoFormat_WMV2 && codec.subtype != MFVideoFormat_WMV3)
    VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_MAX_KEYFRAME_SPACING, UINT32(keyframes))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_AVG_BITRATE, UINT32((datarate == 0 ? 1000000 : datarate) * 8))));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_INTERLACE_MODE, MFVideoInterlace_Progressive)));
  if (h264) {
    VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_MPEG2_PROFILE, eAVEncH264VProfile_Main)));
    VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_MPEG2_LEVEL, 0xFFFFFFFF)));
    writer._yuvInput = !IsWindowsVersionOrGreater(6, 2, 0);
    if (writer._yuvInput) writer._flipRows = false;
  }
  VORNA_RETURN_ON_ERROR(CheckHResult(SetPictureAttributes(type.Get(), writer, geometry)));
  return type;
}

Result<ComPtr<IMFMediaType>> VideoInputType(const WindowsMFMovieWriter& writer, const VideoGeometry& geometry) {
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMediaType(&type)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_MAJOR_TYPE, MFMediaType_Video)));
  VORNA_RETURN_ON_ERROR(
      CheckHResult(type->SetGUID(MF_MT_SUBTYPE, writer._yuvInput ? MFVideoFormat_YUY2 : MFVideoFormat_RGB32)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetUINT32(MF_MT_INTERLACE_MODE, MFVideoInterlace_Progressive)));
  VORNA_RETURN_ON_ERROR(CheckHResult(SetPictureAttributes(type.Get(), writer, geometry)));
  return type;
}

Result<DWORD> AddVideoStream(IMFSinkWriter* sinkWriter, WindowsMFMovieWriter& writer, const MovieContainer& container,
                             const DataDictionary& settings, const VideoGeometry& geometry) {
  VORNA_ASSIGN_OR_RETURN(const MovieCodecEntry* codec, ChooseMovieCodec(settings, container));
  writer._flipRows = codec->flipRows;
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> output, VideoOutputType(writer, *codec, settings, geometry));
  DWORD index = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(sinkWriter->AddStream(output.Get(), &index)));
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> input, VideoInputType(writer, geometry));
  VORNA_RETURN_ON_ERROR(CheckHResult(sinkWriter->SetInputMediaType(index, input.Get(), nullptr)));
  return index;
}

Result<ComPtr<IMFSinkWriter>> CreateSinkWriter(const Url& url, const GUID& container) {
  ComPtr<IMFAttributes> attributes;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateAttributes(&attributes, 2)));
  if (container != GUID_NULL)
    VORNA_RETURN_ON_ERROR(CheckHResult(attributes->SetGUID(MF_TRANSCODE_CONTAINERTYPE, container)));
  VORNA_RETURN_ON_ERROR(CheckHResult(attributes->SetUINT32(MF_READWRITE_ENABLE_HARDWARE_TRANSFORMS, 1)));
  VORNA_ASSIGN_OR_RETURN(String path, url.GetSystemPath());
  VORNA_ASSIGN_OR_RETURN(BaseArray<Utf16Char> widePath, path.GetUtf16());
  ComPtr<IMFSinkWriter> sinkWriter;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateSinkWriterFromURL(reinterpret_cast<LPCWSTR>(widePath.GetData()), nullptr,
                                                               attributes.Get(), &sinkWriter)));
  return sinkWriter;
}

}  // namespace

Result<void> WindowsMFMovieWriter::Init(const Url& url, Int width, Int height, Float64 pixelAspect,
                                        const MovieContainer& container, Float64 fps, const DataDictionary& settings,
                                        const MediaStreamAudioDataExportInterface& audio) {
  _sinkWriter.Reset();
  _videoStream = 0;
  _width = width;
  _height = height;
  const FrameSize aligned = AlignFrameSize(*container.container, width, height);
  _alignedWidth = aligned.width;
  _alignedHeight = aligned.height;
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFSinkWriter> sinkWriter, CreateSinkWriter(url, *container.container));
  const ObjectRef soundObject = audio.GetAudioObject();
  const AudioObjectInterface sound = Cast<AudioObjectInterface>(soundObject);
  DWORD audioStream = 0;
  if (sound) {
    VORNA_ASSIGN_OR_RETURN(audioStream, AddAudioStream(sinkWriter.Get(), settings, sound));
  }
  const Bool ownAspect = pixelAspect != 1.0 && pixelAspect > 0;
  const VideoGeometry geometry{FpsToRatio(fps), ownAspect ? AspectToRatio(pixelAspect) : WholeRatio{1, 1}};
  VORNA_ASSIGN_OR_RETURN(DWORD videoStream, AddVideoStream(sinkWriter.Get(), *this, container, settings, geometry));
  VORNA_RETURN_ON_ERROR(CheckHResult(sinkWriter->BeginWriting()));
  if (sound) VORNA_RETURN_ON_ERROR(WriteWholeTrack(sinkWriter.Get(), audioStream, sound));
  _sinkWriter = std::move(sinkWriter);
  _videoStream = videoStream;
  return OK;
}

Result<void> WindowsMFMovieWriter::Finish() {
  if (!_sinkWriter) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  VORNA_RETURN_ON_ERROR(CheckHResult(_sinkWriter->Finalize()));
  _sinkWriter.Reset();
  return OK;
}

}  // namespace tessel
