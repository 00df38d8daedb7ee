// The import's file formats: movie.winmf and audio.winmf. Neither looks at a suffix or
// a magic number: Detect opens the file through the platform for real, with a session
// of its own, and asks whether a stream can be served. The suffix lists only tell the
// host which files to offer. Stateless apart from the suffixes, which are filled when
// the published object is made, so any thread may use them.
#pragma once

#include "vorna/basearray.h"
#include "vorna/component.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"

namespace tessel {

// Detects with the analysis flags of the format: detectVideo asks for a video stream
// that takes an output type; detectAudio only for a source that opens (and no audio
// stream that refuses its output type); skipVideo passes video streams over.
vorna::Result<vorna::Bool> DetectWithReader(const vorna::Url& url, vorna::Bool detectVideo, vorna::Bool detectAudio,
                                            vorna::Bool skipVideo);

// Fills suffixes with the texts, in order.
vorna::Result<void> SetSuffixes(vorna::BaseArray<vorna::String>& suffixes, vorna::Block<const vorna::Char* const> texts);

// The common suffixes as a Data over the array itself: no string is copied.
vorna::Result<vorna::Data> SuffixData(const vorna::BaseArray<vorna::String>& suffixes);

template <typename SELF>
class FileFormatWinMF : public vorna::Component<SELF> {
 public:
  vorna::Result<void> Init() { return SetSuffixes(_suffixes, SELF::SUFFIXES); }

  vorna::Result<vorna::Bool> Detect(const vorna::Url& url) const {
    return DetectWithReader(url, SELF::DETECT_VIDEO, SELF::DETECT_AUDIO, SELF::SKIP_VIDEO);
  }

  // The common suffixes; every other key goes to the base class.
  vorna::Result<vorna::Data> GetData(const vorna::ConstDataPtr& key) const {
    const vorna::InternedId* id = key.As<vorna::InternedId>();
    if (id && *id == vorna::g_fileFormatCommonsuffixes) return SuffixData(_suffixes);
    return this->template Super<&vorna::DataDictionaryObjectInterface::GetData,
                                vorna::DataDictionaryObjectInterface::kGetData>(key);
  }

  vorna::BaseArray<vorna::String> _suffixes;
};

class FileFormatMovieWinMFImpl : public FileFormatWinMF<FileFormatMovieWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr vorna::Bool DETECT_VIDEO = true;
  static constexpr vorna::Bool DETECT_AUDIO = false;
  static constexpr vorna::Bool SKIP_VIDEO = false;
  static const vorna::Block<const vorna::Char* const> SUFFIXES;
};

class FileFormatAudioWinMFImpl : public FileFormatWinMF<FileFormatAudioWinMFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr vorna::Bool DETECT_VIDEO = false;
  static constexpr vorna::Bool DETECT_AUDIO = true;
  static constexpr vorna::Bool SKIP_VIDEO = true;
  static const vorna::Block<const vorna::Char* const> SUFFIXES;
};

}  // namespace tessel
