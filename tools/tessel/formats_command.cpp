// tessel formats: the file formats, handlers and savers that the loaded modules
// registered, and the suffixes each file format names.
#include <cstdio>
#include <string>
#include <vector>

#include "commands.h"
#include "host_text.h"
#include "session.h"
#include "vorna/datatypelib.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/mediasession_keys.h"
#include "vorna/referencedata.h"

namespace tessel::cli {

namespace {

// The common suffixes of the file format member, joined by blanks; empty when it names
// none.
std::string SuffixesOf(const std::string& member) {
  vorna::ExtensionPointHandle* formats = vorna::ExtensionPoint::Find(vorna::Id("vorna.FileFormats"));
  const vorna::Data* entry = vorna::ExtensionPoint::FindEntry(formats, vorna::Id(member.c_str()));
  vorna::StrongRef<vorna::FileFormatInterface> format = vorna::GetObjectFromData<vorna::FileFormatInterface>(entry);
  if (!format) return "";
  vorna::Result<vorna::Data> suffixes = format.GetData(vorna::g_fileFormatCommonsuffixes);
  if (suffixes.IsError()) return "";
  std::string text;
  for (const vorna::String& suffix : vorna::GetBlockFromData<vorna::String>(suffixes.GetValue()))
    text += (text.empty() ? "" : " ") + ToStdString(suffix);
  return text;
}

void PrintRegistry(const char* title, const char* registry, bool withSuffixes) {
  std::vector<std::string> members = vorna::host::ListRegistry(registry);
  std::printf("%s (%s):\n", title, registry);
  if (members.empty()) std::printf("  none\n");
  for (const std::string& member : members) {
    std::string suffixes = withSuffixes ? SuffixesOf(member) : std::string();
    if (suffixes.empty()) {
      std::printf("  %s\n", member.c_str());
    } else {
      std::printf("  %-28s  suffixes: %s\n", member.c_str(), suffixes.c_str());
    }
  }
}

}  // namespace

int RunFormats(const Options& options) {
  Failure failure;
  Session session;
  if (!options.arguments.empty()) return Report(UsageFailure("formats takes no arguments"));
  if (!session.Open(options, failure)) return Report(failure);
  PrintRegistry("file formats", "vorna.FileFormats", true);
  PrintRegistry("file format handlers", "vorna.FileFormatHandlers", false);
  PrintRegistry("savers", "vorna.ImageSavers", false);
  return kExitOk;
}

}  // namespace tessel::cli
