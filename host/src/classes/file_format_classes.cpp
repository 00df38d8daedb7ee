// The file format base classes as the host provides them: vorna.FileFormatBaseClass
// claims no file, and vorna.FileFormatImageBaseClass is the same for formats of
// pictures and movies. Derived classes answer Detect and their suffixes.
#include "vorna/translationunit.h"

#include "vorna/component.h"
#include "vorna/fileformat.h"

namespace vorna::host {

namespace {

class FileFormatComponent : public Component<FileFormatComponent> {
 public:
  static ClassRecord _classRecord;
  Result<Bool> Detect(const Url&) const { return false; }
};

class FileFormatImageComponent : public Component<FileFormatImageComponent> {
 public:
  static ClassRecord _classRecord;
};

VORNA_DEFINE_OBJECT_USE(g_fileFormatBase, "vorna.FileFormatBaseClass");

}  // namespace

VORNA_COMPONENT_CLASS(FileFormatComponent, g_fileFormatBaseClass, "vorna.FileFormatBaseClass", "",
                      &g_DataDictionaryObjectClass, &FileFormatInterface::_record,
                      VORNA_OVERRIDE(FileFormatInterface, Detect));
VORNA_COMPONENT_CLASS(FileFormatImageComponent, g_fileFormatImageBaseClass, "vorna.FileFormatImageBaseClass", "",
                      &g_fileFormatBase, &FileFormatInterface::_record);

}  // namespace vorna::host
