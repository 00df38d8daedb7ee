#include "stream_analysis.h"

#include <mfapi.h>
#include <mferror.h>
#include <wrl/client.h>

#include <cmath>
#include <limits>
#include <utility>

#include "guid_name.h"
#include "media_win_mf.h"
#include "mf_format_maps.h"
#include "vorna/component.h"
#include "vorna/diagnostics.h"
#include "vorna/mediasession_keys.h"
#include "vorna/win_com.h"

namespace tessel {

using namespace vorna;
using Microsoft::WRL::ComPtr;

namespace {

// What one walk over the streams is for; input is null for a detection.
struct StreamWalk {
  MFReaderSession& session;
  const MediaConverterInterface& input;
  Bool detectVideo;
  Bool detectAudio;
};

// What the analysis reads from a video stream's first native type.
struct VideoDescription {
  UINT32 width = 0;
  UINT32 height = 0;
  Float64 frameRate = 0.0;
  Float64 aspect = 1.0;
  UINT32 aspectNumerator = 0;
  UINT32 aspectDenominator = 0;
  TimeValue duration;
  INT32 rotation = 0;
};

// The two statuses that end a walk over streams or over the types of a stream.
Bool IsEndOfList(HRESULT hr) { return hr == MF_E_INVALIDSTREAMNUMBER || hr == MF_E_NO_MORE_TYPES; }

Bool IsQuarterTurn(INT32 rotation) { return rotation == 90 || rotation == 270; }

ErrorResult NoConversionFormat(const GUID& nativeSubtype) {
  String message = FormatToString("No conversion format found for the stream with the native format: @.",
                                  GuidName(nativeSubtype));
  return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION, &message);
}

Result<GUID> ReadGuid(IMFMediaType* type, const GUID& key) {
  GUID value{};
  VORNA_RETURN_ON_ERROR(CheckHResult(type->GetGUID(key, &value)));
  return value;
}

Result<UINT32> ReadUInt32(IMFMediaType* type, const GUID& key) {
  UINT32 value = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(type->GetUINT32(key, &value)));
  return value;
}

// A pair attribute: the first value in the high 32 bits, the second in the low ones.
Result<std::pair<UINT32, UINT32>> ReadPair(IMFMediaType* type, const GUID& key) {
  UINT64 value = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(type->GetUINT64(key, &value)));
  return std::pair<UINT32, UINT32>(UINT32(value >> 32), UINT32(value));
}

HRESULT WritePair(IMFMediaType* type, const GUID& key, UINT32 first, UINT32 second) {
  return type->SetUINT64(key, (UINT64(first) << 32) | second);
}

Result<ComPtr<IMFMediaType>> NativeType(IMFSourceReader* reader, DWORD index, DWORD typeIndex) {
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(reader->GetNativeMediaType(index, typeIndex, &type)));
  return type;
}

// A new media type of the major type major.
Result<ComPtr<IMFMediaType>> NewMediaType(const GUID& major) {
  ComPtr<IMFMediaType> type;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFCreateMediaType(&type)));
  VORNA_RETURN_ON_ERROR(CheckHResult(type->SetGUID(MF_MT_MAJOR_TYPE, major)));
  return type;
}

// The length of the medium, as the media source states it.
Result<TimeValue> ReadDuration(IMFSourceReader* reader) {
  PROPVARIANT value{};
  HRESULT hr = reader->GetPresentationAttribute(MF_SOURCE_READER_MEDIASOURCE, MF_PD_DURATION, &value);
  Result<Int64> ticks = SUCCEEDED(hr) ? PropVariantToInt64(value) : Result<Int64>(CheckHResult(hr).GetErrorResult());
  PropVariantClear(&value);
  if (ticks.IsError()) return ticks.GetErrorResult();
  return TimeValue(Float64(ticks.GetValue()) * 100.0 * 1e-9);
}

void LogNumber(const Char* pattern, UINT32 value, Int line) {
  DiagnosticOutputString(OUTPUT_DIAGNOSTIC, FormatString(pattern, value), line, __FILE__);
}

