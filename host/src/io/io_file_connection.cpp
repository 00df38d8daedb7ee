// vorna.IoConnectionFileClass: the connection of a file url. Every call works on the
// path afresh; the connection holds nothing open.
#include "vorna/translationunit.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "io/io_errors.h"
#include "io/io_file.h"
#include "io/io_url_text.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FILE_CONNECTION_LOCATION{"host/io_file_connection", 1, 0};

class FileConnectionComponent : public Component<FileConnectionComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init(const Url& url) {
    _url = url;
    _path = UrlPathText(url);
    return OK;
  }
  Url GetUrl() const { return _url; }

  Result<IoBrowseRef> GetBrowseIterator(Int flags) const { return OpenFileBrowse(_url, flags); }
  Result<InputStreamRef> OpenInputStream(Int) const { return OpenFileInputStream(_path); }
  Result<OutputStreamRef> OpenOutputStream(Int) const { return OpenFileOutputStream(_path); }

  Result<Int64> GetContentLength() const {
    struct stat status;
    if (stat(_path.c_str(), &status) != 0)
      return RaiseIoError(FILE_CONNECTION_LOCATION, "Cannot read the size of", _path, errno);
    return Int64(status.st_size);
  }

  // Only regular files and directories count; a device or a pipe is neither.
  IoDetectResult IoDetect() const {
    struct stat status;
    if (stat(_path.c_str(), &status) != 0) return IoDetectResult::NONE;
    if (S_ISDIR(status.st_mode)) return IoDetectResult::DIRECTORY;
    return S_ISREG(status.st_mode) ? IoDetectResult::FILE : IoDetectResult::NONE;
  }

  // A link goes itself, never what it points to. Deleting needs no write permission
  // on the file here, so force changes nothing.
  Result<void> IoDelete(Bool) const {
    struct stat status;
    if (lstat(_path.c_str(), &status) != 0) return RaiseIoError(FILE_CONNECTION_LOCATION, "Cannot delete", _path, errno);
    Bool directory = S_ISDIR(status.st_mode);
    if ((directory ? rmdir(_path.c_str()) : unlink(_path.c_str())) != 0)
      return RaiseIoError(FILE_CONNECTION_LOCATION, directory ? "Cannot delete directory" : "Cannot delete file",
                          _path, errno);
    return OK;
  }

 private:
  Url _url;
  std::string _path;
};

}  // namespace

VORNA_COMPONENT_CLASS(FileConnectionComponent, g_ioConnectionFileClass, "vorna.IoConnectionFileClass", "",
                      &g_DataDictionaryObjectClass, &IoConnectionInterface::_record,
                      VORNA_OVERRIDE(IoConnectionInterface, Init), VORNA_OVERRIDE(IoConnectionInterface, GetUrl),
                      VORNA_OVERRIDE(IoConnectionInterface, GetBrowseIterator),
                      VORNA_OVERRIDE(IoConnectionInterface, OpenInputStream),
                      VORNA_OVERRIDE(IoConnectionInterface, OpenOutputStream),
                      VORNA_OVERRIDE(IoConnectionInterface, GetContentLength),
                      VORNA_OVERRIDE(IoConnectionInterface, IoDetect), VORNA_OVERRIDE(IoConnectionInterface, IoDelete));

Result<IoConnectionRef> OpenFileConnection(const Url& url) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_ioConnectionFileClass), FILE_CONNECTION_LOCATION));
  IoConnectionRef connection(Cast<IoConnectionInterface>(object));
  VORNA_RETURN_ON_ERROR(connection.Init(url));
  return connection;
}

}  // namespace vorna::host
