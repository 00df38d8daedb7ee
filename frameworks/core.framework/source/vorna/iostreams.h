// Byte streams of the io handlers. vorna.BaseStreamInterface#1 is what every stream
// has: length, position, absolute seek, close. Input streams add reading, output
// streams writing. Positions and lengths are 64-bit byte counts.
//
// A stream is used by one thread at a time; whoever shares one keeps to that. Close
// may be called more than once; a stream that is released without Close is closed then.
#pragma once

#include "vorna/baseref.h"
#include "vorna/datadictionaryobject.h"

namespace vorna {

class BaseStreamInterface : public DataDictionaryObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.BaseStreamInterface#1";
  static constexpr Int COUNT = 6;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kGetStreamLength, kGetPosition, kClose, kSeekSupported, kSeek, kDisableBuffering };
  static InterfaceRecord _record;
  using DataDictionaryObjectInterface::DataDictionaryObjectInterface;

  // The length in bytes; an error for a stream that cannot tell it.
  Result<Int64> GetStreamLength() const { return Invoke<&BaseStreamInterface::GetStreamLength, kGetStreamLength>(); }
  Result<Int64> GetPosition() const { return Invoke<&BaseStreamInterface::GetPosition, kGetPosition>(); }
  // Gives the stream's resources back; later reads and writes fail. A second Close
  // does nothing.
  Result<void> Close() const { return Invoke<&BaseStreamInterface::Close, kClose>(); }
  Bool SeekSupported() const { return Invoke<&BaseStreamInterface::SeekSupported, kSeekSupported>(); }
  // Moves to an absolute position; a position behind the end is allowed and reads
  // nothing there.
  Result<void> Seek(Int64 position) const { return Invoke<&BaseStreamInterface::Seek, kSeek>(position); }
  Result<void> DisableBuffering() const {
    return Invoke<&BaseStreamInterface::DisableBuffering, kDisableBuffering>();
  }
};

class InputStreamInterface : public BaseStreamInterface {
 public:
  static constexpr const Char* ID = "vorna.InputStreamInterface#1";
  static constexpr Int COUNT = 3;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kBytesAvailable, kReadEOS, kSkip };
  static InterfaceRecord _record;
  using BaseStreamInterface::BaseStreamInterface;

  // Bytes that can be read without waiting: for files and memory, up to the end.
  Result<Int64> BytesAvailable() const { return Invoke<&InputStreamInterface::BytesAvailable, kBytesAvailable>(); }
  // Reads up to count bytes into buffer and gives how many it read. Fewer than count
  // means the end was reached, 0 that the stream stands at its end; neither is an
  // error.
  Result<Int> ReadEOS(void* buffer, Int count) const {
    return Invoke<&InputStreamInterface::ReadEOS, kReadEOS>(buffer, count);
  }
  // Moves the position forward by count bytes.
  Result<void> Skip(Int64 count) const { return Invoke<&InputStreamInterface::Skip, kSkip>(count); }
};

class OutputStreamInterface : public BaseStreamInterface {
 public:
  static constexpr const Char* ID = "vorna.OutputStreamInterface#1";
  static constexpr Int COUNT = 2;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kWrite, kFlush };
  static InterfaceRecord _record;
  using BaseStreamInterface::BaseStreamInterface;

  // Writes all count bytes or fails.
  Result<void> Write(const void* buffer, Int count) const {
    return Invoke<&OutputStreamInterface::Write, kWrite>(buffer, count);
  }
  Result<void> Flush() const { return Invoke<&OutputStreamInterface::Flush, kFlush>(); }
};

using InputStreamRef = StrongRef<InputStreamInterface>;
using OutputStreamRef = StrongRef<OutputStreamInterface>;

VORNA_DECLARED_INTERFACE(InOutputStreamInterface, InputStreamInterface, "vorna.InOutputStreamInterface#1", refclass::STRONG);

VORNA_DECLARED_INTERFACE(WrappedStreamInterface, BaseStreamInterface, "vorna.WrappedStreamInterface#1", refclass::STRONG,
                         kSetStream, kGetStream);

VORNA_DECLARED_INTERFACE(WrappedInputStreamInterface, InputStreamInterface, "vorna.WrappedInputStreamInterface#1", refclass::STRONG);

VORNA_DECLARED_INTERFACE(IoDualInOutputStreamInterface, InOutputStreamInterface, "vorna.IoDualInOutputStreamInterface#1", refclass::STRONG,
                         kSetInputStream, kSetOutputStream, kGetInputStream, kGetOutputStream);

VORNA_DECLARED_INTERFACE(IoPipeInOutputStreamInterface, InOutputStreamInterface, "vorna.IoPipeInOutputStreamInterface#1", refclass::STRONG,
                         kGetReadHandle, kGetWriteHandle);

extern ObjectUseRecord g_InputStreamBaseClass;
extern ObjectUseRecord g_OutputStreamBaseClass;
extern ObjectUseRecord g_InOutputStreamBaseClass;
extern ObjectUseRecord g_InOutputStreamDualClass;
extern ObjectUseRecord g_InputStreamInterfaceFromBlock;
extern ObjectUseRecord g_WrappedInputStreamInterfaceFromStream;
extern ObjectUseRecord g_WrappedStreamComponent;

extern InternedId g_streamflagsHttpRemoteaddress;
extern InternedId g_streamflagsHttpHeader;

}  // namespace vorna