Result<MediaStreamProperties> NewFormat() {
  VORNA_ASSIGN_OR_RETURN(StrongRef<MediaStreamPropertiesInterface> format,
                         CreateObjectOf<MediaStreamPropertiesInterface>(g_MediaStreamPropertiesClass, VORNA_SOURCE_LOCATION));
  return MediaStreamProperties(std::move(format));
}

// A new object of one of the import's stream classes, and its component.
template <typename C>
Result<std::pair<ObjectRef, C*>> NewStreamObject(ObjectDefinitionRecord& streamClass) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(streamClass), VORNA_SOURCE_LOCATION));
  C* component = GetComponent<C>(object);
  if (!component) return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  return std::pair<ObjectRef, C*>(std::move(object), component);
}

// --- Audio -----------------------------------------------------------------------

// The output type of an audio stream: float stays float, 32-bit integers become float,
// anything else 16-bit (or the native depth of) PCM at the native rate and layout.
Result<ComPtr<IMFMediaType>> AudioOutputType(const GUID& major, const GUID& subtype, UINT32 rate, UINT32 channels,
                                             UINT32 bytesPerSecond, UINT32 bits) {
  GUID outputSubtype = MFAudioFormat_PCM;
  if (subtype == MFAudioFormat_Float || (subtype == MFAudioFormat_PCM && bits == 32)) {
    outputSubtype = MFAudioFormat_Float;
  } else {
    bytesPerSecond = (rate * channels * bits) >> 3;
  }
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> output, NewMediaType(major));
  VORNA_RETURN_ON_ERROR(CheckHResult(output->SetGUID(MF_MT_SUBTYPE, outputSubtype)));
  VORNA_RETURN_ON_ERROR(CheckHResult(output->SetUINT32(MF_MT_AUDIO_SAMPLES_PER_SECOND, rate)));
  VORNA_RETURN_ON_ERROR(CheckHResult(output->SetUINT32(MF_MT_AUDIO_NUM_CHANNELS, channels)));
  VORNA_RETURN_ON_ERROR(CheckHResult(output->SetUINT32(MF_MT_AUDIO_AVG_BYTES_PER_SECOND, bytesPerSecond)));
  VORNA_RETURN_ON_ERROR(CheckHResult(output->SetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, bits)));
  return output;
}

Result<void> PublishAudioStream(const StreamWalk& walk, DWORD index, UINT32 rate, UINT32 channels, UINT32 bits) {
  using Pair = std::pair<ObjectRef, MediaStreamAudioStreamWinMFImportImpl*>;
  VORNA_ASSIGN_OR_RETURN(Pair made, NewStreamObject<MediaStreamAudioStreamWinMFImportImpl>(g_audioStreamClass));
  made.second->_streamIndex = index;
  made.second->_session = SessionRef::Share(walk.session);
  MediaStream stream(Cast<MediaStreamInterface>(made.first));
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties format, NewFormat());
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioChannelcount, Int64(channels)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioBitsperchannel, Int64(bits)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatAudioSamplerate, Float64(rate)));
  VORNA_RETURN_ON_ERROR(stream.AddFormat(MakeData(Int64(0)), format));
  return walk.input.AddOutputStream(stream);
}

