// vorna.InputStreamMemoryClass: reads a memory blob. The stream holds the blob's bytes
// itself, so they stay readable when the blob is unregistered while it is open.
#include "vorna/translationunit.h"

#include <algorithm>
#include <cstring>

#include "io/io_errors.h"
#include "io/io_memory.h"
#include "io/io_stream_overrides.h"
#include "vorna/component.h"
#include "vorna/formatstring.h"

namespace vorna::host {

namespace {

constexpr SourceLocation MEMORY_STREAM_LOCATION{"host/io_memory_stream", 1, 0};

class MemoryInputStreamComponent : public Component<MemoryInputStreamComponent> {
 public:
  static ClassRecord _classRecord;

  void Open(MemoryBlob blob, const std::string& name) {
    _blob = std::move(blob);
    _name = "memory://" + name;
  }

  Result<Int64> GetStreamLength() const {
    if (!_blob) return Closed("Cannot read the length of");
    return Int64(_blob->size());
  }
  Result<Int64> GetPosition() const {
    if (!_blob) return Closed("Cannot read the position in");
    return _position;
  }
  Result<void> Close() {
    _blob.reset();
    return OK;
  }
  Bool SeekSupported() const { return true; }
  Result<void> Seek(Int64 position) {
    if (!_blob) return Closed("Cannot seek in");
    if (position < 0) {
      String message = FormatToString("Cannot seek to @ in @", position, _name.c_str());
      return RaiseError(g_IllegalArgumentErrorObject, MEMORY_STREAM_LOCATION, &message);
    }
    _position = position;
    return OK;
  }
  Result<void> DisableBuffering() { return OK; }

  Result<Int64> BytesAvailable() const {
    VORNA_ASSIGN_OR_RETURN(Int64 length, GetStreamLength());
    return std::max(length - _position, Int64(0));
  }
  Result<Int> ReadEOS(void* buffer, Int count) {
    VORNA_ASSIGN_OR_RETURN(Int64 available, BytesAvailable());
    Int64 length = std::clamp(Int64(count), Int64(0), available);
    if (length > 0) std::memcpy(buffer, _blob->data() + _position, size_t(length));
    _position += length;
    return Int(length);
  }
  Result<void> Skip(Int64 count) { return Seek(_position + count); }

 private:
  ErrorResult Closed(const Char* what) const {
    return RaiseIoError(MEMORY_STREAM_LOCATION, what, _name, "the stream is closed");
  }

  MemoryBlob _blob;
  std::string _name;
  Int64 _position = 0;
};

}  // namespace

VORNA_COMPONENT_CLASS(MemoryInputStreamComponent, g_inputStreamMemoryClass, "vorna.InputStreamMemoryClass", "",
                      &g_DataDictionaryObjectClass, &InputStreamInterface::_record,
                      VORNA_INPUT_STREAM_OVERRIDES);

Result<InputStreamRef> OpenMemoryInputStream(MemoryBlob blob, const std::string& name) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_inputStreamMemoryClass), MEMORY_STREAM_LOCATION));
  GetComponent<MemoryInputStreamComponent>(object)->Open(std::move(blob), name);
  return InputStreamRef(Cast<InputStreamInterface>(object));
}

}  // namespace vorna::host
