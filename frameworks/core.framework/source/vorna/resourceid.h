// Resource ids: InternedId variables that the host fills at load from the name, so that
// every library sees one identity per name. A variable is defined once per library in
// a source file and declared extern where it is used.
#pragma once

#include "vorna/module.h"

// Defines VAR as the interned id of NAME, in a source file that includes
// vorna/translationunit.h; the use hangs in the file's module record.
#define VORNA_DEFINE_RESOURCE_ID(VAR, NAME)                                                          \
  ::vorna::InternedId VAR;                                                                          \
  static ::vorna::ResourceIdUse VORNA_CONCAT(VAR, _use){&VAR, NAME, nullptr};                         \
  static const bool VORNA_CONCAT(VAR, _linked) =                                                    \
      (::vorna::LinkResourceId(&VORNA_CONCAT(VAR, _use), static_cast<::vorna::ModuleRecord*>(g_translationUnit.link)), true)