// True when the walk ends here (an audio detection).
Result<Bool> AnalyzeAudioStream(const StreamWalk& walk, DWORD index) {
  IMFSourceReader* reader = walk.session.reader;
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> native, NativeType(reader, index, 0));
  VORNA_ASSIGN_OR_RETURN(GUID major, ReadGuid(native.Get(), MF_MT_MAJOR_TYPE));
  VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(native.Get(), MF_MT_SUBTYPE));
  VORNA_ASSIGN_OR_RETURN(UINT32 rate, ReadUInt32(native.Get(), MF_MT_AUDIO_SAMPLES_PER_SECOND));
  VORNA_ASSIGN_OR_RETURN(UINT32 channels, ReadUInt32(native.Get(), MF_MT_AUDIO_NUM_CHANNELS));
  VORNA_ASSIGN_OR_RETURN(UINT32 bytesPerSecond, ReadUInt32(native.Get(), MF_MT_AUDIO_AVG_BYTES_PER_SECOND));
  // Compressed types state no depth: they are decoded to 16 bits.
  UINT32 bits = 16;
  if (FAILED(native->GetUINT32(MF_MT_AUDIO_BITS_PER_SAMPLE, &bits))) bits = 16;
  DiagnosticOutputString(OUTPUT_DIAGNOSTIC,
                         FormatString("majorType: @, subType: @, @, @, @, @", GuidName(major), GuidName(subtype), rate,
                                      channels, bytesPerSecond, bits),
                         __LINE__, __FILE__);

  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> output,
                         AudioOutputType(major, subtype, rate, channels, bytesPerSecond, bits));
  HRESULT accepted = reader->SetCurrentMediaType(index, nullptr, output.Get());
  if (walk.detectAudio) {
    if (FAILED(accepted)) return NoConversionFormat(subtype);
    return true;
  }
  // A stream whose output type was refused is published all the same.
  if (walk.input) VORNA_RETURN_ON_ERROR(PublishAudioStream(walk, index, rate, channels, bits));
  return false;
}

// --- Video -----------------------------------------------------------------------

// Offers the candidates in turn; true when the reader took one.
Result<Bool> SelectFirstAcceptedOutput(IMFSourceReader* reader, DWORD index, IMFMediaType* output,
                                       const BaseArray<ReaderCandidate>& candidates) {
  for (const ReaderCandidate& candidate : candidates) {
    VORNA_RETURN_ON_ERROR(CheckHResult(output->SetGUID(MF_MT_SUBTYPE, candidate.subtype)));
    if (SUCCEEDED(reader->SetCurrentMediaType(index, nullptr, output))) return true;
  }
  return false;
}

Result<VideoDescription> DescribeVideo(IMFSourceReader* reader, IMFMediaType* native) {
  VideoDescription description;
  VORNA_ASSIGN_OR_RETURN(auto size, ReadPair(native, MF_MT_FRAME_SIZE));
  description.width = size.first;
  description.height = size.second;
  VORNA_ASSIGN_OR_RETURN(auto rate, ReadPair(native, MF_MT_FRAME_RATE));
  description.frameRate = rate.second == 0 ? std::numeric_limits<Float64>::max() : Float64(rate.first) / Float64(rate.second);
  UINT64 aspect = 0;
  if (SUCCEEDED(native->GetUINT64(MF_MT_PIXEL_ASPECT_RATIO, &aspect))) {
    description.aspectNumerator = UINT32(aspect >> 32);
    description.aspectDenominator = UINT32(aspect);
    if (description.aspectNumerator != 0 && description.aspectDenominator != 0)
      description.aspect = Float64(description.aspectNumerator) / Float64(description.aspectDenominator);
  }
  VORNA_ASSIGN_OR_RETURN(description.duration, ReadDuration(reader));
  UINT32 rotation = 0;
  if (SUCCEEDED(native->GetUINT32(MF_MT_VIDEO_ROTATION, &rotation))) {
    description.rotation = INT32(rotation);
    if (rotation != 0) LogNumber("Video rotation found: @", rotation, __LINE__);
  }
  return description;
}

// The square-pixel variant of format under key -(index + 1); nothing for square pixels.
Result<void> AddSquarePixelFormat(const MediaStreamMovieStreamWinMFImportImpl& stream,
                                  const MediaStreamInterface& streamObject, MediaStreamProperties& format,
                                  Float64 aspect, Int index) {
  if (aspect == 1.0) return OK;
  // The stream holds the format already: this gives a private copy.
  VORNA_ASSIGN_OR_RETURN(MediaStreamPropertiesInterface writable, format.MakeWritable());
  Int64 width = stream._displayWidth;
  Int64 height = stream._displayHeight;
  if (aspect < 1.0) height = Int64(std::ceil(Float64(stream._displayHeight) / aspect));
  else width = Int64(std::ceil(Float64(stream._displayWidth) * aspect));
  VORNA_RETURN_ON_ERROR(writable.SetData(g_mediaFormatImageWidth, width));
  VORNA_RETURN_ON_ERROR(writable.SetData(g_mediaFormatImageHeight, height));
  VORNA_RETURN_ON_ERROR(writable.SetData(g_mediaFormatImageAspectratio, Float64(1.0)));
  return streamObject.AddFormat(MakeData(Int64(-(index + 1))), writable);
}

