// Initialisation stages of the module's source files: an init function run when the
// host brings the module up and a free function run when it takes it down.
#pragma once

#include "vorna/module.h"

namespace tessel {

constexpr vorna::InitializationRecord MakeStage(const vorna::Char* description, vorna::Result<void> (*init)(),
                                                void (*free)()) {
  vorna::InitializationRecord record{};
  record.kind = vorna::UInt32(vorna::EntityKind::INITIALIZATION);
  record.id = vorna::Id(description);
  record.flags = vorna::entityflags::RESOLVE | vorna::entityflags::DEFINITION;
  record.init = init;
  record.free = free;
  return record;
}

}  // namespace tessel

// Defines the stage VAR of this source file; DESCRIPTION names what it starts and ends.
#define TESSEL_STAGE(VAR, DESCRIPTION, INIT, FREE)                                   \
  constinit vorna::InitializationRecord VAR = tessel::MakeStage(DESCRIPTION, INIT, FREE); \
  static const bool VORNA_CONCAT(VAR, _linked) = (vorna::LinkDefinition(&VAR, &g_translationUnit), true)
