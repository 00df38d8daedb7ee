// The registered memory blobs, by name, behind one lock. They live as long as the
// process, independent of the host's start and stop.
#include <map>
#include <mutex>

#include "io/io_memory.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

std::mutex g_mutex;
std::map<std::string, MemoryBlob, std::less<>> g_blobs;

}  // namespace

MemoryBlob FindMemoryBlob(const std::string& name) {
  std::lock_guard lock(g_mutex);
  auto found = g_blobs.find(name);
  return found == g_blobs.end() ? nullptr : found->second;
}

void RegisterMemoryBlob(const std::string& name, std::vector<UChar> bytes) {
  auto blob = std::make_shared<const std::vector<UChar>>(std::move(bytes));
  std::lock_guard lock(g_mutex);
  g_blobs[name] = std::move(blob);
}

Bool UnregisterMemoryBlob(const std::string& name) {
  MemoryBlob removed;  // freed, if it was the last holder, after the lock is left
  std::lock_guard lock(g_mutex);
  auto found = g_blobs.find(name);
  if (found == g_blobs.end()) return false;
  removed = std::move(found->second);
  g_blobs.erase(found);
  return true;
}

}  // namespace vorna::host