// One format of a video stream. The first native type also states the aspect and
// the start; the others only their own pixel format.
Result<MediaStreamProperties> MakeVideoFormat(const MediaStreamMovieStreamWinMFImportImpl& stream,
                                              const VideoDescription& description, const PixelFormat& pixelFormat,
                                              Float64 aspect, Bool first) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties format, NewFormat());
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageType, UInt32(1)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageSubimageindex, Int64(stream._streamIndex)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImagePixelformat, MakeObjectData(pixelFormat, g_cowReferenceType)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageWidth, Int64(stream._displayWidth)));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageHeight, Int64(stream._displayHeight)));
  if (first) VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatImageAspectratio, aspect));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoFps, description.frameRate));
  if (first) VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoStarttime, TimeValue::MinusInfinite()));
  VORNA_RETURN_ON_ERROR(format.SetData(g_mediaFormatVideoDuration, description.duration));
  return format;
}

// The formats of the further native types 1, 2, ... of the stream, with the size, rate
// and length of type 0; types of another major type are passed over.
Result<void> AddFurtherNativeFormats(const StreamWalk& walk, DWORD index, const GUID& major,
                                     const MediaStreamMovieStreamWinMFImportImpl& stream,
                                     const MediaStreamInterface& streamObject, const VideoDescription& description,
                                     Float64 aspect) {
  for (DWORD typeIndex = 1;; ++typeIndex) {
    ComPtr<IMFMediaType> native;
    HRESULT hr = walk.session.reader->GetNativeMediaType(index, typeIndex, &native);
    if (IsEndOfList(hr)) return OK;
    VORNA_RETURN_ON_ERROR(CheckHResult(hr));
    VORNA_ASSIGN_OR_RETURN(GUID typeMajor, ReadGuid(native.Get(), MF_MT_MAJOR_TYPE));
    VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(native.Get(), MF_MT_SUBTYPE));
    if (typeMajor != major) continue;
    PixelFormat pixelFormat = SubtypeToPixelFormat(subtype, walk.session.advancedProcessing);
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties format, MakeVideoFormat(stream, description, pixelFormat, aspect, false));
    VORNA_RETURN_ON_ERROR(streamObject.AddFormat(MakeData(Int64(typeIndex) + 1), format));
    VORNA_RETURN_ON_ERROR(AddSquarePixelFormat(stream, streamObject, format, aspect, Int(typeIndex)));
  }
}

Result<void> PublishVideoStream(const StreamWalk& walk, DWORD index, IMFMediaType* native, const GUID& major) {
  VORNA_ASSIGN_OR_RETURN(VideoDescription description, DescribeVideo(walk.session.reader, native));
  using Pair = std::pair<ObjectRef, MediaStreamMovieStreamWinMFImportImpl*>;
  VORNA_ASSIGN_OR_RETURN(Pair made, NewStreamObject<MediaStreamMovieStreamWinMFImportImpl>(g_movieStreamClass));
  MediaStreamMovieStreamWinMFImportImpl& stream = *made.second;
  stream._streamIndex = index;
  stream._session = SessionRef::Share(walk.session);
  stream._displayWidth = description.width;
  stream._displayHeight = description.height;
  stream._pixelAspectRatio = description.aspect;
  stream._pixelAspectNumerator = description.aspectNumerator;
  stream._pixelAspectDenominator = description.aspectDenominator;
  stream._rotation = description.rotation;
  // The host sees the picture upright: a quarter turn swaps the sides and inverts the
  // pixel aspect; the field keeps the aspect as the source states it.
  Float64 aspect = description.aspect;
  if (IsQuarterTurn(description.rotation)) {
    std::swap(stream._displayWidth, stream._displayHeight);
    if (aspect != 1.0) aspect = 1.0 / aspect;
  }
  VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(native, MF_MT_SUBTYPE));
  PixelFormat pixelFormat = SubtypeToPixelFormat(subtype, walk.session.advancedProcessing);
  MediaStream streamObject(Cast<MediaStreamInterface>(made.first));
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties format, MakeVideoFormat(stream, description, pixelFormat, aspect, true));
  VORNA_RETURN_ON_ERROR(streamObject.AddFormat(MakeData(Int64(1)), format));
  VORNA_RETURN_ON_ERROR(AddSquarePixelFormat(stream, streamObject, format, aspect, 0));
  VORNA_RETURN_ON_ERROR(AddFurtherNativeFormats(walk, index, major, stream, streamObject, description, aspect));
  return walk.input.AddOutputStream(streamObject);
}

