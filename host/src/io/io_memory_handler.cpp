// vorna.IoHandlers:memory, the handler of memory urls, and its connection. A memory
// url names one blob; there are no directories.
#include "vorna/translationunit.h"

#include "io/io_errors.h"
#include "io/io_memory.h"
#include "io/io_url_text.h"
#include "vorna/publishedobject.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

constexpr SourceLocation MEMORY_LOCATION{"host/io_memory_handler", 1, 0};

class MemoryConnectionComponent : public Component<MemoryConnectionComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init(const Url& url) {
    _url = url;
    _name = UrlPathText(url);
    return OK;
  }
  Url GetUrl() const { return _url; }

  Result<InputStreamRef> OpenInputStream(Int) const {
    VORNA_ASSIGN_OR_RETURN(MemoryBlob blob, Find("Cannot open"));
    return OpenMemoryInputStream(std::move(blob), _name);
  }

  Result<Int64> GetContentLength() const {
    VORNA_ASSIGN_OR_RETURN(MemoryBlob blob, Find("Cannot read the size of"));
    return Int64(blob->size());
  }

  IoDetectResult IoDetect() const { return FindMemoryBlob(_name) ? IoDetectResult::FILE : IoDetectResult::NONE; }

  // Unregisters the blob; streams that are open keep reading it.
  Result<void> IoDelete(Bool) const {
    if (!UnregisterMemoryBlob(_name)) return RaiseIoError(MEMORY_LOCATION, "Cannot delete", Text(), "no such blob");
    return OK;
  }

 private:
  std::string Text() const { return "memory://" + _name; }

  Result<MemoryBlob> Find(const Char* what) const {
    MemoryBlob blob = FindMemoryBlob(_name);
    if (!blob) return RaiseIoError(MEMORY_LOCATION, what, Text(), "no such blob");
    return blob;
  }

  Url _url;
  std::string _name;
};

class MemoryHandlerComponent : public Component<MemoryHandlerComponent> {
 public:
  static ClassRecord _classRecord;

  Result<IoConnectionRef> OpenConnection(const Url& url) const { return OpenMemoryConnection(url); }
};

}  // namespace

VORNA_COMPONENT_CLASS(MemoryConnectionComponent, g_ioConnectionMemoryClass, "vorna.IoConnectionMemoryClass", "",
                      &g_DataDictionaryObjectClass, &IoConnectionInterface::_record,
                      VORNA_OVERRIDE(IoConnectionInterface, Init), VORNA_OVERRIDE(IoConnectionInterface, GetUrl),
                      VORNA_OVERRIDE(IoConnectionInterface, OpenInputStream),
                      VORNA_OVERRIDE(IoConnectionInterface, GetContentLength),
                      VORNA_OVERRIDE(IoConnectionInterface, IoDetect), VORNA_OVERRIDE(IoConnectionInterface, IoDelete));

VORNA_COMPONENT_CLASS(MemoryHandlerComponent, g_ioHandlerObjectMemoryClass, "vorna.IoHandlerObjectMemoryClass", "",
                      nullptr, &IoHandlerInterface::_record, VORNA_OVERRIDE(IoHandlerInterface, OpenConnection));

VORNA_PUBLISHED_OBJECT(g_memoryIoHandler, "vorna.IoHandlers", "memory", g_ioHandlerObjectMemoryClass);

Result<IoConnectionRef> OpenMemoryConnection(const Url& url) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_ioConnectionMemoryClass), MEMORY_LOCATION));
  IoConnectionRef connection(Cast<IoConnectionInterface>(object));
  VORNA_RETURN_ON_ERROR(connection.Init(url));
  return connection;
}

}  // namespace vorna::host
