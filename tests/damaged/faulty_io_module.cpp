// A test module with one io handler, vorna.IoHandlers:faulty. faulty://FAULT/NAME reads
// the memory blob NAME with one fault, the way a failing disk, a broken download or a
// lying server hands a file over:
//   readfail-K  reads stop short of byte K, and every read from there on fails, as a
//               stream that breaks off there
//   seeklost    every seek reports success and leaves the position where it was
//   seekfail    every seek fails
//   length-K    the stream claims to be K bytes long, whatever it holds
//   none        no fault
// An unknown fault gives an io error when the connection is opened.
#include "vorna/translationunit.h"

#include <algorithm>
#include <cstdlib>
#include <string>

#include "vorna/component.h"
#include "vorna/errorbase.h"
#include "vorna/ioconnection.h"
#include "vorna/publishedobject.h"

VORNA_MODULE("net.vorna.test.faultyio", "net.vorna.core.framework");

namespace tessel::testmodule {

using namespace vorna;

namespace {

struct Fault {
  enum class Kind { NONE, READ_FAILS, SEEK_LOST, SEEK_FAILS, LENGTH_LIES } kind = Kind::NONE;
  Int64 at = 0;  // K of readfail-K and length-K
};

// "FAULT/NAME" split into the fault and the url of the blob; false for an unknown fault.
Bool ParseFaultyPath(const std::string& path, Fault& fault, std::string& blob) {
  const size_t slash = path.find('/');
  if (slash == std::string::npos) return false;
  const std::string kind = path.substr(0, slash);
  blob = "memory://" + path.substr(slash + 1);
  auto number = [&](const char* prefix, Fault::Kind k) {
    const std::string p = prefix;
    if (kind.rfind(p, 0) != 0) return false;
    fault = {k, std::strtoll(kind.c_str() + p.size(), nullptr, 10)};
    return true;
  };
  if (kind == "none") fault = {Fault::Kind::NONE};
  else if (kind == "seeklost") fault = {Fault::Kind::SEEK_LOST};
  else if (kind == "seekfail") fault = {Fault::Kind::SEEK_FAILS};
  else if (!number("readfail-", Fault::Kind::READ_FAILS) && !number("length-", Fault::Kind::LENGTH_LIES)) return false;
  return true;
}

ErrorResult Broken(const Char* what) {
  String message;
  (void)message.SetCString(what);
  return RaiseError(g_IoErrorObject, VORNA_SOURCE_LOCATION, &message);
}

class FaultyStreamImpl : public Component<FaultyStreamImpl> {
 public:
  static ClassRecord _classRecord;

  Result<Int64> GetStreamLength() const {
    if (_fault.kind == Fault::Kind::LENGTH_LIES) return _fault.at;
    return _inner.GetStreamLength();
  }
  Result<Int64> GetPosition() const { return _inner.GetPosition(); }
  Result<void> Close() { return _inner.Close(); }
  Bool SeekSupported() const { return true; }
  Result<void> Seek(Int64 position) {
    if (_fault.kind == Fault::Kind::SEEK_LOST) return OK;
    if (_fault.kind == Fault::Kind::SEEK_FAILS) return Broken("The seek failed.");
    return _inner.Seek(position);
  }
  Result<void> DisableBuffering() { return OK; }
  Result<Int64> BytesAvailable() const {
    VORNA_ASSIGN_OR_RETURN(Int64 length, GetStreamLength());
    VORNA_ASSIGN_OR_RETURN(Int64 position, GetPosition());
    return std::max(length - position, Int64(0));
  }
  Result<Int> ReadEOS(void* buffer, Int count) {
    VORNA_ASSIGN_OR_RETURN(Int64 position, GetPosition());
    if (_fault.kind != Fault::Kind::READ_FAILS) return _inner.ReadEOS(buffer, count);
    if (position >= _fault.at) return Broken("The read failed.");
    return _inner.ReadEOS(buffer, Int(std::min<Int64>(count, _fault.at - position)));
  }
  Result<void> Skip(Int64 count) {
    VORNA_ASSIGN_OR_RETURN(Int64 position, GetPosition());
    return Seek(position + count);
  }

  InputStreamRef _inner;
  Fault _fault;
};

class FaultyConnectionImpl : public Component<FaultyConnectionImpl> {
 public:
  static ClassRecord _classRecord;