// True when the walk ends here (a movie detection that found its stream).
Result<Bool> AnalyzeVideoStream(const StreamWalk& walk, DWORD index) {
  IMFSourceReader* reader = walk.session.reader;
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> native, NativeType(reader, index, 0));
  VORNA_ASSIGN_OR_RETURN(GUID major, ReadGuid(native.Get(), MF_MT_MAJOR_TYPE));
  VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(native.Get(), MF_MT_SUBTYPE));
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> output, NewMediaType(major));
  PixelFormat format = SubtypeToPixelFormat(subtype, walk.session.advancedProcessing);
  VORNA_ASSIGN_OR_RETURN(BaseArray<ReaderCandidate> candidates,
                         MakeVideoCandidates(format, walk.session.advancedProcessing));
  VORNA_ASSIGN_OR_RETURN(Bool accepted, SelectFirstAcceptedOutput(reader, index, output.Get(), candidates));
  if (!accepted) {
    if (walk.detectVideo) return NoConversionFormat(subtype);
    return false;
  }
  if (walk.detectVideo) return true;
  if (walk.input) VORNA_RETURN_ON_ERROR(PublishVideoStream(walk, index, native.Get(), major));
  return false;
}

Result<void> WalkStreams(const StreamWalk& walk, Bool skipVideo) {
  IMFSourceReader* reader = walk.session.reader;
  for (DWORD index = 0;; ++index) {
    ComPtr<IMFMediaType> native;
    HRESULT hr = reader->GetNativeMediaType(index, 0, &native);
    if (IsEndOfList(hr)) break;
    VORNA_RETURN_ON_ERROR(CheckHResult(hr));
    VORNA_ASSIGN_OR_RETURN(GUID major, ReadGuid(native.Get(), MF_MT_MAJOR_TYPE));
    // Execute selects the streams that are subscribed; until then none is.
    VORNA_RETURN_ON_ERROR(CheckHResult(reader->SetStreamSelection(index, FALSE)));
    Result<Bool> ended = false;
    if (major == MFMediaType_Video && !skipVideo) ended = AnalyzeVideoStream(walk, index);
    else if (major == MFMediaType_Audio) ended = AnalyzeAudioStream(walk, index);
    VORNA_RETURN_ON_ERROR(ended);
    if (ended.GetValue()) return OK;
  }
  if (walk.detectVideo) return RaiseError(g_MediaSessionWrongTypeErrorObject, VORNA_SOURCE_LOCATION);
  return OK;
}

// --- Preparation -----------------------------------------------------------------

// The delivered size of a prepared stream: the published size, scaled to square pixels
// when asked. For a quarter turn the size is upright while the reader's frames lie on
// their side, so the scaling uses the inverted aspect, exactly as the published
// square-pixel format does; FrameSizeForReader turns the result back.
std::pair<Int, Int> DeliveredSize(const MediaStreamMovieStreamWinMFImportImpl& stream, Bool squarePixels) {
  Int width = stream._displayWidth;
  Int height = stream._displayHeight;
  Float64 aspect = stream._pixelAspectRatio;
  if (!squarePixels || aspect == 1.0) return {width, height};
  if (IsQuarterTurn(stream._rotation)) aspect = 1.0 / aspect;
  if (aspect < 1.0) height = Int(std::ceil(Float64(height) / aspect));
  else width = Int(std::ceil(Float64(width) * aspect));
  return {width, height};
}

