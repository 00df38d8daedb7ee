#include "vorna/translationunit.h"

#include <gtest/gtest.h>

#include "host_environment.h"
#include "test_module/greeter.h"
#include "vorna/component.h"
#include "vorna/extensionpoint.h"

namespace vorna {
namespace {

using tessel::testing::Console;
using tessel::testmodule::GREETER_CLASS_ID;
using tessel::testmodule::GreeterInterface;

// An interface that nothing implements.
class AbsentInterface : public ObjectInterface {
 public:
  static constexpr const Char* ID = "net.vorna.test.AbsentInterface#1";
  static constexpr Int COUNT = 1;
  static constexpr UInt32 REFCLASS = refclass::STRONG;
  enum : Int { kPing };
  static InterfaceRecord _record;
  using ObjectInterface::ObjectInterface;
  Result<Int> Ping() const { return Invoke<&AbsentInterface::Ping, kPing>(); }
};
VORNA_DEFINE_INTERFACE(AbsentInterface, &ObjectInterface::_record);

class ModuleClassTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Result<vorna::host::LoadedModule*> loaded = vorna::host::LoadModule("net.vorna.test.greeter");
    ASSERT_FALSE(loaded.IsError());
    _module = loaded.GetValue();
  }
  void TearDown() override { vorna::host::UnloadModule(_module); }

  static ClassHandle* FindClass(const Char* id) {
    return GetClassFromData(ExtensionPoint::FindEntry(ExtensionPoint::Find(Id("vorna.Classes")), Id(id)));
  }

  static ObjectRef MakeGreeter() {
    Result<ObjectRef> made = CreateObjectOfClass(FindClass(GREETER_CLASS_ID), VORNA_SOURCE_LOCATION);
    EXPECT_FALSE(made.IsError());
    return made.IsError() ? ObjectRef() : made.GetValue();
  }

  vorna::host::LoadedModule* _module = nullptr;
};

TEST_F(ModuleClassTest, ClassStandsUnderItsJoinedIdOnly) {
  EXPECT_NE(FindClass(GREETER_CLASS_ID), nullptr);
  EXPECT_EQ(FindClass("net.vorna.test.greeter"), nullptr);
}

TEST_F(ModuleClassTest, ObjectAnswersThroughItsMethodTableAndForwardsToItsBase) {
  ObjectRef object = MakeGreeter();

  GreeterInterface greeter = Cast<GreeterInterface>(object);
  ASSERT_TRUE(greeter);
  EXPECT_EQ(greeter.Greet(2), 2);
  EXPECT_EQ(greeter.Greet(3), 5);
  EXPECT_EQ(greeter.GetGreetings(), 5);

  ErrorInterface asError = Cast<ErrorInterface>(object);
  ASSERT_TRUE(asError);
  String hello;
  ASSERT_FALSE(hello.SetCString("hello").IsError());
  asError.SetMessage(hello);
  Result<CString> text = asError.GetMessage().GetCString();
  EXPECT_STREQ(text.GetValue().GetCString(), "greeter: hello");
}

TEST_F(ModuleClassTest, InterfaceTestFailsForAnInterfaceTheClassLacks) {
  AbsentInterface absent = Cast<AbsentInterface>(MakeGreeter());
  EXPECT_FALSE(absent);
  Result<Int> ping = absent.Ping();
  EXPECT_TRUE(IsErrorOfClass(ping.GetError(), g_NullptrErrorObject)) << "a null reference never reaches code";
}

TEST_F(ModuleClassTest, CopyOfAComponentWithMembersAndNoCopyFromIsReported) {
  ObjectRef greeter = MakeGreeter();
  ASSERT_TRUE(greeter);
  Console::Clear();
  Result<void*> copy = Class::CloneObject(greeter.GetPointer(), VORNA_SOURCE_LOCATION);
  ASSERT_TRUE(copy.IsError());
  EXPECT_TRUE(IsErrorOfClass(copy.GetError(), g_FunctionNotImplementedErrorObject));
  auto lines = Console::Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].rfind("CRITICAL: Component net.vorna.test.greeter.GreeterImpl has members, but CopyFrom is not "
                           "implemented! [",
                           0),
            0u);
  EXPECT_EQ(lines[1].rfind("CRITICAL: Stop [", 0), 0u);
}

}  // namespace
}  // namespace vorna
