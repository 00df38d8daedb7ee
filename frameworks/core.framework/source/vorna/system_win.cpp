#include "vorna/translationunit.h"

#include "vorna/system_win.h"

namespace vorna {

namespace {
Result<void> EnterWithoutHost(void*, Int) { return OK; }
void LeaveWithoutHost() {}

void FillFallback(void** table) {
  auto* t = reinterpret_cast<SystemWindows::Table*>(table);
  t->EnterComApartment = &EnterWithoutHost;
  t->LeaveComApartment = &LeaveWithoutHost;
}
}  // namespace

VORNA_DEFINE_STATIC_INTERFACE(SystemWindows, &FillFallback, &SystemWindows::Table::EnterComApartment);

}  // namespace vorna
