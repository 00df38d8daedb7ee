#include "runtime/configuration_registry.h"

#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "loading/loader.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

std::mutex g_mutex;
struct Registered {
  ConfigurationEntry* entry;
  const LoadedModule* owner;
};
std::vector<Registered> g_entries;
std::map<std::string, Bool> g_presets;

Bool ParseBool(const std::string& text, Bool& value) {
  if (text == "true" || text == "1") return value = true, true;
  if (text == "false" || text == "0") return value = false, true;
  return false;
}

}  // namespace

void RegisterConfiguration(ConfigurationEntry* entry) {
  std::lock_guard lock(g_mutex);
  g_entries.push_back({entry, CurrentlyLoading()});
  auto preset = g_presets.find(entry->name);
  if (preset != g_presets.end() && entry->type == CONFIGURATION_TYPE_BOOL)
    *static_cast<Bool*>(entry->address) = preset->second;
}

void ForgetConfigurations(const LoadedModule* module) {
  std::lock_guard lock(g_mutex);
  std::erase_if(g_entries, [&](const Registered& r) { return r.owner == module; });
}

Bool SetConfiguration(const std::string& name, const std::string& text) {
  Bool value;
  if (!ParseBool(text, value)) return false;
  std::lock_guard lock(g_mutex);
  g_presets[name] = value;
  for (const Registered& r : g_entries)
    if (name == r.entry->name && r.entry->type == CONFIGURATION_TYPE_BOOL) *static_cast<Bool*>(r.entry->address) = value;
  return true;
}

std::vector<ConfigurationInfo> ListConfiguration() {
  std::lock_guard lock(g_mutex);
  std::vector<ConfigurationInfo> list;
  for (const Registered& r : g_entries) {
    ConfigurationEntry* entry = r.entry;
    Bool seen = false;
    for (auto& info : list) seen = seen || info.name == entry->name;
    if (!seen) list.push_back({entry->name, entry->help ? entry->help : "", *static_cast<Bool*>(entry->address)});
  }
  return list;
}

}  // namespace vorna::host
