// The interface of the test module's class: a greeter that counts its greetings.
#pragma once

#include "vorna/objectbase.h"

namespace tessel::testmodule {

class GreeterInterface : public vorna::ObjectInterface {
 public:
  static constexpr const vorna::Char* ID = "net.vorna.test.GreeterInterface#1";
  static constexpr vorna::Int COUNT = 2;
  static constexpr vorna::UInt32 REFCLASS = vorna::refclass::STRONG;
  enum : vorna::Int { kGreet, kGetGreetings };
  static vorna::InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;

  vorna::Int Greet(vorna::Int times) const { return Invoke<&GreeterInterface::Greet, kGreet>(times); }
  vorna::Int GetGreetings() const { return Invoke<&GreeterInterface::GetGreetings, kGetGreetings>(); }
};

inline constexpr const vorna::Char* GREETER_CLASS_ID = "net.vorna.test.greeter.GreeterImpl";

}  // namespace tessel::testmodule
