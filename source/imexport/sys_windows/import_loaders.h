// The import's loaders: media inputs of the host's session, one per opened file. A
// loader holds the file's url and the session whose reader it and its streams share;
// its streams are held by its base class. The host drives a loader on one thread at a
// time, so nothing here locks.
#pragma once

#include "mf_reader_session.h"
#include "vorna/component.h"
#include "vorna/mediasession_converter.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

// The illegal-state error of a call with inputs or after Close.
vorna::ErrorResult LoaderStateError();

// The capabilities of a loader; null for a key that isn't one.
const vorna::Bool* LoaderCapability(const vorna::ConstDataPtr& key, vorna::Bool supportsPicture);

template <typename SELF>
class WinMFLoader : public vorna::Component<SELF> {
 public:
  vorna::Int SupportImportStrategy() const { return 1; }

  vorna::Result<vorna::Data> GetData(const vorna::ConstDataPtr& key) const {
    if (const vorna::Bool* capability = LoaderCapability(key, SELF::SUPPORTS_PICTURE))
      return vorna::MakeData(*capability);
    return this->template Super<&vorna::DataDictionaryObjectInterface::GetData,
                                vorna::DataDictionaryObjectInterface::kGetData>(key);
  }

  // Publishes the file's streams once; a second call finds the reader open and does
  // nothing, also after an analysis that failed half way.
  vorna::Result<void> Analyze(const vorna::ConverterBlock& inputs, vorna::Int, vorna::Int);

  vorna::Result<void> PrepareExecute(const vorna::ConverterBlock& inputs, vorna::Int, vorna::Int) {
    if (inputs.count != 0 || !_session) return LoaderStateError();
    return vorna::OK;
  }

  // Delivers the subscribed streams' frames and sound for time.
  vorna::Result<void> Execute(const vorna::ConverterBlock& inputs, const vorna::TimeValue& time,
                              vorna::MEDIASESSIONFLAGS flags);

  // Drops this loader's share of the session; the streams the host still holds keep
  // the reader alive.
  vorna::Result<void> Close(const vorna::ConverterBlock&) {
    _session.Reset();
    return vorna::OK;
  }

  vorna::Url _url;
  SessionRef _session;
};

class MovieLoaderWinMFImpl : public WinMFLoader<MovieLoaderWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr vorna::Bool SKIP_VIDEO = false;
  static constexpr vorna::Bool SUPPORTS_PICTURE = true;
};

// Publishes only the sound of a file.
class AudioLoaderWinMFImpl : public WinMFLoader<AudioLoaderWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr vorna::Bool SKIP_VIDEO = true;
  static constexpr vorna::Bool SUPPORTS_PICTURE = false;
};

}  // namespace tessel
