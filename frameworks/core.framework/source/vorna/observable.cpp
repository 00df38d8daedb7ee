#include "vorna/translationunit.h"

#include "vorna/observable.h"

namespace vorna {

VORNA_DEFINE_INTERFACE(ObserverObjectInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(ObservableBaseInterface, &ObjectInterface::_record);

VORNA_DEFINE_INTERFACE(CombinerInterface, &ObjectInterface::_record);

VORNA_DEFINE_DECLARED_STATIC_INTERFACE(ObservableStaticInterface, nullptr);

VORNA_DEFINE_OBJECT_USE(g_ObservableClass, "vorna.ObservableClass");
VORNA_DEFINE_OBJECT_USE(g_ObserverObjectClass, "vorna.ObserverObjectClass");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllAggregateErrorsComponent, "vorna.ObservableCombinerRunAllAggregateErrorsComponent");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllBoolOrComponent, "vorna.ObservableCombinerRunAllBoolOrComponent");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllBoolUntilFalse, "vorna.ObservableCombinerRunAllBoolUntilFalse");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllBoolUntilTrue, "vorna.ObservableCombinerRunAllBoolUntilTrue");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllComponent, "vorna.ObservableCombinerRunAllComponent");
VORNA_DEFINE_OBJECT_USE(g_ObservableCombinerRunAllEnumFlagsOrComponent, "vorna.ObservableCombinerRunAllEnumFlagsOrComponent");

VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllAggregateErrorsComponentUse, "vorna/observable", "vorna.ObservableCombinerRunAllAggregateErrorsComponent");
VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllBoolOrComponentUse, "vorna/observable", "vorna.ObservableCombinerRunAllBoolOrComponent");
VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllBoolUntilFalseUse, "vorna/observable", "vorna.ObservableCombinerRunAllBoolUntilFalse");
VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllBoolUntilTrueUse, "vorna/observable", "vorna.ObservableCombinerRunAllBoolUntilTrue");
VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllComponentUse, "vorna/observable", "vorna.ObservableCombinerRunAllComponent");
VORNA_DEFINE_CLASS_USE(g_ObservableCombinerRunAllEnumFlagsOrComponentUse, "vorna/observable", "vorna.ObservableCombinerRunAllEnumFlagsOrComponent");

}  // namespace vorna
