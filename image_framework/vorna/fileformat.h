// File formats and their handlers: a file format says whether it can read a url; its
// handler makes the object that reads it (a media input) and tells the host how much
// it wants the job, so that the host can choose among several.
#pragma once

#include "vorna/datadictionaryobject.h"
#include "vorna/url.h"

namespace vorna {

class FileFormatInterface : public DataDictionaryObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.FileFormatInterface#1";
  static constexpr Int COUNT = 1;
  static constexpr UInt32 REFCLASS = refclass::READ_ONLY;
  enum : Int { kDetect };
  static InterfaceRecord _record;
  using DataDictionaryObjectInterface::DataDictionaryObjectInterface;

  // True when the format can serve url; a file that can't be opened is false, not an error.
  Result<Bool> Detect(const Url& url) const { return Invoke<&FileFormatInterface::Detect, kDetect>(url); }
};

class FileFormatHandlerInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.FileFormatHandlerInterface#1";
  static constexpr Int COUNT = 4;
  static constexpr UInt32 REFCLASS = refclass::READ_ONLY;
  enum : Int { kGetFileFormat, kGetHandlerType, kCreateHandler, kGetDependends };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  FileFormatInterface GetFileFormat() const {
    return Invoke<&FileFormatHandlerInterface::GetFileFormat, kGetFileFormat>();
  }
  // The data type of what CreateHandler makes.
  Result<const DataType*> GetHandlerType() const {
    return Invoke<&FileFormatHandlerInterface::GetHandlerType, kGetHandlerType>();
  }
  Result<ObjectRef> CreateHandler(const Url& url) const {
    return Invoke<&FileFormatHandlerInterface::CreateHandler, kCreateHandler>(url);
  }
  // How much the handler wants the job: the highest number wins.
  Int GetDependends() const { return Invoke<&FileFormatHandlerInterface::GetDependends, kGetDependends>(); }
};

VORNA_DECLARED_INTERFACE(MediaSessionFileFormatHandlerInterface, FileFormatHandlerInterface, "vorna.MediaSessionFileFormatHandlerInterface#1", refclass::READ_ONLY);

VORNA_DECLARED_STATIC_INTERFACE(FileFormatDetectionInterface, "vorna.FileFormatDetectionInterface#1", 1);

extern ObjectUseRecord g_FileFormatBaseClass;
extern ObjectUseRecord g_FileFormatImageBaseClass;

}  // namespace vorna
