#include "vorna/translationunit.h"

#include "classes/error_classes.h"

#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "loading/host_class.h"
#include "loading/interface_registry.h"
#include "loading/registries.h"
#include "vorna/component.h"

namespace vorna::host {

namespace {

const Char* InternFileName(const Char* file) {
  static std::mutex mutex;
  static std::set<std::string> names;
  if (!file) return nullptr;
  std::lock_guard lock(mutex);
  return names.emplace(file).first->c_str();
}

class ErrorObjectComponent : public Component<ErrorObjectComponent> {
 public:
  static ClassRecord _classRecord;

  SourceLocation GetLocation() const { return _location; }
  // The file name is kept in the host: an error may outlive the module it came from.
  void SetLocation(const SourceLocation& location) {
    _location = location;
    _location.file = InternFileName(location.file);
  }
  String GetMessage() const { return _message; }
  void SetMessage(const String& message) { _message = message; }
  ErrorInterface GetCause() const { return _cause; }
  void SetCause(const ErrorInterface& cause) { _cause = ErrorRef(cause); }
  Int PrivateGetCode() const { return _code; }
  void PrivateSetCode(Int code) { _code = code; }

  // "class id: message", or the class id alone.
  String ToString(const FormatStatement*) const {
    String text;
    const Id& id = MethodTableOf(GetObjectPointer())->cls->id;
    (void)text.SetCString(id.GetCString(), id.GetLength());
    if (_message.GetLength() > 0 && text.AppendCString(": ")) text.Append(_message);
    return text;
  }

  Result<void> CopyFrom(const ErrorObjectComponent& source) {
    _location = source._location;
    _message = source._message;
    _cause = source._cause;
    _code = source._code;
    return OK;
  }

 private:
  SourceLocation _location{};
  String _message;
  ErrorRef _cause;
  Int _code = 0;
};

}  // namespace

VORNA_COMPONENT_CLASS(ErrorObjectComponent, g_errorObjectClass, "vorna.ErrorObjectClass", "", nullptr,
                      &ErrorInterface::_record, VORNA_OVERRIDE(ErrorInterface, GetLocation),
                      VORNA_OVERRIDE(ErrorInterface, SetLocation), VORNA_OVERRIDE(ErrorInterface, GetMessage),
                      VORNA_OVERRIDE(ErrorInterface, SetMessage), VORNA_OVERRIDE(ErrorInterface, GetCause),
                      VORNA_OVERRIDE(ErrorInterface, SetCause), VORNA_OVERRIDE(ErrorInterface, PrivateGetCode),
                      VORNA_OVERRIDE(ErrorInterface, PrivateSetCode), VORNA_OVERRIDE(ObjectInterface, ToString));

namespace {

struct ErrorKind {
  const Char* name;     // X of vorna.XErrorObject
  const Char* base;     // X of the base interface, or null for the error interface itself
  Int methodCount;
};

const ErrorKind KINDS[] = {
    {"OutOfMemory", nullptr, 0},      {"FunctionNotImplemented", nullptr, 0}, {"UnsupportedOperation", nullptr, 0},
    {"ThreadCancelled", nullptr, 0},  {"IllegalArgument", nullptr, 0},        {"UnsupportedArgument", nullptr, 0},
    {"Nullptr", "IllegalArgument", 0}, {"IllegalState", nullptr, 0},          {"Unknown", nullptr, 0},
    {"Shutdown", nullptr, 0},         {"Unexpected", nullptr, 0},             {"Errno", nullptr, 0},
    {"Aggregated", nullptr, 4},       {"System", nullptr, 0},                 {"Io", nullptr, 2},
    {"FileFormat", "Io", 0},          {"UnknownFileSize", nullptr, 0},        {"Job", nullptr, 0},
    {"MediaConverter", nullptr, 0},   {"MediaSessionWrongType", nullptr, 0},  {"MediaStreamEOF", nullptr, 0},
};
constexpr size_t KIND_COUNT = std::size(KINDS);

Bool NoMethods(ClassHandle*, ClassRecord*) { return true; }

// Per kind: its interface, the empty component that adds it, and the class.
struct KindRecords {
  std::string interfaceId;
  std::string objectId;
  std::string classId;
  InterfaceRecord iface{};
  const InterfaceRecord* interfaces[2] = {};
  const InterfaceRecord* bases[2] = {};
  ClassRecord component{};
  ClassHandle* cls = nullptr;
};

// Static, because error objects may outlive the host's stop in the rings of raised
// errors, and their classes point at these records until the last of them is freed.
KindRecords g_kinds[KIND_COUNT];
Bool g_created = false;

KindRecords* FindKind(const Char* name) {
  for (size_t i = 0; i < KIND_COUNT; ++i)
    if (std::string(KINDS[i].name) == name) return &g_kinds[i];
  return nullptr;
}

void DescribeKind(const ErrorKind& kind, KindRecords& records) {
  records.interfaceId = std::string("vorna.") + kind.name + "ErrorInterface#1";
  records.objectId = std::string("vorna.") + kind.name + "ErrorObject";
  records.classId = records.objectId + "Class";
  records.iface.kind = UInt32(EntityKind::INTERFACE);
  records.iface.id = Id(records.interfaceId.c_str());
  records.iface.size = StretchSize(kind.methodCount);
  records.bases[0] = kind.base ? &FindKind(kind.base)->iface : &ErrorInterface::_record;
  records.iface.base = records.bases;
  records.interfaces[0] = &records.iface;
  records.component.kind = UInt32(EntityKind::CLASS);
  records.component.interfaces = records.interfaces;
  records.component.interfaceCount = 1;
  records.component.initMethods = &NoMethods;
  records.component.construct = &detail::DefaultNothing;
  records.component.destruct = &detail::DefaultNothing;
  records.component.init = &detail::DefaultSuccess;
  records.component.free = &detail::DefaultNothing;
  records.component.copyFrom = [](void*, const void*) { return OK; };
}

void BuildKind(KindRecords& records, ClassHandle* base) {
  ClassHandle* cls = AllocClass(Id(records.classId.c_str()));
  if (!cls) return;
  records.cls = cls;
  Result<void> step = Class::AddBase(cls, base);
  if (!step.IsError()) step = Class::AddComponent(cls, &records.component);
  if (step.IsError()) return;
  Class::Finish(cls);
  Result<ObjectRef> prototype = CreateObjectOfClass(cls, VORNA_SOURCE_LOCATION);
  if (!prototype.IsError())
    (void)Publish(Id(records.objectId.c_str()), MakeObjectData(prototype.GetValue(), g_cowReferenceType));
}

}  // namespace

void CreateErrorClasses() {
  ClassHandle* base = GetDefinedClass(g_errorObjectClass);
  for (size_t i = 0; i < KIND_COUNT; ++i) DescribeKind(KINDS[i], g_kinds[i]);
  for (KindRecords& records : g_kinds) BuildKind(records, base);
  g_created = true;
}

void DestroyErrorClasses() {
  if (!g_created) return;
  for (KindRecords& records : g_kinds) {
    Unpublish(Id(records.objectId.c_str()));
    ReleaseClass(records.cls);
    records.cls = nullptr;
  }
  g_created = false;
}

}  // namespace vorna::host
