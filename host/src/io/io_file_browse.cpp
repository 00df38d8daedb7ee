// vorna.IoBrowseFileClass: walks a directory with one entry read ahead, so HasEntry
// knows before the first GetNext whether there is anything to walk. "." and ".." are
// never entries; hidden ones only with IOBROWSE_ALL.
#include "vorna/translationunit.h"

#include <dirent.h>
#include <sys/stat.h>

#include <cerrno>

#include "io/io_errors.h"
#include "io/io_file.h"
#include "io/io_url_text.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

constexpr SourceLocation FILE_BROWSE_LOCATION{"host/io_file_browse", 1, 0};

// A directory stream, closed by its owner's destructor.
class DirectoryHandle {
 public:
  DirectoryHandle() = default;
  DirectoryHandle(const DirectoryHandle&) = delete;
  DirectoryHandle& operator=(const DirectoryHandle&) = delete;
  ~DirectoryHandle() {
    if (_directory) closedir(_directory);
  }

  Bool Open(const std::string& path) {
    if (_directory) closedir(_directory);
    _directory = opendir(path.c_str());
    return _directory != nullptr;
  }
  DIR* Get() const { return _directory; }

 private:
  DIR* _directory = nullptr;
};

class FileBrowseComponent : public Component<FileBrowseComponent> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init(const Url& directory, Int flags) {
    _base = directory;
    _path = UrlPathText(directory);
    _flags = flags;
    if (!_directory.Open(_path)) return RaiseIoError(FILE_BROWSE_LOCATION, "Cannot read directory", _path, errno);
    return ReadAhead();
  }
  Url GetBasePath() const { return _base; }

  Result<void> Reset() {
    if (!_directory.Get()) return RaiseIoError(FILE_BROWSE_LOCATION, "Cannot read directory", _path, EBADF);
    rewinddir(_directory.Get());
    _current.clear();
    return ReadAhead();
  }

  Result<Bool> GetNext() {
    _current = std::move(_ahead);
    _ahead.clear();
    if (_current.empty()) return false;
    ReadStatus();
    VORNA_RETURN_ON_ERROR(ReadAhead());
    return true;
  }

  Bool HasEntry() const { return !_current.empty() || !_ahead.empty(); }

  Url GetCurrentPath() const {
    Url entry = _base;
    return entry.Append(_current.c_str(), Int(_current.size())) ? entry : Url();
  }
  UInt32 IoGetFlags() const { return _currentFlags; }
  Int64 GetSize() const { return _currentSize; }

 private:
  static Bool IsDotOrDotDot(const Char* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
  }

  Result<void> ReadAhead() {
    for (;;) {
      errno = 0;
      const dirent* entry = readdir(_directory.Get());
      if (!entry) return errno ? RaiseIoError(FILE_BROWSE_LOCATION, "Cannot read directory", _path, errno) : OK;
      if (IsDotOrDotDot(entry->d_name)) continue;
      if (entry->d_name[0] == '.' && !(_flags & IOBROWSE_ALL)) continue;
      _ahead = entry->d_name;
      return OK;
    }
  }

  // A link is flagged as one, and as a directory too when it points at one.
  void ReadStatus() {
    std::string path = _path + "/" + _current;
    struct stat status;
    _currentFlags = _current[0] == '.' ? IOFLAGS_HIDDEN : 0;
    _currentSize = 0;
    if (lstat(path.c_str(), &status) != 0) return;
    if (S_ISLNK(status.st_mode)) {
      _currentFlags |= IOFLAGS_LINK;
      if (stat(path.c_str(), &status) != 0) return;
    }
    if (S_ISDIR(status.st_mode)) _currentFlags |= IOFLAGS_DIRECTORY;
    else _currentSize = Int64(status.st_size);
  }

  Url _base;
  std::string _path;
  Int _flags = 0;
  DirectoryHandle _directory;
  std::string _ahead;
  std::string _current;
  UInt32 _currentFlags = 0;
  Int64 _currentSize = 0;
};

}  // namespace

VORNA_COMPONENT_CLASS(FileBrowseComponent, g_ioBrowseFileClass, "vorna.IoBrowseFileClass", "", nullptr,
                      &IoBrowseInterface::_record, VORNA_OVERRIDE(IoBrowseInterface, Init),
                      VORNA_OVERRIDE(IoBrowseInterface, GetBasePath), VORNA_OVERRIDE(IoBrowseInterface, Reset),
                      VORNA_OVERRIDE(IoBrowseInterface, GetNext), VORNA_OVERRIDE(IoBrowseInterface, HasEntry),
                      VORNA_OVERRIDE(IoBrowseInterface, GetCurrentPath), VORNA_OVERRIDE(IoBrowseInterface, IoGetFlags),
                      VORNA_OVERRIDE(IoBrowseInterface, GetSize));

Result<IoBrowseRef> OpenFileBrowse(const Url& url, Int flags) {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_ioBrowseFileClass), FILE_BROWSE_LOCATION));
  IoBrowseRef browse(Cast<IoBrowseInterface>(object));
  VORNA_RETURN_ON_ERROR(browse.Init(url, flags));
  return browse;
}

}  // namespace vorna::host
