// Configuration variables: plain static variables with a name, a default and a help
// text, entered in a table of at most 256 entries while static initialisers run. At
// module start the configuration stage registers every entry with the host, which may
// set the variable from outside (for instance from the command line).
#pragma once

#include "vorna/staticinterface.h"

namespace vorna {

inline constexpr UInt32 CONFIGURATION_TYPE_BOOL = 1;
inline constexpr Int CONFIGURATION_TABLE_SIZE = 256;

struct ConfigurationEntry {
  const Char* name;
  const Char* help;
  UInt32 type;
  void* address;
  UInt32 state;  // 3 or 4: the variable holds a reference
};

// Enters a variable in the table; a full table leaves it at its default. Returns the
// default, which the caller stores in the variable.
Bool ConfigurationVariable(const Char* name, Bool* variable, Bool defaultValue, UInt32 type, const Char* help);

// The table of this library's variables.
ConfigurationEntry* GetConfigurationTable(Int& count);

VORNA_DECLARED_STATIC_INTERFACE(Configuration, "vorna.Configuration#1", 13);

}  // namespace vorna

#define VORNA_CONFIG_BOOL(NAME, DEFAULT, HELP) \
  ::vorna::Bool NAME = ::vorna::ConfigurationVariable(#NAME, &NAME, DEFAULT, ::vorna::CONFIGURATION_TYPE_BOOL, HELP)
