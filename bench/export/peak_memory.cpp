// Runs a command and prints its peak resident memory in kilobytes on stderr as
// "peak_memory_kb N"; the command's own output goes where it would. Exits with the
// command's exit code. Usage: peak_memory COMMAND [ARGS...]
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: peak_memory COMMAND [ARGS...]\n");
    return 64;
  }
  pid_t child = fork();
  if (child == 0) {
    execvp(argv[1], argv + 1);
    _exit(127);
  }
  int status = 0;
  struct rusage usage {};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) return 1;
  std::fprintf(stderr, "peak_memory_kb %ld\n", usage.ru_maxrss);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 1;
}
