// vorna.SystemWindows#1: COM initialisation of the calling thread and its undoing, in
// the shape of CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED). Without a host that
// serves it, a local fallback answers: entering succeeds, leaving does nothing.
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

class SystemWindows {
 public:
  static constexpr const Char* ID = "vorna.SystemWindows#1";
  static constexpr Int COUNT = 2;
  struct Table {
    Result<void> (*EnterComApartment)(void* reserved, Int mode);
    void (*LeaveComApartment)();
  };
  static constexpr UChar RETURN_CLASSES[COUNT] = {5, 0};
  static Table _table;
  static StaticInterfaceRecord _record;

  static Result<void> EnterComApartment(void* reserved, Int mode) { return _table.EnterComApartment(reserved, mode); }
  static void LeaveComApartment() { _table.LeaveComApartment(); }
};

}  // namespace vorna
