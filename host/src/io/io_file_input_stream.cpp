// vorna.InputStreamFileClass: reads a file without a buffer of its own; each ReadEOS
// is one or a few system reads at the stream's position.
#include "vorna/translationunit.h"

#include <fcntl.h>

#include <algorithm>

#include "io/io_file.h"
#include "io/io_file_descriptor.h"
#include "io/io_stream_overrides.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FILE_INPUT_LOCATION{"host/io_file_input_stream", 1, 0};

class FileInputStreamComponent : public Component<FileInputStreamComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Open(const std::string& path) { return _file.Open(path, O_RDONLY); }

  Result<Int64> GetStreamLength() const { return _file.GetLength(); }
  Result<Int64> GetPosition() const { return _file.GetPosition(); }
  Result<void> Close() { return _file.Close(); }
  Bool SeekSupported() const { return true; }
  Result<void> Seek(Int64 position) { return _file.Seek(position); }
  Result<void> DisableBuffering() { return OK; }

  Result<Int64> BytesAvailable() const {
    VORNA_ASSIGN_OR_RETURN(Int64 length, _file.GetLength());
    VORNA_ASSIGN_OR_RETURN(Int64 position, _file.GetPosition());
    return std::max(length - position, Int64(0));
  }
  Result<Int> ReadEOS(void* buffer, Int count) { return _file.Read(buffer, count); }
  Result<void> Skip(Int64 count) {
    VORNA_ASSIGN_OR_RETURN(Int64 position, _file.GetPosition());
    return _file.Seek(position + count);
  }

 private:
  FileDescriptor _file;
};

}  // namespace

VORNA_COMPONENT_CLASS(FileInputStreamComponent, g_inputStreamFileClass, "vorna.InputStreamFileClass", "",
                      &g_DataDictionaryObjectClass, &InputStreamInterface::_record,
                      VORNA_INPUT_STREAM_OVERRIDES);

Result<InputStreamRef> OpenFileInputStream(const std::string& path) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_inputStreamFileClass), FILE_INPUT_LOCATION));
  VORNA_RETURN_ON_ERROR(GetComponent<FileInputStreamComponent>(object)->Open(path));
  return InputStreamRef(Cast<InputStreamInterface>(object));
}

}  // namespace vorna::host
