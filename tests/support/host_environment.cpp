#include "host_environment.h"

namespace tessel::testing {

namespace {
std::mutex g_mutex;
std::vector<std::string> g_lines;
}  // namespace

void Console::Clear() {
  std::lock_guard lock(g_mutex);
  g_lines.clear();
}

std::vector<std::string> Console::Lines() {
  std::lock_guard lock(g_mutex);
  return g_lines;
}

std::string Console::Text() {
  std::string text;
  for (const auto& line : Lines()) text += line;
  return text;
}

void Console::Append(const char* line) {
  std::lock_guard lock(g_mutex);
  g_lines.emplace_back(line);
}

std::string ModuleDirectory() { return TESSEL_MODULE_DIR; }
std::string TestModuleDirectory() { return TESSEL_TEST_MODULE_DIR; }

void HostEnvironment::SetUp() {
  vorna::host::SetConsoleSink(&Console::Append);
  vorna::host::HostOptions options{ModuleDirectory() + ":" + TestModuleDirectory()};
  ASSERT_FALSE(vorna::host::StartWithClient(options).IsError());
}

void HostEnvironment::TearDown() {
  vorna::host::Stop();
  vorna::host::SetConsoleSink(nullptr);
}

}  // namespace tessel::testing
