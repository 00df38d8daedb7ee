#include "vorna/translationunit.h"

#include "vorna/machine.h"

#include "vorna/resourceid.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(MachineInterface, &ObserverObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(MachinesInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_LocalMachineClass, "vorna.LocalMachineClass");

VORNA_DEFINE_RESOURCE_ID(g_machineinfoComputername, "vorna.machineinfo.computername");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoUsername, "vorna.machineinfo.username");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoOsversion, "vorna.machineinfo.osversion");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoUserId, "vorna.machineinfo.user_id");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoEffectiveUserId, "vorna.machineinfo.effective_user_id");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoGroupId, "vorna.machineinfo.group_id");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoEffectiveGroupId, "vorna.machineinfo.effective_group_id");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoProcessortype, "vorna.machineinfo.processortype");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoProcessorname, "vorna.machineinfo.processorname");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoProcessorfeatures, "vorna.machineinfo.processorfeatures");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoProcessorfreqmhz, "vorna.machineinfo.processorfreqmhz");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoProcessorarchitecture, "vorna.machineinfo.processorarchitecture");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoNumberofprocessors, "vorna.machineinfo.numberofprocessors");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoNumberofphysicalcores, "vorna.machineinfo.numberofphysicalcores");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportavx, "vorna.machineinfo.supportavx");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportavx2, "vorna.machineinfo.supportavx2");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportsse2, "vorna.machineinfo.supportsse2");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportsse3, "vorna.machineinfo.supportsse3");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportsse41, "vorna.machineinfo.supportsse41");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportsse42, "vorna.machineinfo.supportsse42");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportfma, "vorna.machineinfo.supportfma");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportaes, "vorna.machineinfo.supportaes");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoSupportpclmulqdq, "vorna.machineinfo.supportpclmulqdq");
VORNA_DEFINE_RESOURCE_ID(g_machineinfoPhysicalmemory, "vorna.machineinfo.physicalmemory");

}  // namespace vorna
