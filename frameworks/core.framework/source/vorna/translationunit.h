// The TranslationUnitRecord of the including source file, named after the file and
// made before every other record of the file. Include it first in each source file
// that declares records. The module it belongs to is VORNA_UNIT_MODULE, the library's
// own module record unless the build says otherwise (the client layer's files belong
// to their framework's record).
#pragma once

#include "vorna/module.h"

#ifndef VORNA_UNIT_MODULE
#define VORNA_UNIT_MODULE g_moduleRecord
#endif

namespace vorna {
extern ModuleRecord VORNA_UNIT_MODULE;
}

namespace {
constinit vorna::TranslationUnitRecord g_translationUnit =
    vorna::MakeUnitRecord(__BASE_FILE__, &g_translationUnit, &vorna::VORNA_UNIT_MODULE);
[[maybe_unused]] const bool g_translationUnitLinked = (vorna::LinkUnit(&g_translationUnit), true);
}  // namespace
