// vorna.OutputStreamFileClass: writes a file without a buffer of its own, so Flush has
// nothing to do.
#include "vorna/translationunit.h"

#include <fcntl.h>

#include "io/io_file.h"
#include "io/io_file_descriptor.h"
#include "io/io_stream_overrides.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FILE_OUTPUT_LOCATION{"host/io_file_output_stream", 1, 0};

class FileOutputStreamComponent : public Component<FileOutputStreamComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Open(const std::string& path) { return _file.Open(path, O_WRONLY | O_CREAT | O_TRUNC); }

  Result<Int64> GetStreamLength() const { return _file.GetLength(); }
  Result<Int64> GetPosition() const { return _file.GetPosition(); }
  Result<void> Close() { return _file.Close(); }
  Bool SeekSupported() const { return true; }
  Result<void> Seek(Int64 position) { return _file.Seek(position); }
  Result<void> DisableBuffering() { return OK; }

  Result<void> Write(const void* buffer, Int count) { return _file.Write(buffer, count); }
  Result<void> Flush() { return OK; }

 private:
  FileDescriptor _file;
};

}  // namespace

VORNA_COMPONENT_CLASS(FileOutputStreamComponent, g_outputStreamFileClass, "vorna.OutputStreamFileClass", "",
                      &g_DataDictionaryObjectClass, &OutputStreamInterface::_record,
                      VORNA_BASE_STREAM_OVERRIDES,
                      VORNA_OVERRIDE(OutputStreamInterface, Write), VORNA_OVERRIDE(OutputStreamInterface, Flush));

Result<OutputStreamRef> OpenFileOutputStream(const std::string& path) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_outputStreamFileClass), FILE_OUTPUT_LOCATION));
  VORNA_RETURN_ON_ERROR(GetComponent<FileOutputStreamComponent>(object)->Open(path));
  return OutputStreamRef(Cast<OutputStreamInterface>(object));
}

}  // namespace vorna::host
