#include "tessel_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace tessel::testing {

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

[[noreturn]] void ExecInChild(const std::vector<std::string>& arguments, const std::string& directory) {
  std::vector<char*> argv;
  std::string binary = TESSEL_BINARY;
  argv.push_back(binary.data());
  std::vector<std::string> copies = arguments;
  for (std::string& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);
  int out = open((directory + "/.stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  int err = open((directory + "/.stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (out < 0 || err < 0 || chdir(directory.c_str()) != 0) _exit(127);
  dup2(out, 1);
  dup2(err, 2);
  execv(argv[0], argv.data());
  _exit(127);
}

}  // namespace

TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& directory) {
  TesselRun run;
  pid_t child = fork();
  if (child == 0) ExecInChild(arguments, directory);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return run;
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.out = ReadFile(directory + "/.stdout");
  run.err = ReadFile(directory + "/.stderr");
  return run;
}

std::vector<std::string> PatternModule() {
  return {"--modules", TESSEL_TEST_MODULE_DIR, "--module", "net.vorna.test.media"};
}

std::string MakeTempDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tessel-cli-XXXXXX").string();
  char* made = mkdtemp(pattern.data());
  return made ? std::string(made) : std::string();
}

}  // namespace tessel::testing
