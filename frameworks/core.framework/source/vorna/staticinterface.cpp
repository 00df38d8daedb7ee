#include "vorna/staticinterface.h"

#include "vorna/diagnostics.h"

namespace vorna {

Bool TryResolve(StaticInterfaceRecord* record) {
  if (record->handle) {
    ModuleInitializer initializer = g_coreFrameworkModule.initializer;
    if (!initializer) {
      ReportAssertion("Assertion failed: PRIVATE_VORNA_MODULE.GetInitializer()", __LINE__, __FILE__);
    } else {
      Result<void> out;
      initializer(out, record->handle, &record->id);
      if (!out.IsError()) return true;
    }
  }
  if (record->fallback) {
    record->fallback(record->table);
    return true;
  }
  DiagnosticOutput(0x20000001, "Method invocation of unresolvable interface ", __LINE__, __FILE__);
  DiagnosticOutput(OUTPUT_DIAGNOSTIC, record->id.GetCString(), __LINE__, __FILE__);
  ReportAssertion("Stop", __LINE__, __FILE__);
  return false;
}

}  // namespace vorna
