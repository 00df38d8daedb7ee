// The test module's reader: a file format that claims memory urls named "pattern...",
// its handler, and a loader with one image stream of BGRX frames whose every byte of
// blue, green and red is the frame time in tenths of a second. Frames are 4x2, or WxH
// for a name that starts with "pattern-WxH"; they exist for times below one second. The
// stream's format tells no frame rate and no length.
#include "vorna/translationunit.h"

#include <cstdio>
#include <string>
#include <vector>

#include "vorna/component.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_converter.h"
#include "vorna/mediasession_keys.h"
#include "vorna/publishedobject.h"

namespace tessel::testmodule {

using namespace vorna;

VORNA_DEFINE_OBJECT_USE(g_fileFormatImageBaseClass, "vorna.FileFormatImageBaseClass");
VORNA_DEFINE_OBJECT_USE(g_mediaConverterBaseClass, "vorna.MediaConverterBaseClass");
VORNA_DEFINE_OBJECT_USE(g_imageImportStreamClass, "vorna.MediaStreamImageDataImportClass");
VORNA_DEFINE_OBJECT_USE(g_propertiesClass, "vorna.MediaStreamPropertiesClass");
VORNA_DEFINE_OBJECT_USE(g_patternFormatObject, "vorna.FileFormats:test.pattern");

struct FrameSize {
  Int width = 4;
  Int height = 2;
};

// The size a url's name asks for; 4x2 unless it starts with "pattern-WxH".
FrameSize SizeOf(const Url& url) {
  FrameSize size;
  Result<CString> name = url.GetName().GetCString();
  long width = 0;
  long height = 0;
  if (!name.IsError() && std::sscanf(name.GetValue().GetCString(), "pattern-%ldx%ld", &width, &height) == 2 &&
      width >= 0 && height >= 0 && width <= 1 << 16 && height <= 1 << 16)
    size = {width, height};
  return size;
}

Result<MediaStreamProperties> FrameProperties(const MediaStreamInterface& stream, FrameSize size, Float64 time) {
  VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties, CreateObjectOf<MediaStreamPropertiesInterface>(g_propertiesClass, VORNA_SOURCE_LOCATION));
  VORNA_RETURN_ON_ERROR(properties.Init(stream));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageWidth, Int64(size.width)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImageHeight, Int64(size.height)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaFormatImagePixelformat,
                                           MakeObjectData(GetPixelFormat(g_pixelFormatBGRXu8), g_cowReferenceType)));
  VORNA_RETURN_ON_ERROR(properties.SetData(g_mediaPropertiesVideoSampletime, time));
  return properties;
}

class PatternFormatImpl : public Component<PatternFormatImpl> {
 public:
  static ClassRecord _classRecord;
  Result<Bool> Detect(const Url& url) const {
    Result<CString> name = url.GetName().GetCString();
    return url.GetScheme() == Id("memory") && !name.IsError() &&
           std::string(name.GetValue().GetCString()).rfind("pattern", 0) == 0;
  }
};

class PatternLoaderImpl : public Component<PatternLoaderImpl> {
 public:
  static ClassRecord _classRecord;

  Int SupportImportStrategy() const { return 1; }

