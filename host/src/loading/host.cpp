// Start and stop of the host, and module loading by name.
#include <dlfcn.h>

#include <mutex>

#include "classes/error_classes.h"
#include "loading/loader.h"
#include "loading/registries.h"
#include "media/color_profiles.h"
#include "media/pixel_format_objects.h"
#include "providers/host_services.h"
#include "providers/providers.h"
#include "runtime/job_pool.h"
#include "types/host_strings.h"
#include "types/reference_types.h"
#include "types/string_coders.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna/module.h"
#include "vorna_host.h"

namespace vorna::host {

namespace {

constexpr SourceLocation HOST_LOCATION{"host/host", 1, 0};

std::mutex g_mutex;
Int g_starts = 0;
HostOptions g_options;
LoadedModule* g_hostRecords = nullptr;

void RegisterProviders() {
  RegisterSystemProvider();
  RegisterClassProvider();
  RegisterExtensionPointProvider();
  RegisterStringProviders();
  RegisterSystemWindowsProvider();
  RegisterDataDictionaryProvider();
  RegisterDataTypeLibProvider();
  RegisterDataDescriptionProvider();
  RegisterUrlProvider();
  RegisterColorProfileProvider();
  RegisterThreadServicesProviders();
  RegisterLockServicesProvider();
}

// The host's own client layer needs its services before the loader can run, which
// itself allocates: its static interfaces are filled first, straight from the providers.
void ServeOwnClientLayer() {
  for (ModuleRecord* module = g_privateModules; module; module = module->nextModule)
    for (EntityRecord* import = module->imports; import; import = import->next)
      if (EntityKind(import->kind) == EntityKind::STATIC_INTERFACE)
        ResolveStaticInterface(static_cast<StaticInterfaceRecord*>(import));
}

}  // namespace

Result<void> Start(const HostOptions& options) {
  std::lock_guard lock(g_mutex);
  if (g_starts++ > 0) return OK;
  g_options = options;
  RegisterProviders();
  ServeOwnClientLayer();
  CreateRegistries();
  PublishReferenceTypes();
  PublishDataTypes();
  Result<LoadedModule*> own = AttachRecords(&g_privateModules, "host", nullptr);
  if (own.IsError()) return own.GetErrorResult();
  g_hostRecords = own.GetValue();
  CreateErrorClasses();
  PublishStringCoders();
  PublishColorProfiles();
  PublishPixelFormats();
  PublishPixelVocabulary();
  StartJobPool(0);
  return OK;
}

void Stop() {
  std::lock_guard lock(g_mutex);
  if (g_starts == 0 || --g_starts > 0) return;
  StopJobPool();
  DestroyErrorClasses();
  DetachAll();
  g_hostRecords = nullptr;
  ReleaseLiteralStrings();
  DestroyRegistries();
  ForgetBlockTypes();
  ClearProviders();
}

Bool IsStarted() { return g_starts > 0; }

void SetJobThreadCount(Int count) {
  StopJobPool();
  StartJobPool(count);
}

namespace {

// The library from the first directory that has it; the last dlerror otherwise.
void* OpenLibrary(const std::string& name) {
  size_t start = 0;
  for (;;) {
    size_t end = g_options.moduleDirectory.find(':', start);
    std::string directory = g_options.moduleDirectory.substr(start, end == std::string::npos ? end : end - start);
    void* library = dlopen((directory + "/" + name + ".so").c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library || end == std::string::npos) return library;
    start = end + 1;
  }
}

}  // namespace

Result<LoadedModule*> LoadModule(const std::string& name) {
  void* library = OpenLibrary(name);
  if (!library) {
    String message = FormatToString("Cannot load module @: @", name.c_str(), static_cast<const Char*>(dlerror()));
    return RaiseError(g_IoErrorObject, HOST_LOCATION, &message);
  }
  auto* list = static_cast<ModuleRecord**>(dlsym(library, "g_privateModules"));
  if (!list) {
    dlclose(library);
    String message = FormatToString("@ is not a module: it has no g_privateModules.", name.c_str());
    return RaiseError(g_IllegalStateErrorObject, HOST_LOCATION, &message);
  }
  Result<LoadedModule*> loaded = AttachRecords(list, name, library);
  if (loaded.IsError()) dlclose(library);
  return loaded;
}

void UnloadModule(LoadedModule* module) { DetachRecords(module); }

Result<void> AttachClientRecords(ModuleRecord** list) {
  Result<LoadedModule*> attached = AttachRecords(list, "client", nullptr);
  return attached.IsError() ? Result<void>(attached.GetErrorResult()) : OK;
}

}  // namespace vorna::host
