// A small module for the host's tests: one class on a host base class (the error
// object class), adding the greeter interface and overriding one method of the base.
#include "vorna/translationunit.h"

#include "greeter.h"
#include "vorna/component.h"
#include "vorna/configuration.h"

VORNA_MODULE("net.vorna.test.greeter", "net.vorna.core.framework");

namespace tessel::testmodule {

VORNA_DEFINE_INTERFACE(GreeterInterface, &vorna::ObjectInterface::_record);
VORNA_DEFINE_OBJECT_USE(g_errorObjectClass, "vorna.ErrorObjectClass");

// Has a field and no CopyFrom, so copying it is reported.
class GreeterImpl : public vorna::Component<GreeterImpl> {
 public:
  static vorna::ClassRecord _classRecord;

  vorna::Int Greet(vorna::Int times) { return _greetings += times; }
  vorna::Int GetGreetings() const { return _greetings; }

  // The base's message, behind "greeter: ".
  vorna::String GetMessage() const {
    vorna::String text = vorna::String::FromLiteral("greeter: ");
    text.Append(Super<&vorna::ErrorInterface::GetMessage, vorna::ErrorInterface::kGetMessage>());
    return text;
  }

 private:
  vorna::Int _greetings = 0;
};

// Two start-up stages that say what they do, the second of which can be made to fail.
VORNA_CONFIG_BOOL(g_greeterFailSecondStage, false, "makes the greeter module's second stage fail");

namespace {

vorna::Result<void> FirstUp() {
  vorna::DiagnosticOutput(vorna::OUTPUT_DIAGNOSTIC, "greeter stage 1 up", __LINE__, __FILE__);
  return vorna::OK;
}
void FirstDown() { vorna::DiagnosticOutput(vorna::OUTPUT_DIAGNOSTIC, "greeter stage 1 down", __LINE__, __FILE__); }
vorna::Result<void> SecondUp() {
  if (!g_greeterFailSecondStage) return vorna::OK;
  vorna::DiagnosticOutput(vorna::OUTPUT_DIAGNOSTIC, "greeter stage 2 failing", __LINE__, __FILE__);
  return vorna::CreateError(VORNA_SOURCE_LOCATION, 3);
}
void SecondDown() { vorna::DiagnosticOutput(vorna::OUTPUT_DIAGNOSTIC, "greeter stage 2 down", __LINE__, __FILE__); }

VORNA_INITIALIZATION_STAGE(g_firstStage, "first", &FirstUp, &FirstDown);
VORNA_INITIALIZATION_STAGE(g_secondStage, "second", &SecondUp, &SecondDown);

}  // namespace

VORNA_COMPONENT_CLASS(GreeterImpl, g_greeterClass, "net.vorna.test.greeter", ".GreeterImpl", &g_errorObjectClass,
                      &GreeterInterface::_record, VORNA_OVERRIDE(GreeterInterface, Greet),
                      VORNA_OVERRIDE(GreeterInterface, GetGreetings), VORNA_OVERRIDE(vorna::ErrorInterface, GetMessage));

}  // namespace tessel::testmodule
