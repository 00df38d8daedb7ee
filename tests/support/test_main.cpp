// The main of every test program that runs on the host: the executable's own module
// record and the host environment around all tests.
#include "vorna/translationunit.h"

#include "host_environment.h"

VORNA_MODULE("net.vorna.test.client", "net.vorna.core.framework");

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  ::testing::AddGlobalTestEnvironment(new tessel::testing::HostEnvironment);
  return RUN_ALL_TESTS();
}
