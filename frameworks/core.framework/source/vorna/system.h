// vorna.System#1: memory, errors, console output, the clock and configuration. A
// non-virtual interface: each call is one indirect jump through the module's table.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

struct ConfigurationEntry;

class System {
 public:
  static constexpr const Char* ID = "vorna.System#1";
  static constexpr Int COUNT = 27;
  using Reserved = void (*)();
  using FreeObjectFunction = void (*)(void* object);

  // Slot order as the host keeps it; unnamed slots are services this code never calls.
  struct Table {
    void (*ConsoleOutput)(const Char* line);
    ErrorWord (*RaiseError)(void** errorReference);  // takes over the reference
    void* (*Alloc)(Int size, const SourceLocation& location);
    void* (*AllocClear)(Int size, const SourceLocation& location);
    void* (*Realloc)(void* block, Int size, const SourceLocation& location);
    void (*Free)(void* block);
    UInt32 (*GetOutputMask)();
    Reserved reserved7;
    Reserved reserved8;
    void (*ReleaseObject)(void* object, FreeObjectFunction free);
    Float64 (*GetClock)();
    Reserved reserved11;
    Reserved reserved12;
    Reserved reserved13;
    Reserved reserved14;
    Reserved reserved15;
    ErrorWord (*RaiseErrorCopy)(void* const* errorReference);  // leaves the reference
    Reserved reserved17;
    void (*RegisterConfiguration)(ConfigurationEntry* entry);
    Reserved reserved19;
    Reserved reserved20;
    Reserved reserved21;
    Reserved reserved22;
    Reserved reserved23;
    Reserved reserved24;
    Reserved reserved25;
    Reserved reserved26;
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {0, 5, 2, 2, 2, 1, 2, 2, 2, 0, 3, 2, 2, 2,
                                                  2, 2, 5, 2, 0, 0, 0, 2, 2, 2, 2, 0, 0};
  static Table _table;
  static StaticInterfaceRecord _record;

  static void ConsoleOutput(const Char* line) { _table.ConsoleOutput(line); }
  static void* Alloc(Int size, const SourceLocation& location) { return _table.Alloc(size, location); }
  static void* AllocClear(Int size, const SourceLocation& location) { return _table.AllocClear(size, location); }
  static void* Realloc(void* block, Int size, const SourceLocation& location) {
    return _table.Realloc(block, size, location);
  }
  static void Free(void* block) { _table.Free(block); }
  static ErrorWord RaiseError(void** errorReference) { return _table.RaiseError(errorReference); }
  static ErrorWord RaiseErrorCopy(void* const* errorReference) { return _table.RaiseErrorCopy(errorReference); }
  static void ReleaseObject(void* object, FreeObjectFunction free) { _table.ReleaseObject(object, free); }
  static Float64 GetClock() { return _table.GetClock(); }
  static UInt32 GetOutputMask() { return _table.GetOutputMask(); }
  static void RegisterConfiguration(ConfigurationEntry* entry) { _table.RegisterConfiguration(entry); }

  // A block with the reference counter in front, holding one reference; null when out
  // of memory. Freed with FreeCounted.
  static void* AllocCounted(Int size, const SourceLocation& location);
  static void FreeCounted(void* block);
};

}  // namespace vorna
