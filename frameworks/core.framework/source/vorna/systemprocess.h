// Processes started by the program: the process object, the static interface that
// lists and starts them, and the errors of a killed process or a failed operation.
#pragma once

#include "vorna/errorbase.h"
#include "vorna/observable.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(SystemProcessObjectInterface, ObserverObjectInterface, "vorna.SystemProcessObjectInterface#1", refclass::STRONG,
                         kStartProcess, kKillProcess, kGetExitCode, kIsRunning, kGetProcessId,
                         kGetProcessHandle, kGetProcessUrl, kGetLogFile, kGetUserData, kGetLoadedDlls,
                         kObservableProcessFinished);

VORNA_DECLARED_INTERFACE(SystemProcessKilledErrorInterface, ErrorInterface, "vorna.SystemProcessKilledErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_INTERFACE(SystemProcessOperationErrorInterface, ErrorInterface, "vorna.SystemProcessOperationErrorInterface#1", refclass::COPY_ON_WRITE);

VORNA_DECLARED_STATIC_INTERFACE(SystemProcessInterface, "vorna.SystemProcessInterface#1", 6);

extern ObjectUseRecord g_SystemProcessObjectClass;
extern ObjectUseRecord g_SystemProcessKilledErrorObject;
extern ObjectUseRecord g_SystemProcessOperationErrorObject;

}  // namespace vorna
