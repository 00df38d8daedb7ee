// Published objects of a module: a shared instance of one of its classes, entered in a
// registry under "registry:member" while the module loads and erased at unload. The
// entering and removing functions are the same for every member of every registry.
#pragma once

#include "vorna/component.h"
#include "vorna/tripleidtable.h"

namespace vorna {

// Creates the instance: one object of the class that classDefinition built. A class
// that is not available gives the null-pointer error at location.
Result<Data> CreatePublishedInstance(ObjectDefinitionRecord& classDefinition, const SourceLocation& location);

// The class itself as the value, for the registries that hold classes (vorna.ImageSavers).
// A class that is not available gives the null-pointer error at location.
Result<Data> PublishedClassValue(ObjectDefinitionRecord& classDefinition, const SourceLocation& location);

// Enters the value under the member part of the record's id in the registry its id
// names, and takes it out again.
Result<void> InsertRegistryMember(ObjectDefinitionRecord& definition);
void EraseRegistryMember(ObjectDefinitionRecord& definition);

}  // namespace vorna

// Defines VAR, the published instance of the class defined by CLASS_VAR, as member
// MEMBER of REGISTRY (e.g. "vorna.FileFormats", "movie.winmf").
#define VORNA_PUBLISHED_OBJECT(VAR, REGISTRY, MEMBER, CLASS_VAR)                                       \
  static ::vorna::Result<::vorna::Data> VORNA_CONCAT(VAR, _create)(::vorna::ObjectDefinitionRecord&) { \
    return ::vorna::CreatePublishedInstance(CLASS_VAR, VORNA_SOURCE_LOCATION);                       \
  }                                                                                                  \
  constinit ::vorna::ObjectDefinitionRecord VAR = ::vorna::MakeDefinitionRecord(                     \
      &VORNA_CONCAT(VAR, _create), &::vorna::InsertRegistryMember, &::vorna::EraseRegistryMember);   \
  static const bool VORNA_CONCAT(VAR, _linked) = [] {                                                \
    VAR.id = ::vorna::GetTripleId(REGISTRY, ":", MEMBER);                                            \
    ::vorna::LinkDefinition(&VAR, &g_translationUnit);                                               \
    return true;                                                                                     \
  }()

// Defines VAR, the class defined by CLASS_VAR itself, as member MEMBER of REGISTRY.
#define VORNA_PUBLISHED_CLASS(VAR, REGISTRY, MEMBER, CLASS_VAR)                                        \
  static ::vorna::Result<::vorna::Data> VORNA_CONCAT(VAR, _create)(::vorna::ObjectDefinitionRecord&) { \
    return ::vorna::PublishedClassValue(CLASS_VAR, VORNA_SOURCE_LOCATION);                           \
  }                                                                                                  \
  constinit ::vorna::ObjectDefinitionRecord VAR = ::vorna::MakeDefinitionRecord(                     \
      &VORNA_CONCAT(VAR, _create), &::vorna::InsertRegistryMember, &::vorna::EraseRegistryMember);   \
  static const bool VORNA_CONCAT(VAR, _linked) = [] {                                                \
    VAR.id = ::vorna::GetTripleId(REGISTRY, ":", MEMBER);                                            \
    ::vorna::LinkDefinition(&VAR, &g_translationUnit);                                               \
    return true;                                                                                     \
  }()
