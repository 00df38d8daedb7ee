// Machines: the local one and others reached over a connection, each with a
// dictionary of facts about it whose keys are the machine info ids.
#pragma once

#include "vorna/observable.h"
#include "vorna/records.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(MachineInterface, ObserverObjectInterface, "vorna.MachineInterface#1", refclass::STRONG,
                         kGetUniqueId, kGetMachineInfo, kGetInterface, kGetState, kSetState, kToString,
                         kObservableMessageReceived);

VORNA_DECLARED_STATIC_INTERFACE(MachinesInterface, "vorna.MachinesInterface#1", 6);

extern ObjectUseRecord g_LocalMachineClass;

extern InternedId g_machineinfoComputername;
extern InternedId g_machineinfoUsername;
extern InternedId g_machineinfoOsversion;
extern InternedId g_machineinfoUserId;
extern InternedId g_machineinfoEffectiveUserId;
extern InternedId g_machineinfoGroupId;
extern InternedId g_machineinfoEffectiveGroupId;
extern InternedId g_machineinfoProcessortype;
extern InternedId g_machineinfoProcessorname;
extern InternedId g_machineinfoProcessorfeatures;
extern InternedId g_machineinfoProcessorfreqmhz;
extern InternedId g_machineinfoProcessorarchitecture;
extern InternedId g_machineinfoNumberofprocessors;
extern InternedId g_machineinfoNumberofphysicalcores;
extern InternedId g_machineinfoSupportavx;
extern InternedId g_machineinfoSupportavx2;
extern InternedId g_machineinfoSupportsse2;
extern InternedId g_machineinfoSupportsse3;
extern InternedId g_machineinfoSupportsse41;
extern InternedId g_machineinfoSupportsse42;
extern InternedId g_machineinfoSupportfma;
extern InternedId g_machineinfoSupportaes;
extern InternedId g_machineinfoSupportpclmulqdq;
extern InternedId g_machineinfoPhysicalmemory;

}  // namespace vorna
