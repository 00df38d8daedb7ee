// vorna.IoHandlers:file, the handler of file urls.
#include "vorna/translationunit.h"

#include "io/io_file.h"
#include "vorna/publishedobject.h"

namespace vorna::host {

namespace {

class FileHandlerComponent : public Component<FileHandlerComponent> {
 public:
  static ClassRecord _classRecord;

  Result<IoConnectionRef> OpenConnection(const Url& url) const { return OpenFileConnection(url); }
};

}  // namespace

VORNA_COMPONENT_CLASS(FileHandlerComponent, g_ioHandlerObjectFileClass, "vorna.IoHandlerObjectFileClass", "", nullptr,
                      &IoHandlerInterface::_record, VORNA_OVERRIDE(IoHandlerInterface, OpenConnection));

VORNA_PUBLISHED_OBJECT(g_fileIoHandler, "vorna.IoHandlers", "file", g_ioHandlerObjectFileClass);

}  // namespace vorna::host
