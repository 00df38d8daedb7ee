#include "import_handlers.h"

#include "media_win_mf.h"
#include "vorna/referencedata.h"

namespace tessel {

using namespace vorna;

FileFormatInterface PublishedFileFormat(ObjectUseRecord& use) {
  static void* const none = nullptr;
  return FileFormatInterface(*static_cast<void* const*>(LookupObjectValue(use, &none)));
}

// The host names reference types by kind only; a media input is held by a strong
// reference.
Result<const DataType*> MediaInputType() { return GetDataType(g_strongReferenceType); }

FileFormatInterface FileFormatHandlerMovieWinMFImpl::GetFileFormat() const {
  return PublishedFileFormat(g_movieFileFormatUse);
}

Result<ObjectRef> FileFormatHandlerMovieWinMFImpl::CreateHandler(const Url& url) const {
  return CreateLoader<MovieLoaderWinMFImpl>(g_movieLoaderClass, url);
}

FileFormatInterface FileFormatHandlerAudioWinMFImpl::GetFileFormat() const {
  return PublishedFileFormat(g_audioFileFormatUse);
}

Result<ObjectRef> FileFormatHandlerAudioWinMFImpl::CreateHandler(const Url& url) const {
  return CreateLoader<AudioLoaderWinMFImpl>(g_audioLoaderClass, url);
}

}  // namespace tessel
