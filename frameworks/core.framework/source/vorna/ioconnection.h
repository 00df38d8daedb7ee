// Io handlers, connections and directory walks, and the client functions over them.
//
// A url reaches its bytes through the vorna.IoHandlers registry: the member under the
// url's scheme is a handler (vorna.IoHandlerInterface#1) whose OpenConnection gives an
// IoConnection, one open access path to one url. The connection opens streams, tells
// what lies at the url, walks a directory and deletes. Handlers are shared by all
// threads; a connection, a stream and a browse iterator belong to one thread at a time.
#pragma once

#include "vorna/iostreams.h"
#include "vorna/url.h"

namespace vorna {

// What IoDetect found at a url. NONE also stands for an error: IoDetect cannot report
// one.
enum class IoDetectResult : Int32 { NONE = 0, FILE = 3, DIRECTORY = 5 };

// Flags of GetBrowseIterator.
inline constexpr Int IOBROWSE_ALL = 1;  // hidden entries as well

// Flags of a browse entry (IoGetFlags).
inline constexpr UInt32 IOFLAGS_DIRECTORY = 1u << 0;
inline constexpr UInt32 IOFLAGS_HIDDEN = 1u << 1;
inline constexpr UInt32 IOFLAGS_LINK = 1u << 5;  // a symbolic link; a walk does not follow it

// Walks the entries of a directory. Before the first GetNext, HasEntry tells whether
// there is anything to walk; each GetNext moves to the next entry and is false past
// the last.
class IoBrowseInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.IoBrowseInterface#1";
  static constexpr Int COUNT = 11;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int {
    kInit, kGetBasePath, kReset, kGetNext, kHasEntry, kGetCurrentPath, kIoGetFlags, kIoGetAttributes, kIoGetTime,
    kGetSize, kGetExtraData
  };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  Result<void> Init(const Url& directory, Int flags) const {
    return Invoke<&IoBrowseInterface::Init, kInit>(directory, flags);
  }
  Url GetBasePath() const { return Invoke<&IoBrowseInterface::GetBasePath, kGetBasePath>(); }
  // Starts the walk again from the first entry.
  Result<void> Reset() const { return Invoke<&IoBrowseInterface::Reset, kReset>(); }
  Result<Bool> GetNext() const { return Invoke<&IoBrowseInterface::GetNext, kGetNext>(); }
  Bool HasEntry() const { return Invoke<&IoBrowseInterface::HasEntry, kHasEntry>(); }
  Url GetCurrentPath() const { return Invoke<&IoBrowseInterface::GetCurrentPath, kGetCurrentPath>(); }
  UInt32 IoGetFlags() const { return Invoke<&IoBrowseInterface::IoGetFlags, kIoGetFlags>(); }
  // The size in bytes of the current entry, 0 for a directory.
  Int64 GetSize() const { return Invoke<&IoBrowseInterface::GetSize, kGetSize>(); }
};

using IoBrowseRef = StrongRef<IoBrowseInterface>;

class IoConnectionInterface : public DataDictionaryObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.IoConnectionInterface#1";
  static constexpr Int COUNT = 21;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int {
    kInit, kGetUrl, kGetBrowseIterator, kOpenInputStream, kOpenOutputStream, kOpenInOutputStream, kGetContentLength,
    kIoDetect, kNormalize, kIoNormalize, kIoGetAttributes, kIoSetAttributes, kIoGetTime, kIoSetTime, kIoDelete,
    kIoCreateDirectory, kIoCopyFile, kIoMove, kIoRename, kIoGetFreeVolumeSpace, kIoShowInOS
  };
  static InterfaceRecord _record;
  using DataDictionaryObjectInterface::DataDictionaryObjectInterface;

  Result<void> Init(const Url& url) const { return Invoke<&IoConnectionInterface::Init, kInit>(url); }
  Url GetUrl() const { return Invoke<&IoConnectionInterface::GetUrl, kGetUrl>(); }
  // An iterator over the entries of the directory at the url (flags: IOBROWSE_...).
  Result<IoBrowseRef> GetBrowseIterator(Int flags) const {
    return Invoke<&IoConnectionInterface::GetBrowseIterator, kGetBrowseIterator>(flags);
  }
  Result<InputStreamRef> OpenInputStream(Int flags) const {
    return Invoke<&IoConnectionInterface::OpenInputStream, kOpenInputStream>(flags);
  }
  // Creates or truncates the file at the url.
  Result<OutputStreamRef> OpenOutputStream(Int flags) const {
    return Invoke<&IoConnectionInterface::OpenOutputStream, kOpenOutputStream>(flags);
  }
  Result<Int64> GetContentLength() const {
    return Invoke<&IoConnectionInterface::GetContentLength, kGetContentLength>();
  }
  IoDetectResult IoDetect() const { return Invoke<&IoConnectionInterface::IoDetect, kIoDetect>(); }
  // Deletes the file or the empty directory at the url; force also deletes a file
  // that is write-protected.
  Result<void> IoDelete(Bool force) const { return Invoke<&IoConnectionInterface::IoDelete, kIoDelete>(force); }
};

using IoConnectionRef = StrongRef<IoConnectionInterface>;

class IoHandlerInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.IoHandlerInterface#1";
  static constexpr Int COUNT = 6;
  static constexpr UInt32 REFCLASS = refclass::READ_ONLY;
  enum : Int { kSetSystemPath, kGetSystemPath, kAppendUrl, kAppendUrl2, kRemoveUrl, kOpenConnection };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  // A connection to url, which has the handler's scheme.
  Result<IoConnectionRef> OpenConnection(const Url& url) const {
    return Invoke<&IoHandlerInterface::OpenConnection, kOpenConnection>(url);
  }
};

// The connection of url: the handler of its scheme in vorna.IoHandlers opens it. No
// registry, no handler for the scheme, or a member that is not a handler give a null
// connection and no error; the handler's errors pass through. No flags are defined
// yet: pass 0.
Result<IoConnectionRef> GetConnection(const Url& url, Int flags);

// What lies at url; NONE when there is no connection or anything fails.
IoDetectResult IoDetect(const Url& url);

// An input stream of url. A url without a connection gives the null-pointer error.
Result<InputStreamRef> OpenInputStream(const Url& url, Int flags);

// An output stream of url, like OpenInputStream.
Result<OutputStreamRef> OpenOutputStream(const Url& url, Int flags);

// Deletes what lies at url. With recursive, a directory goes with everything in it:
// the walk deletes each entry in turn, goes into subdirectories (not into links to
// them) and stops at the first error; an empty url, or one whose directory part is
// empty such as the root, is refused as an illegal argument.
Result<void> IoDelete(const Url& url, Bool force, Bool recursive);

extern ObjectUseRecord g_IoBrowseBaseClass;
extern ObjectUseRecord g_IoConnectionBaseClass;
extern ObjectUseRecord g_IoConnectionFileClass;
extern ObjectUseRecord g_IoHandlerObjectBaseClass;
extern ObjectUseRecord g_IoHandlerObjectFileClass;

}  // namespace vorna
