// Converters of the media session: a node of the chain with its output streams and
// input converters. A media input starts a chain; it gets an empty block of inputs.
#pragma once

#include "vorna/basearray.h"
#include "vorna/mediasession_stream.h"
#include "vorna/timevalue.h"

namespace vorna {

// The input converters of a call: objects with vorna.MediaConverterInterface#1.
using ConverterBlock = Block<const ObjectRef>;

class MediaConverterInterface : public MediaBaseInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaConverterInterface#1";
  static constexpr Int COUNT = 10;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int {
    kSupportImportStrategy, kSupportExportStrategy, kGetInputConverter, kAddOutputStream, kRemoveOutputStream,
    kGetOutputStreams, kAnalyze, kPrepareExecute, kExecute, kClose
  };
  static InterfaceRecord _record;
  using MediaBaseInterface::MediaBaseInterface;

  Int SupportImportStrategy() const {
    return Invoke<&MediaConverterInterface::SupportImportStrategy, kSupportImportStrategy>();
  }
  Int SupportExportStrategy() const {
    return Invoke<&MediaConverterInterface::SupportExportStrategy, kSupportExportStrategy>();
  }
  ConverterBlock GetInputConverter() const {
    return Invoke<&MediaConverterInterface::GetInputConverter, kGetInputConverter>();
  }
  Result<void> AddOutputStream(const MediaStreamInterface& stream) const {
    return Invoke<&MediaConverterInterface::AddOutputStream, kAddOutputStream>(stream);
  }
  Result<void> RemoveOutputStream(const MediaStreamInterface& stream) const {
    return Invoke<&MediaConverterInterface::RemoveOutputStream, kRemoveOutputStream>(stream);
  }
  // The output streams; which is 0 from the import side and 1 from the export side.
  Result<BaseArray<MediaStream>> GetOutputStreams(Int which) const {
    return Invoke<&MediaConverterInterface::GetOutputStreams, kGetOutputStreams>(which);
  }
  Result<void> Analyze(const ConverterBlock& inputs, Int first, Int second) const {
    return Invoke<&MediaConverterInterface::Analyze, kAnalyze>(inputs, first, second);
  }
  Result<void> PrepareExecute(const ConverterBlock& inputs, Int first, Int second) const {
    return Invoke<&MediaConverterInterface::PrepareExecute, kPrepareExecute>(inputs, first, second);
  }
  Result<void> Execute(const ConverterBlock& inputs, const TimeValue& time, MEDIASESSIONFLAGS flags) const {
    return Invoke<&MediaConverterInterface::Execute, kExecute>(inputs, time, flags);
  }
  Result<void> Close(const ConverterBlock& inputs) const {
    return Invoke<&MediaConverterInterface::Close, kClose>(inputs);
  }
};
using MediaConverter = StrongRef<MediaConverterInterface>;

VORNA_DECLARED_INTERFACE(MediaInputInterface, MediaConverterInterface, "vorna.MediaInputInterface#1", refclass::STRONG);

extern ObjectUseRecord g_MediaConverterBaseClass;

}  // namespace vorna
