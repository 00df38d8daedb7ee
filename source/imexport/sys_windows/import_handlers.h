// The import's file format handlers: stateless singletons that make a loader for a
// url. The movie handler's number is the higher by one, so that a file both formats
// claim is read by the movie loader.
#pragma once

#include "import_loaders.h"
#include "vorna/component.h"
#include "vorna/fileformat.h"

namespace tessel {

// The published file format of use, or a null reference while it isn't available.
vorna::FileFormatInterface PublishedFileFormat(vorna::ObjectUseRecord& use);

// What the handlers make: references to media inputs.
vorna::Result<const vorna::DataType*> MediaInputType();

// A new loader of L for url, with a new session and no reader yet.
template <typename L>
vorna::Result<vorna::ObjectRef> CreateLoader(vorna::ObjectDefinitionRecord& loaderClass, const vorna::Url& url) {
  VORNA_ASSIGN_OR_RETURN(vorna::ObjectRef loader,
                         vorna::CreateObjectOfClass(vorna::GetDefinedClass(loaderClass), VORNA_SOURCE_LOCATION));
  L* fields = vorna::GetComponent<L>(loader);
  if (!fields) return vorna::RaiseError(vorna::g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION);
  fields->_url = url;
  VORNA_ASSIGN_OR_RETURN(fields->_session, SessionRef::Create());
  return loader;
}

class FileFormatHandlerMovieWinMFImpl : public vorna::Component<FileFormatHandlerMovieWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  vorna::FileFormatInterface GetFileFormat() const;
  vorna::Result<const vorna::DataType*> GetHandlerType() const { return MediaInputType(); }
  vorna::Result<vorna::ObjectRef> CreateHandler(const vorna::Url& url) const;
  vorna::Int GetDependends() const { return 29990; }
};

class FileFormatHandlerAudioWinMFImpl : public vorna::Component<FileFormatHandlerAudioWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  vorna::FileFormatInterface GetFileFormat() const;
  vorna::Result<const vorna::DataType*> GetHandlerType() const { return MediaInputType(); }
  vorna::Result<vorna::ObjectRef> CreateHandler(const vorna::Url& url) const;
  vorna::Int GetDependends() const { return 29989; }
};

}  // namespace tessel