// The frame size to ask of the reader for a delivered size. A stream turned by a
// quarter is read unturned: the frame transfer walks a source of `_width` rows of
// `_height` pixels, so the reader's frame is `_height` pixels wide and `_width` high,
// and every row that the transfer reads lies inside the buffer.
std::pair<UINT32, UINT32> FrameSizeForReader(INT32 rotation, Int width, Int height) {
  if (IsQuarterTurn(rotation)) return {UINT32(height), UINT32(width)};
  return {UINT32(width), UINT32(height)};
}

Result<BaseArray<ReaderCandidate>> PreparationCandidates(MediaStreamMovieStreamWinMFImportImpl& stream,
                                                         const MFReaderSession& session, const GUID& major,
                                                         const GUID& nativeSubtype) {
  if (major == MFMediaType_Audio) {
    BaseArray<ReaderCandidate> single;
    if (!single.Append(ReaderCandidate{MFAudioFormat_PCM, stream._pixelFormat})) return CreateError(VORNA_SOURCE_LOCATION, 0);
    return single;
  }
  if (major != MFMediaType_Video) {
    String message = String::FromLiteral("unknown stream type");
    return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION, &message);
  }
  stream._pixelFormat = SubtypeToPixelFormat(nativeSubtype, session.advancedProcessing);
  return MakeVideoCandidates(stream._pixelFormat, session.advancedProcessing);
}

// The outcome of offering one candidate.
enum class Offer { TAKEN, REFUSED, PASSED_OVER };

// Offers one candidate and, if the reader takes it, brings its frame size to the
// delivered size. A refusal is kept in firstError when it is the first.
Result<Offer> OfferCandidate(MediaStreamMovieStreamWinMFImportImpl& stream, IMFSourceReader* reader,
                             IMFMediaType* wanted, const ReaderCandidate& candidate, Bool squarePixels,
                             ErrorResult& firstError) {
  auto refuse = [&firstError](HRESULT hr) {
    if (!firstError.word) firstError = CheckHResult(hr).GetErrorResult();
    return Offer::REFUSED;
  };
  const DWORD index = stream._streamIndex;
  VORNA_RETURN_ON_ERROR(CheckHResult(wanted->SetGUID(MF_MT_SUBTYPE, candidate.subtype)));
  HRESULT hr = reader->SetCurrentMediaType(index, nullptr, wanted);
  if (FAILED(hr)) return refuse(hr);
  stream._pixelFormat = candidate.format;
  ComPtr<IMFMediaType> current;
  VORNA_RETURN_ON_ERROR(CheckHResult(reader->GetCurrentMediaType(index, &current)));
  UINT32 rotation = 0;
  Bool hasRotation = SUCCEEDED(current->GetUINT32(MF_MT_VIDEO_ROTATION, &rotation));
  stream._rotation = hasRotation ? INT32(rotation) : 0;
  // Packed formats share chroma between neighbours along a row and can't be turned.
  if (hasRotation && rotation != 0 && stream._pixelFormat.GetPackedPixelCount() >= 2) return Offer::PASSED_OVER;
  VORNA_ASSIGN_OR_RETURN(auto currentSize, ReadPair(current.Get(), MF_MT_FRAME_SIZE));
  auto [width, height] = DeliveredSize(stream, squarePixels);
  auto [readerWidth, readerHeight] = FrameSizeForReader(stream._rotation, width, height);
  stream._width = width;
  stream._height = height;
  if (currentSize.first == readerWidth && currentSize.second == readerHeight) return Offer::TAKEN;
  hr = WritePair(current.Get(), MF_MT_FRAME_SIZE, readerWidth, readerHeight);
  if (FAILED(hr)) return refuse(hr);
  hr = squarePixels ? WritePair(current.Get(), MF_MT_PIXEL_ASPECT_RATIO, 1, 1)
                    : WritePair(current.Get(), MF_MT_PIXEL_ASPECT_RATIO, stream._pixelAspectNumerator,
                                stream._pixelAspectDenominator);
  if (FAILED(hr)) return refuse(hr);
  hr = reader->SetCurrentMediaType(index, nullptr, current.Get());
  if (FAILED(hr)) return refuse(hr);
  return Offer::TAKEN;
}

