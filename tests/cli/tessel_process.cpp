#include "tessel_process.h"

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <thread>
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

[[noreturn]] void Exec(const std::vector<std::string>& arguments, const std::string& directory) {
  std::vector<char*> argv;
  std::string binary = TESSEL_BINARY;
  argv.push_back(binary.data());
  std::vector<std::string> copies = arguments;
  for (std::string& argument : copies) argv.push_back(argument.data());
  argv.push_back(nullptr);
  if (chdir(directory.c_str()) != 0) _exit(127);
  execv(argv[0], argv.data());
  _exit(127);
}

// The output goes to two files in the directory, which keeps them out of its listing
// only by their leading dot. A session of its own leaves the child without a
// controlling terminal.
[[noreturn]] void ExecInChild(const std::vector<std::string>& arguments, const std::string& directory) {
  int in = open("/dev/null", O_RDONLY);
  int out = open((directory + "/.stdout").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  int err = open((directory + "/.stderr").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
  if (in < 0 || out < 0 || err < 0 || setsid() < 0) _exit(127);
  dup2(in, 0);
  dup2(out, 1);
  dup2(err, 2);
  Exec(arguments, directory);
}

// What the child wrote, and its exit code from status (-1 when it did not exit).
TesselRun Collected(int status, const std::string& directory) {
  TesselRun run;
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  run.out = ReadFile(directory + "/.stdout");
  run.err = ReadFile(directory + "/.stderr");
  return run;
}

}  // namespace

TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& directory) {
  pid_t child = fork();
  if (child == 0) ExecInChild(arguments, directory);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child) return TesselRun{};
  return Collected(status, directory);
}

TesselRun RunTesselAndInterrupt(const std::vector<std::string>& arguments, const std::string& directory,
                                const std::function<bool(const std::string&)>& ready) {
  pid_t child = fork();
  if (child == 0) ExecInChild(arguments, directory);
  if (child < 0) return TesselRun{};
  int status = 0;
  for (int tries = 0; tries < 12000 && !ready(directory); ++tries) {
    if (waitpid(child, &status, WNOHANG) == child) return Collected(status, directory);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  kill(child, SIGINT);
  if (waitpid(child, &status, 0) != child) return TesselRun{};
  return Collected(status, directory);
}

TesselRun RunTesselOnTerminal(const std::vector<std::string>& arguments, const std::string& directory,
                              const std::vector<TerminalAnswer>& answers) {
  TesselRun run;
  int terminal = -1;
  pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) Exec(arguments, directory);
  if (child < 0) return run;
  size_t next = 0;
  size_t searchFrom = 0;
  char buffer[4096];
  pollfd waiting{terminal, POLLIN, 0};
  while (poll(&waiting, 1, 60000) > 0) {
    ssize_t got = read(terminal, buffer, sizeof buffer);
    if (got <= 0) break;
    run.out.append(buffer, size_t(got));
    for (size_t at; next < answers.size() && (at = run.out.find(answers[next].prompt, searchFrom)) != std::string::npos;
         ++next) {
      searchFrom = at + answers[next].prompt.size();
      std::string typed = answers[next].answer + "\n";
      if (write(terminal, typed.data(), typed.size()) != ssize_t(typed.size())) break;
    }
  }
  kill(child, SIGKILL);
  close(terminal);
  int status = 0;
  if (waitpid(child, &status, 0) == child && WIFEXITED(status)) run.exitCode = WEXITSTATUS(status);
  return run;
}

std::vector<std::string> PatternModule() {
  return {"--modules", TESSEL_TEST_MODULE_DIR, "--module", "net.vorna.test.media"};
}

std::vector<std::string> MediaAndTestModules() {
  return {"--modules", std::string(TESSEL_MODULE_DIR) + ":" + TESSEL_TEST_MODULE_DIR, "--module",
          "net.vorna.tessel_reel", "--module", "net.vorna.test.media"};
}

std::string MakeTempDirectory() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tessel-cli-XXXXXX").string();
  char* made = mkdtemp(pattern.data());
  return made ? std::string(made) : std::string();
}

std::vector<std::string> FilesWritten(const std::string& directory) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    std::string name = entry.path().filename().string();
    if (name != ".stdout" && name != ".stderr") names.push_back(name);
  }
  return names;
}

}  // namespace tessel::testing
