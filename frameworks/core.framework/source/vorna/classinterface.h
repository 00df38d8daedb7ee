// vorna.ClassInterface#1: building component classes and making objects of them.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

class ClassHandle;

class Class {
 public:
  static constexpr const Char* ID = "vorna.ClassInterface#1";
  static constexpr Int COUNT = 24;
  using Reserved = void (*)();

  struct Table {
    ClassHandle* (*Alloc)(const Id& id, Int flags);
    void (*AddBase)(Result<void>& out, ClassHandle* cls, ClassHandle* base);
    Bool (*IsComplete)(ClassHandle* cls);
    void (*AddComponent)(Result<void>& out, ClassHandle* cls, ClassRecord* component);
    void (*Finish)(Result<ClassHandle*>& out, ClassHandle* cls);
    void* (*GetMethods)(ClassHandle* cls, Int interfaceOffset, Int stretchSize);
    void (*CreateObject)(Result<void*>& out, ClassHandle* cls);
    void (*CloneObject)(Result<void*>& out, const void* object, const SourceLocation& location);
    void (*Release)(ClassHandle* cls);
    Int (*GetComponentOffset)(const ClassHandle* cls, const ClassRecord* component);
    const Id* (*GetId)(const ClassHandle* cls);
    Reserved reserved11;
    Reserved reserved12;
    Reserved reserved13;
    Reserved reserved14;
    Reserved reserved15;
    Reserved reserved16;
    Reserved reserved17;
    Reserved reserved18;
    Reserved reserved19;
    Reserved reserved20;
    Reserved reserved21;
    Reserved reserved22;
    Reserved reserved23;
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2, 5, 2, 5, 5, 2, 5, 5, 0, 2, 2, 0,
                                                  0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  static Table _table;
  static StaticInterfaceRecord _record;

  static ClassHandle* Alloc(const Id& id) { return _table.Alloc(id, 0); }
  static Result<void> AddBase(ClassHandle* cls, ClassHandle* base) {
    Result<void> out;
    _table.AddBase(out, cls, base);
    return out;
  }
  static Bool IsComplete(ClassHandle* cls) { return _table.IsComplete(cls); }
  static Result<void> AddComponent(ClassHandle* cls, ClassRecord* component) {
    Result<void> out;
    _table.AddComponent(out, cls, component);
    return out;
  }
  static Result<ClassHandle*> Finish(ClassHandle* cls) {
    Result<ClassHandle*> out;
    _table.Finish(out, cls);
    return out;
  }
  static void* GetMethods(ClassHandle* cls, Int interfaceOffset, Int stretchSize) {
    return _table.GetMethods(cls, interfaceOffset, stretchSize);
  }
  static Result<void*> CreateObject(ClassHandle* cls) {
    Result<void*> out;
    _table.CreateObject(out, cls);
    return out;
  }
  static Result<void*> CloneObject(const void* object, const SourceLocation& location) {
    Result<void*> out;
    _table.CloneObject(out, object, location);
    return out;
  }
  static void Release(ClassHandle* cls) { _table.Release(cls); }
  static Int GetComponentOffset(const ClassHandle* cls, const ClassRecord* component) {
    return _table.GetComponentOffset(cls, component);
  }
  static const Id* GetId(const ClassHandle* cls) { return _table.GetId(cls); }
};

}  // namespace vorna
