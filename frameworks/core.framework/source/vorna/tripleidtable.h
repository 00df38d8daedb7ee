// TripleIdTable: the process-wide table behind the ":"-joined ids of static
// initialisers. Each distinct triple of C strings (a, b, c) exists once, as an Id whose
// text is their concatenation, and lives until the process ends, so the Id may be held
// by address. Insertion is lock-free.
#pragma once

#include "vorna/id.h"

namespace vorna {

const Id& GetTripleId(const Char* a, const Char* b, const Char* c);

}  // namespace vorna
