#include "import_file_formats.h"

#include <iterator>

#include "mf_reader_session.h"
#include "stream_analysis.h"
#include "vorna/datatypelib.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

using namespace vorna;

namespace {

constexpr const Char* MOVIE_SUFFIXES[] = {"avi", "wmv", "mp4", "3g2", "3gp", "3gp2", "3gpp",
                                          "asf", "wma", "m4a", "m4v", "mov", "sami", "smi"};
constexpr const Char* AUDIO_SUFFIXES[] = {"mp3"};

}  // namespace

const Block<const Char* const> FileFormatMovieWinMFImpl::SUFFIXES{MOVIE_SUFFIXES, Int(std::size(MOVIE_SUFFIXES))};
const Block<const Char* const> FileFormatAudioWinMFImpl::SUFFIXES{AUDIO_SUFFIXES, Int(std::size(AUDIO_SUFFIXES))};

Result<Bool> DetectWithReader(const Url& url, Bool detectVideo, Bool detectAudio, Bool skipVideo) {
  VORNA_ASSIGN_OR_RETURN(SessionRef session, SessionRef::Create());
  // The answer is whether the analysis succeeded; why it didn't is of no interest here.
  Result<void> analysed = AnalyzeSource(*session, url, MediaConverterInterface(), detectVideo, detectAudio, skipVideo);
  return !analysed.IsError();
}

Result<void> SetSuffixes(BaseArray<String>& suffixes, Block<const Char* const> texts) {
  for (const Char* text : texts) {
    String suffix;
    VORNA_RETURN_ON_ERROR(suffix.SetCString(text));
    if (!suffixes.Append(std::move(suffix))) return CreateError(VORNA_SOURCE_LOCATION, 0);
  }
  return OK;
}

Result<Data> SuffixData(const BaseArray<String>& suffixes) {
  Data data = MakeBlockData<String>(suffixes.ToBlock());
  if (data.IsEmpty()) return CreateError(VORNA_SOURCE_LOCATION, 0);
  return data;
}

}  // namespace tessel