// Reads what the accepted output type says of stride, rate and length.
Result<void> CompletePreparation(MediaStreamMovieStreamWinMFImportImpl& stream, IMFSourceReader* reader) {
  ComPtr<IMFMediaType> current;
  VORNA_RETURN_ON_ERROR(CheckHResult(reader->GetCurrentMediaType(stream._streamIndex, &current)));
  VORNA_ASSIGN_OR_RETURN(stream._defaultStride, GetDefaultStrideFromType(current.Get()));
  VORNA_ASSIGN_OR_RETURN(auto rate, ReadPair(current.Get(), MF_MT_FRAME_RATE));
  Float64 window = 5.0;
  stream._frameRate = 1.0;
  if (rate.second != 0) {
    stream._frameRate = Float64(rate.first) / Float64(rate.second);
    window = stream._frameRate == 0.0 ? 0.0 : 5.0 / stream._frameRate;
  }
  stream._maxSeekDifference = Int(window * 1e6 * 10 + 0.5);
  VORNA_ASSIGN_OR_RETURN(stream._duration, ReadDuration(reader));
  UINT32 layout = 0;
  if (SUCCEEDED(current->GetUINT32(MFSampleExtension_3DVideo_SampleFormat, &layout)))
    LogNumber("MFSampleExtension_3DVideo_SampleFormat: @", layout, __LINE__);
  stream._prepared = true;
  return OK;
}

}  // namespace

Result<void> AnalyzeSource(MFReaderSession& session, const Url& url, const MediaConverterInterface& input,
                           Bool detectVideo, Bool detectAudio, Bool skipVideo) {
  VORNA_RETURN_ON_ERROR(OpenSource(session, url));
  return AnalyzeOpenedSource(session, input, detectVideo, detectAudio, skipVideo);
}

Result<void> AnalyzeOpenedSource(MFReaderSession& session, const MediaConverterInterface& input, Bool detectVideo,
                                 Bool detectAudio, Bool skipVideo) {
  return WalkStreams(StreamWalk{session, input, detectVideo, detectAudio}, skipVideo);
}

Result<void> PrepareVideoStream(MediaStreamMovieStreamWinMFImportImpl& stream, MFReaderSession& session,
                                Bool squarePixels) {
  IMFSourceReader* reader = session.reader;
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> native, NativeType(reader, stream._streamIndex, 0));
  VORNA_ASSIGN_OR_RETURN(GUID major, ReadGuid(native.Get(), MF_MT_MAJOR_TYPE));
  VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(native.Get(), MF_MT_SUBTYPE));
  VORNA_ASSIGN_OR_RETURN(ComPtr<IMFMediaType> wanted, NewMediaType(major));
  VORNA_ASSIGN_OR_RETURN(BaseArray<ReaderCandidate> candidates, PreparationCandidates(stream, session, major, subtype));
  ErrorResult firstError{nullptr};
  for (const ReaderCandidate& candidate : candidates) {
    VORNA_ASSIGN_OR_RETURN(Offer offer, OfferCandidate(stream, reader, wanted.Get(), candidate, squarePixels, firstError));
    if (offer == Offer::TAKEN) return CompletePreparation(stream, reader);
  }
  if (firstError.word) return firstError;
  return NoConversionFormat(subtype);
}

Result<Int> GetDefaultStrideFromType(IMFMediaType* mediaType) {
  UINT32 stride = 0;
  if (SUCCEEDED(mediaType->GetUINT32(MF_MT_DEFAULT_STRIDE, &stride))) return Int(INT32(stride));
  VORNA_ASSIGN_OR_RETURN(GUID subtype, ReadGuid(mediaType, MF_MT_SUBTYPE));
  VORNA_ASSIGN_OR_RETURN(auto size, ReadPair(mediaType, MF_MT_FRAME_SIZE));
  LONG computed = 0;
  VORNA_RETURN_ON_ERROR(CheckHResult(MFGetStrideForBitmapInfoHeader(subtype.Data1, size.first, &computed)));
  return Int(computed);
}

}  // namespace tessel
