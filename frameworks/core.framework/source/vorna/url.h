// Url: a copy-on-write reference to a host url (vorna.UrlInterface#1), a scheme and a
// path. "scheme://path" names a location of any io handler; a plain path is a file url
// (a relative one is taken against the working directory when it is set). A null
// reference reads as the interface's static empty url: no scheme, no path. Urls are
// safe to copy between threads; a block is written only while it is held once.
#pragma once

#include "vorna/cowblockref.h"
#include "vorna/string.h"

namespace vorna {

// The scheme ids, in the host's order. A url's scheme is the key of its handler in
// the vorna.IoHandlers registry.
inline constexpr Id URLSCHEME_HANDLER{"handler"};
inline constexpr Id URLSCHEME_FILE{"file"};
inline constexpr Id URLSCHEME_AUTHORITY{"authority"};
inline constexpr Id URLSCHEME_RELATIVE{"relative"};
inline constexpr Id URLSCHEME_VOLUME{"volume"};
inline constexpr Id URLSCHEME_NETWORK{"network"};
inline constexpr Id URLSCHEME_STORAGE{"storage"};
inline constexpr Id URLSCHEME_ZIP{"zip"};
inline constexpr Id URLSCHEME_GZIP{"gzip"};
inline constexpr Id URLSCHEME_MEMORY{"memory"};
inline constexpr Id URLSCHEME_TCP{"tcp"};
inline constexpr Id URLSCHEME_WEBSOCKET{"webSocket"};
inline constexpr Id URLSCHEME_WEBSOCKETSECURE{"webSocketSecure"};
inline constexpr Id URLSCHEME_HTTP{"http"};
inline constexpr Id URLSCHEME_HTTPS{"https"};
inline constexpr Id URLSCHEME_FTP{"ftp"};
inline constexpr Id URLSCHEME_SFTP{"sftp"};
inline constexpr Id URLSCHEME_PERFORCE{"perforce"};
inline constexpr Id URLSCHEME_CRYPTO{"crypto"};
inline constexpr Id URLSCHEME_CACHE{"cache"};
inline constexpr Id URLSCHEME_PIPE{"pipe"};
inline constexpr Id URLSCHEME_STDOUT{"stdout"};
inline constexpr Id URLSCHEME_STDERR{"stderr"};
inline constexpr Id URLSCHEME_STDIN{"stdin"};
inline constexpr Id URLSCHEME_APKASSET{"apkasset"};

// The host's url operations. Every reading entry takes a null block as the static
// empty url; texts are UTF-8.
class UrlInterface {
 public:
  static constexpr const Char* ID = "vorna.UrlInterface#1";
  static constexpr Int COUNT = 35;
  using Reserved = void (*)();
  struct Table {
    void (*Free)(void* block);
    void* (*Alloc)(const SourceLocation& location);
    void* (*Clone)(const void* block, const SourceLocation& location);
    Result<void> (*Set)(void* block, const Char* text, Int length);
    Id (*GetScheme)(const void* block);
    String (*GetPath)(const void* block);
    Result<String> (*GetSystemPath)(const void* block);
    String (*ToString)(const void* block);
    String (*GetName)(const void* block);
    String (*GetSuffix)(const void* block);
    Bool (*CheckSuffix)(const void* block, const Char* suffix);
    Bool (*SetSuffix)(void* block, const Char* suffix);
    Bool (*SetDirectoryOf)(void* block, const void* source);
    Bool (*Append)(void* block, const Char* name, Int length);
    Bool (*IsEmpty)(const void* block);
    Int (*Compare)(const void* a, const void* b);
    UInt (*GetHashCode)(const void* block);
    Reserved reserved[18];
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {1, 2, 2, 5, 5, 5, 5, 5, 5, 5, 2, 2, 2, 2, 2, 2, 2};
  static Table _table;
  static StaticInterfaceRecord _record;
};

class Url : public COWBlockRef<UrlInterface> {
 public:
  Url() = default;

  // Parses "scheme://path" or a plain path; trailing slashes of the path are dropped.
  Result<void> Set(const Char* text, Int length = -1);
  Result<void> Set(const String& text);

  Id GetScheme() const { return UrlInterface::_table.GetScheme(_block); }
  // The path behind "scheme://".
  String GetPath() const { return UrlInterface::_table.GetPath(_block); }
  // The platform's path of a file url; other schemes have none and give an
  // unsupported-operation error.
  Result<String> GetSystemPath() const { return UrlInterface::_table.GetSystemPath(_block); }
  // "scheme://path"; empty for the empty url.
  String ToString() const { return UrlInterface::_table.ToString(_block); }
  // The last part of the path, and the text behind its last dot (without the dot).
  String GetName() const { return UrlInterface::_table.GetName(_block); }
  String GetSuffix() const { return UrlInterface::_table.GetSuffix(_block); }
  // Is the suffix this one, letters compared without case?
  Bool CheckSuffix(const Char* suffix) const { return UrlInterface::_table.CheckSuffix(_block, suffix); }
  // Replaces the suffix of the name, or adds one; an empty suffix removes it.
  Bool SetSuffix(const Char* suffix);
  // The url of the directory part: the path without its last part, "/" for a name in
  // the root, and the empty url for the root itself or a path of one relative part.
  Url GetDirectory() const;
  // Appends one part to the path.
  Bool Append(const Char* name, Int length = -1);
  Bool Append(const String& name);
  Bool IsEmpty() const { return UrlInterface::_table.IsEmpty(_block); }
  UInt GetHashCode() const { return UrlInterface::_table.GetHashCode(_block); }
  Bool operator==(const Url& other) const { return UrlInterface::_table.Compare(_block, other._block) == 0; }
};

extern InternedId g_urlflagsUnbufferedFile;
extern InternedId g_urlflagsUsername;
extern InternedId g_urlflagsUserpassword;
extern InternedId g_urlflagsQuery;
extern InternedId g_urlflagsFragment;
extern InternedId g_urlflagsHttpAdditionalRequestHeader;
extern InternedId g_urlflagsHttpResponseHeader;
extern InternedId g_urlflagsHttpFollowmovedfiles;
extern InternedId g_urlflagsHttpPost;
extern InternedId g_urlflagsHttpPostdata;
extern InternedId g_urlflagsHttpNoProxyCaching;
extern InternedId g_urlflagsHttpDisallowGzip;
extern InternedId g_urlflagsCacheInRam;
extern InternedId g_urlflagsFtpsFingerprint;
extern InternedId g_urlflagsNetworkSessiontimeout;
extern InternedId g_urlflagsNetworkConnecttimeout;
extern InternedId g_urlflagsImagesequenceFps;
extern InternedId g_urlflagsImagesequenceFirstframe;
extern InternedId g_urlflagsImagesequenceLastframe;
extern InternedId g_urlflagsDummy;

}  // namespace vorna
