#include "vorna/translationunit.h"

#include "vorna/ioconnection.h"

#include "vorna/basearray.h"
#include "vorna/extensionpoint.h"
#include "vorna/referencedata.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(IoBrowseInterface, &ObjectInterface::_record);
VORNA_DEFINE_INTERFACE(IoConnectionInterface, &DataDictionaryObjectInterface::_record);
VORNA_DEFINE_INTERFACE(IoHandlerInterface, &ObjectInterface::_record);

namespace {

constexpr SourceLocation IODELETE_LOCATION{"vorna/ioconnection", 1, 0};

// The registry is looked up on every call: handlers come and go with their modules.
StrongRef<IoHandlerInterface> FindHandler(const Id& scheme) {
  ExtensionPointHandle* handlers = ExtensionPoint::Find(Id("vorna.IoHandlers"));
  return GetObjectFromData<IoHandlerInterface>(ExtensionPoint::FindEntry(handlers, scheme));
}

struct BrowseEntry {
  Url url;
  Bool descend;
};

Result<void> DeleteTree(const Url& url, Bool force);

// The entries of a directory, walked to the end before anything is deleted.
Result<void> CollectEntries(const IoConnectionInterface& connection, BaseArray<BrowseEntry>& entries) {
  VORNA_ASSIGN_OR_RETURN(IoBrowseRef browse, connection.GetBrowseIterator(IOBROWSE_ALL));
  if (!browse || !browse.HasEntry()) return OK;
  for (;;) {
    VORNA_ASSIGN_OR_RETURN(Bool more, browse.GetNext());
    if (!more) return OK;
    UInt32 flags = browse.IoGetFlags();
    Bool descend = (flags & IOFLAGS_DIRECTORY) != 0 && (flags & IOFLAGS_LINK) == 0;
    if (!entries.Append(BrowseEntry{browse.GetCurrentPath(), descend})) return CreateError(IODELETE_LOCATION, 0);
  }
}

Result<void> DeleteDirectory(const IoConnectionInterface& connection, Bool force) {
  BaseArray<BrowseEntry> entries;
  VORNA_RETURN_ON_ERROR(CollectEntries(connection, entries));
  for (const BrowseEntry& entry : entries)
    VORNA_RETURN_ON_ERROR(entry.descend ? DeleteTree(entry.url, force) : IoDelete(entry.url, force, false));
  return connection.IoDelete(force);
}

Result<void> DeleteTree(const Url& url, Bool force) {
  if (url.IsEmpty() || url.GetDirectory().IsEmpty()) {
    String message = String::FromLiteral("input path is empty");
    return RaiseError(g_IllegalArgumentErrorObject, IODELETE_LOCATION, &message);
  }
  VORNA_ASSIGN_OR_RETURN(IoConnectionRef connection, GetConnection(url, 0));
  if (connection.IoDetect() != IoDetectResult::DIRECTORY) return connection.IoDelete(force);
  return DeleteDirectory(connection, force);
}

}  // namespace

Result<IoConnectionRef> GetConnection(const Url& url, Int) {
  StrongRef<IoHandlerInterface> handler = FindHandler(url.GetScheme());
  if (!handler) return IoConnectionRef();
  Url reference = url;
  return handler.OpenConnection(reference);
}

IoDetectResult IoDetect(const Url& url) {
  Result<IoConnectionRef> connection = GetConnection(url, 0);
  if (connection.IsError() || !connection.GetValue()) return IoDetectResult::NONE;
  return connection.GetValue().IoDetect();
}

Result<InputStreamRef> OpenInputStream(const Url& url, Int flags) {
  VORNA_ASSIGN_OR_RETURN(IoConnectionRef connection, GetConnection(url, flags));
  if (!connection) return ErrorResult{PrivateGetNullReturnError(0)};
  return connection.OpenInputStream(flags);
}

Result<OutputStreamRef> OpenOutputStream(const Url& url, Int flags) {
  VORNA_ASSIGN_OR_RETURN(IoConnectionRef connection, GetConnection(url, flags));
  if (!connection) return ErrorResult{PrivateGetNullReturnError(0)};
  return connection.OpenOutputStream(flags);
}

Result<void> IoDelete(const Url& url, Bool force, Bool recursive) {
  if (recursive) return DeleteTree(url, force);
  VORNA_ASSIGN_OR_RETURN(IoConnectionRef connection, GetConnection(url, 0));
  return connection.IoDelete(force);
}

VORNA_DEFINE_OBJECT_USE(g_IoBrowseBaseClass, "vorna.IoBrowseBaseClass");
VORNA_DEFINE_OBJECT_USE(g_IoConnectionBaseClass, "vorna.IoConnectionBaseClass");
VORNA_DEFINE_OBJECT_USE(g_IoConnectionFileClass, "vorna.IoConnectionFileClass");
VORNA_DEFINE_OBJECT_USE(g_IoHandlerObjectBaseClass, "vorna.IoHandlerObjectBaseClass");
VORNA_DEFINE_OBJECT_USE(g_IoHandlerObjectFileClass, "vorna.IoHandlerObjectFileClass");

}  // namespace vorna
