#include "import_loaders.h"

#include "frame_fetch.h"
#include "stream_analysis.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

using namespace vorna;

namespace {

constexpr Bool SUPPORTED = true;
constexpr Bool UNSUPPORTED = false;

}  // namespace

ErrorResult LoaderStateError() { return RaiseError(g_IllegalStateErrorObject, VORNA_SOURCE_LOCATION); }

const Bool* LoaderCapability(const ConstDataPtr& key, Bool supportsPicture) {
  const InternedId* id = key.As<InternedId>();
  if (!id) return nullptr;
  if (*id == g_mediaInputSupportsImage || *id == g_mediaInputSupportsVideo)
    return supportsPicture ? &SUPPORTED : &UNSUPPORTED;
  if (*id == g_mediaInputSupportsAudio) return &SUPPORTED;
  return nullptr;
}

template <typename SELF>
Result<void> WinMFLoader<SELF>::Analyze(const ConverterBlock& inputs, Int, Int) {
  if (inputs.count != 0 || !_session) return LoaderStateError();
  if (_session->reader) return OK;
  return AnalyzeSource(*_session, _url, MediaConverterInterface(this->GetObjectPointer()), false, false,
                       SELF::SKIP_VIDEO);
}

template <typename SELF>
Result<void> WinMFLoader<SELF>::Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) {
  if (inputs.count != 0 || !_session) return LoaderStateError();
  return ExecuteOnStreams(*_session, MediaConverterInterface(this->GetObjectPointer()), time, flags);
}

template class WinMFLoader<MovieLoaderWinMFImpl>;
template class WinMFLoader<AudioLoaderWinMFImpl>;

}  // namespace tessel
