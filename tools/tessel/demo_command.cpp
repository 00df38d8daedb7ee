// tessel demo: loads the module through the host and shows what it registered.
#include <cstdio>

#include "commands.h"
#include "session.h"

namespace tessel::cli {

namespace {

void PrintList(const char* title, const std::vector<std::string>& items) {
  std::printf("  %s:\n", title);
  for (const auto& item : items) std::printf("    %s\n", item.c_str());
}

}  // namespace

int RunDemo(const Options& options) {
  Session session;
  std::string error;
  if (!session.Open(options, error)) {
    std::fprintf(stderr, "tessel: %s\n", error.c_str());
    return 2;
  }
  std::printf("Loaded %s from %s\n", MODULE_NAME, options.moduleDirectory.c_str());
  for (const auto& record : vorna::host::DescribeModule(session.Module())) {
    std::printf("module %s\n", record.id.c_str());
    if (!record.dependencies.empty()) PrintList("dependencies", record.dependencies);
    PrintList("translation units", record.translationUnits);
    if (!record.initStages.empty()) PrintList("init stages", record.initStages);
  }
  std::printf("configuration variables:\n");
  for (const auto& variable : vorna::host::ListConfiguration())
    std::printf("  %s = %s  (%s)\n", variable.name.c_str(), variable.value ? "true" : "false", variable.help.c_str());
  return 0;
}

}  // namespace tessel::cli
