#include "vorna/translationunit.h"

#include "vorna/extensionpoint.h"

#include <cstring>

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(ExtensionPoint, nullptr, &ExtensionPoint::Table::Insert);

Bool SplitMemberId(const Id& full, Id& registry, Id& member) {
  const Char* text = full.GetCString();
  const Char* colon = std::strchr(text, ':');
  if (!colon) return false;
  return registry.Init(text, colon - text) && member.Init(colon + 1, full.GetLength() - (colon + 1 - text));
}

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ExtensionIteratorInterface, nullptr);

}  // namespace vorna
