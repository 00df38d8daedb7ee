// Observers and observables: objects that send and receive notifications, the
// combiners that fold the answers of several observers into one, and the classes and
// components they are built of. This code sends and receives no notifications; the
// interfaces are declared so that everything derived from them keeps its slots.
#pragma once

#include "vorna/objectbase.h"
#include "vorna/objectuse.h"

namespace vorna {

VORNA_DECLARED_INTERFACE(ObserverObjectInterface, ObjectInterface, "vorna.ObserverObjectInterface#1", refclass::STRONG,
                         kAddSenderSignal, kRemoveSenderSignal, kGetName, kSetName, kObserverDestroyed,
                         kObserverDisconnectNotify, kObserverConnectNotify);

VORNA_DECLARED_INTERFACE(ObservableBaseInterface, ObjectInterface, "vorna.ObservableBaseInterface#1", refclass::STRONG,
                         kInit, kGetObservableId, k_intDisconnectAll, kAddObserver, kNotify, kRemoveObserver,
                         kSetInverseNotification, kGetObserverCount, kGetOwner);

VORNA_DECLARED_INTERFACE(CombinerInterface, ObjectInterface, "vorna.CombinerInterface#1", refclass::STRONG,
                         kInitCombine, kCombineResult);

VORNA_DECLARED_STATIC_INTERFACE(ObservableStaticInterface, "vorna.ObservableStaticInterface#1", 1);

extern ObjectUseRecord g_ObservableClass;
extern ObjectUseRecord g_ObserverObjectClass;
extern ObjectUseRecord g_ObservableCombinerRunAllAggregateErrorsComponent;
extern ObjectUseRecord g_ObservableCombinerRunAllBoolOrComponent;
extern ObjectUseRecord g_ObservableCombinerRunAllBoolUntilFalse;
extern ObjectUseRecord g_ObservableCombinerRunAllBoolUntilTrue;
extern ObjectUseRecord g_ObservableCombinerRunAllComponent;
extern ObjectUseRecord g_ObservableCombinerRunAllEnumFlagsOrComponent;

}  // namespace vorna
