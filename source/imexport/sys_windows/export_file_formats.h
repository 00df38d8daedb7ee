// The file formats of the savers: movie.mp4, movie.3gp, movie.asf, movie.wmv and
// movie.avi. Each only names its suffix for the host; none claims a file when asked to
// detect one, since reading is the business of movie.winmf.
#pragma once

#include "import_file_formats.h"

namespace tessel {

template <typename SELF>
class SaverFileFormat : public vorna::Component<SELF> {
 public:
  vorna::Result<void> Init() { return SetSuffixes(_suffixes, {&SELF::SUFFIX, 1}); }

  vorna::Result<vorna::Bool> Detect(const vorna::Url&) const { return false; }

  vorna::Result<vorna::Data> GetData(const vorna::ConstDataPtr& key) const {
    const vorna::InternedId* id = key.As<vorna::InternedId>();
    if (id && *id == vorna::g_fileFormatCommonsuffixes) return SuffixData(_suffixes);
    return this->template Super<&vorna::DataDictionaryObjectInterface::GetData,
                                vorna::DataDictionaryObjectInterface::kGetData>(key);
  }

  vorna::BaseArray<vorna::String> _suffixes;
};

class FileFormatMovieMP4Impl : public SaverFileFormat<FileFormatMovieMP4Impl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr const vorna::Char* SUFFIX = "mp4";
};

class FileFormatMovie3GPImpl : public SaverFileFormat<FileFormatMovie3GPImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr const vorna::Char* SUFFIX = "3gp";
};

class FileFormatMovieASFImpl : public SaverFileFormat<FileFormatMovieASFImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr const vorna::Char* SUFFIX = "asf";
};

class FileFormatMovieWMVImpl : public SaverFileFormat<FileFormatMovieWMVImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr const vorna::Char* SUFFIX = "wmv";
};

class FileFormatMovieAviImpl : public SaverFileFormat<FileFormatMovieAviImpl> {
 public:
  static vorna::ClassRecord _classRecord;
  static constexpr const vorna::Char* SUFFIX = "avi";
};

}  // namespace tessel
