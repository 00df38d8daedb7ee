#include "vorna/translationunit.h"

#include "fuzz_host.h"

#include <cstdio>
#include <cstdlib>

#include "vorna_host.h"

// The fuzz target's own record: the host serves its copy of the client layer.
VORNA_MODULE("net.vorna.fuzz", "net.vorna.core.framework", "net.vorna.image.framework");

namespace tessel::fuzz {

void StartHostWithModule() {
  vorna::host::SetConsoleSink([](const char*) {});
  if (vorna::host::StartWithClient({TESSEL_MODULE_DIR}).IsError() ||
      vorna::host::LoadModule("net.vorna.tessel_reel").IsError()) {
    std::fprintf(stderr, "fuzz: the host did not start or the media module did not load from %s\n", TESSEL_MODULE_DIR);
    std::exit(1);
  }
  // The host stops before the process ends: its worker threads are joined and what it
  // holds is given back before the leak check looks.
  std::atexit([] { vorna::host::Stop(); });
}

}  // namespace tessel::fuzz
