// vorna.ExtensionPointInterface#1: the host's named registries (vorna.FileFormats,
// vorna.ImageSavers, vorna.Classes, ...). Members are keyed by the part of their id
// behind the colon. Registries are filled while modules load and only read afterwards.
#pragma once

#include "vorna/data.h"
#include "vorna/staticinterface.h"

namespace vorna {

class ExtensionPointHandle;

class ExtensionPoint {
 public:
  static constexpr const Char* ID = "vorna.ExtensionPointInterface#1";
  static constexpr Int COUNT = 8;
  using Reserved = void (*)();
  struct Table {
    ExtensionPointHandle* (*Find)(const Id& id);
    const Data* (*FindEntry)(const ExtensionPointHandle* point, const Id& key);
    Result<void> (*Insert)(ExtensionPointHandle* point, const Id& key, const Data& value);
    void (*Erase)(ExtensionPointHandle* point, const Id& key);
    Int (*GetCount)(const ExtensionPointHandle* point);
    const Data* (*GetEntry)(const ExtensionPointHandle* point, Int index, const Id** key);
    Reserved reserved6;
    Reserved reserved7;
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {2, 2, 5, 0, 2, 2, 0, 0};
  static Table _table;
  static StaticInterfaceRecord _record;

  static ExtensionPointHandle* Find(const Id& id) { return _table.Find(id); }
  static const Data* FindEntry(const ExtensionPointHandle* point, const Id& key) {
    return point ? _table.FindEntry(point, key) : nullptr;
  }
  static Result<void> Insert(ExtensionPointHandle* point, const Id& key, const Data& value) {
    if (!point) return ErrorResult{PrivateGetNullReturnError(0)};
    return _table.Insert(point, key, value);
  }
  static void Erase(ExtensionPointHandle* point, const Id& key) {
    if (point) _table.Erase(point, key);
  }
  static Int GetCount(const ExtensionPointHandle* point) { return point ? _table.GetCount(point) : 0; }
  static const Data* GetEntry(const ExtensionPointHandle* point, Int index, const Id** key) {
    return point ? _table.GetEntry(point, index, key) : nullptr;
  }
};

// Splits "registry:member" at its colon; false for an id without one.
Bool SplitMemberId(const Id& full, Id& registry, Id& member);

VORNA_DECLARED_STATIC_INTERFACE(ExtensionIteratorInterface, "vorna.ExtensionIteratorInterface#1", 5);

}  // namespace vorna
