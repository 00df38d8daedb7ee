// The roots of the media session's interfaces: observers and hierarchies (declared so
// that everything derived from them keeps its slots; this code calls none of their
// methods), the media base of every converter and stream, and the session itself.
#pragma once

#include "vorna/datadescription.h"
#include "vorna/datadictionaryobject.h"
#include "vorna/hierarchyobject.h"

namespace vorna {

// Bits of the flags of Execute: FORCE delivers a frame that was delivered already.
using MEDIASESSIONFLAGS = UInt32;
inline constexpr MEDIASESSIONFLAGS MEDIASESSIONFLAGS_FORCE = 2;

VORNA_DECLARED_INTERFACE(MediaSessionInterface, ObserverObjectInterface, "vorna.MediaSessionInterface#1", refclass::STRONG,
                         kConnectMediaConverter, kConvert, kClose, kGetProgress);
VORNA_DECLARED_INTERFACE(MediaSessionProgressInterface, ObserverObjectInterface, "vorna.MediaSessionProgressInterface#1", refclass::STRONG,
                         kInitProgress, kAddProgressJob, kSetProgressAndCheckBreak,
                         kObservableProgressNotification);

// Converters and streams: a dictionary of properties, a description of settings, and
// the session they belong to. Second base: vorna.DataDescriptionObjectInterface#1.
class MediaBaseInterface : public DataDictionaryObjectInterface {
 public:
  static constexpr const Char* ID = "vorna.MediaBaseInterface#1";
  static constexpr Int COUNT = 2;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kConnectToSession, kGetSession };
  static InterfaceRecord _record;
  using DataDictionaryObjectInterface::DataDictionaryObjectInterface;

  Result<void> ConnectToSession(const ObjectInterface& session) const {
    return Invoke<&MediaBaseInterface::ConnectToSession, kConnectToSession>(session);
  }
  ObjectInterface GetSession() const { return Invoke<&MediaBaseInterface::GetSession, kGetSession>(); }

  DataDescriptionObjectInterface AsDescriptionObject() const { return Cast<DataDescriptionObjectInterface>(*this); }
};

extern ObjectUseRecord g_MediaBaseClass;
extern ObjectUseRecord g_MediaSessionObject;
extern ObjectUseRecord g_MediaSessionProgressObject;

}  // namespace vorna
