// vorna.SystemWindows#1 as the host serves it: a per-thread count of COM apartment
// entries, so that every enter is matched by one leave.
#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/system_win.h"

namespace vorna::host {

namespace {

thread_local Int t_apartmentEntries = 0;

Result<void> EnterComApartment(void*, Int) {
  ++t_apartmentEntries;
  return OK;
}

void LeaveComApartment() {
  if (t_apartmentEntries > 0) --t_apartmentEntries;
}

const SystemWindows::Table g_table{&EnterComApartment, &LeaveComApartment};

}  // namespace

void RegisterSystemWindowsProvider() { RegisterProvider(SystemWindows::ID, &g_table, SystemWindows::COUNT); }

}  // namespace vorna::host
