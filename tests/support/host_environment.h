// A test environment with the host started and serving the test executable's own
// client layer, and the console captured, so tests can read what was output.
#pragma once

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <vector>

#include "vorna_host.h"

namespace tessel::testing {

class Console {
 public:
  static void Clear();
  static std::vector<std::string> Lines();
  static std::string Text();
  static void Append(const char* line);
};

class HostEnvironment : public ::testing::Environment {
 public:
  void SetUp() override;
  void TearDown() override;
};

// Where the build puts modules and test modules.
std::string ModuleDirectory();
std::string TestModuleDirectory();

}  // namespace tessel::testing