  Result<void> Init(const Url& url) {
    _url = url;
    Result<CString> path = url.GetPath().GetCString();
    std::string blob;
    if (path.IsError() || !ParseFaultyPath(path.GetValue().GetCString(), _fault, blob))
      return Broken("The url names no fault.");
    return _blob.Set(blob.c_str());
  }
  Url GetUrl() const { return _url; }
  Result<InputStreamRef> OpenInputStream(Int flags) const;
  Result<Int64> GetContentLength() const {
    VORNA_ASSIGN_OR_RETURN(IoConnectionRef inner, GetConnection(_blob, 0));
    if (!inner) return Broken("No such blob.");
    return inner.GetContentLength();
  }
  IoDetectResult IoDetect() const { return vorna::IoDetect(_blob); }

 private:
  Url _url;
  Url _blob;
  Fault _fault;
};

class FaultyHandlerImpl : public Component<FaultyHandlerImpl> {
 public:
  static ClassRecord _classRecord;
  Result<IoConnectionRef> OpenConnection(const Url& url) const;
};

}  // namespace

VORNA_COMPONENT_CLASS(FaultyStreamImpl, g_faultyStreamClass, "net.vorna.test.faultyio.stream", ".FaultyStreamImpl",
                      &g_DataDictionaryObjectClass, &InputStreamInterface::_record,
                      VORNA_OVERRIDE(BaseStreamInterface, GetStreamLength), VORNA_OVERRIDE(BaseStreamInterface, GetPosition),
                      VORNA_OVERRIDE(BaseStreamInterface, Close), VORNA_OVERRIDE(BaseStreamInterface, SeekSupported),
                      VORNA_OVERRIDE(BaseStreamInterface, Seek), VORNA_OVERRIDE(BaseStreamInterface, DisableBuffering),
                      VORNA_OVERRIDE(InputStreamInterface, BytesAvailable), VORNA_OVERRIDE(InputStreamInterface, ReadEOS),
                      VORNA_OVERRIDE(InputStreamInterface, Skip));

VORNA_COMPONENT_CLASS(FaultyConnectionImpl, g_faultyConnectionClass, "net.vorna.test.faultyio.connection",
                      ".FaultyConnectionImpl", &g_DataDictionaryObjectClass, &IoConnectionInterface::_record,
                      VORNA_OVERRIDE(IoConnectionInterface, Init), VORNA_OVERRIDE(IoConnectionInterface, GetUrl),
                      VORNA_OVERRIDE(IoConnectionInterface, OpenInputStream),
                      VORNA_OVERRIDE(IoConnectionInterface, GetContentLength),
                      VORNA_OVERRIDE(IoConnectionInterface, IoDetect));

VORNA_COMPONENT_CLASS(FaultyHandlerImpl, g_faultyHandlerClass, "net.vorna.test.faultyio.handler", ".FaultyHandlerImpl",
                      nullptr, &IoHandlerInterface::_record, VORNA_OVERRIDE(IoHandlerInterface, OpenConnection));

VORNA_PUBLISHED_OBJECT(g_faultyIoHandler, "vorna.IoHandlers", "faulty", g_faultyHandlerClass);

Result<InputStreamRef> FaultyConnectionImpl::OpenInputStream(Int flags) const {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object, CreateObjectOfClass(GetDefinedClass(g_faultyStreamClass), VORNA_SOURCE_LOCATION));
  FaultyStreamImpl* stream = GetComponent<FaultyStreamImpl>(object);
  VORNA_ASSIGN_OR_RETURN(stream->_inner, vorna::OpenInputStream(_blob, flags));
  stream->_fault = _fault;
  return InputStreamRef(Cast<InputStreamInterface>(object));
}

Result<IoConnectionRef> FaultyHandlerImpl::OpenConnection(const Url& url) const {
  VORNA_ASSIGN_OR_RETURN(ObjectRef object,
                         CreateObjectOfClass(GetDefinedClass(g_faultyConnectionClass), VORNA_SOURCE_LOCATION));
  IoConnectionRef connection(Cast<IoConnectionInterface>(object));
  VORNA_RETURN_ON_ERROR(connection.Init(url));
  return connection;
}

}  // namespace tessel::testmodule