  Result<void> Analyze(const ConverterBlock&, Int, Int) {
    if (_stream) return OK;
    VORNA_ASSIGN_OR_RETURN(_stream, CreateObjectOf<MediaStreamImageDataImportInterface>(g_imageImportStreamClass, VORNA_SOURCE_LOCATION));
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties format, FrameProperties(_stream, size, 0.0));
    VORNA_RETURN_ON_ERROR(_stream.AddFormat(MakeData(Int64(1)), format));
    return MediaConverterInterface(GetObjectPointer()).AddOutputStream(_stream);
  }

  Result<void> Execute(const ConverterBlock&, const TimeValue& time, MEDIASESSIONFLAGS) {
    if (!_stream.IsSubscribed()) return OK;
    if (time.GetSeconds() >= 1.0) {
      String message = String::FromLiteral("End of stream");
      return RaiseError(g_MediaStreamEOFErrorObject, VORNA_SOURCE_LOCATION, &message);
    }
    VORNA_ASSIGN_OR_RETURN(MediaStreamProperties properties, FrameProperties(_stream, size, time.GetSeconds()));
    VORNA_RETURN_ON_ERROR(_stream.InitStream(properties));
    VORNA_RETURN_ON_ERROR(DeliverLines(properties, UChar(time.GetSeconds() * 10 + 0.5)));
    return _stream.FinishStream(properties);
  }

  FrameSize size;

 private:
  Result<void> DeliverLines(const MediaStreamProperties& properties, UChar value) {
    VORNA_ASSIGN_OR_RETURN(SetPixelHandlerStruct handler, _stream.SetPixelStream(properties, ChannelOffsets{}, 0));
    std::vector<UChar> line(size_t(size.width) * 4);
    for (size_t i = 0; i < line.size(); ++i) line[i] = (i % 4 == 3) ? 0 : value;
    for (Int y = 0; y < size.height; ++y)
      VORNA_RETURN_ON_ERROR(handler.setLine(LineRange{0, y, size.width}, LineSource{line.data(), 32}, 0));
    return OK;
  }

  StrongRef<MediaStreamImageDataImportInterface> _stream;
};

class PatternHandlerImpl : public Component<PatternHandlerImpl> {
 public:
  static ClassRecord _classRecord;
  FileFormatInterface GetFileFormat() const {
    static void* const none = nullptr;
    return FileFormatInterface(*static_cast<void* const*>(LookupObjectValue(g_patternFormatObject, &none)));
  }
  Result<const DataType*> GetHandlerType() const { return GetDataType(g_strongReferenceType); }
  Result<ObjectRef> CreateHandler(const Url&) const;
  Int GetDependends() const { return 5; }
};

VORNA_COMPONENT_CLASS(PatternFormatImpl, g_patternFormatClass, "net.vorna.test.fileformat.pattern", ".PatternFormatImpl",
                      &g_fileFormatImageBaseClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect));
VORNA_PUBLISHED_OBJECT(g_patternFormat, "vorna.FileFormats", "test.pattern", g_patternFormatClass);

VORNA_COMPONENT_CLASS(PatternLoaderImpl, g_patternLoaderClass, "net.vorna.test.loader.pattern", ".PatternLoaderImpl",
                      &g_mediaConverterBaseClass, &MediaInputInterface::_record,
                      VORNA_OVERRIDE(MediaConverterInterface, SupportImportStrategy),
                      VORNA_OVERRIDE(MediaConverterInterface, Analyze), VORNA_OVERRIDE(MediaConverterInterface, Execute));

Result<ObjectRef> PatternHandlerImpl::CreateHandler(const Url& url) const {
  VORNA_ASSIGN_OR_RETURN(ObjectRef loader, CreateObjectOfClass(GetDefinedClass(g_patternLoaderClass), VORNA_SOURCE_LOCATION));
  GetComponent<PatternLoaderImpl>(loader)->size = SizeOf(url);
  return loader;
}

VORNA_COMPONENT_CLASS(PatternHandlerImpl, g_patternHandlerClass, "net.vorna.test.fileformathandler.pattern",
                      ".PatternHandlerImpl", nullptr, &MediaSessionFileFormatHandlerInterface::_record,
                      VORNA_OVERRIDE(FileFormatHandlerInterface, GetFileFormat),
                      VORNA_OVERRIDE(FileFormatHandlerInterface, GetHandlerType),
                      VORNA_OVERRIDE(FileFormatHandlerInterface, CreateHandler),
                      VORNA_OVERRIDE(FileFormatHandlerInterface, GetDependends));
VORNA_PUBLISHED_OBJECT(g_patternHandler, "vorna.FileFormatHandlers", "test.pattern", g_patternHandlerClass);

}  // namespace tessel::testmodule
