#include "sessions/loader_search.h"

#include "vorna/errorbase.h"
#include "vorna/extensionpoint.h"
#include "vorna/fileformat.h"
#include "vorna/formatstring.h"
#include "vorna/referencedata.h"

namespace vorna::host {

namespace {

constexpr SourceLocation SEARCH_LOCATION{"host/readingsession", 1, 0};

struct Detected {
  std::string id;
  const void* format;
};

// The file formats that claim url, in registry order. A format whose Detect fails
// counts as not claiming it.
std::vector<Detected> DetectFormats(const Url& url) {
  std::vector<Detected> detected;
  ExtensionPointHandle* formats = ExtensionPoint::Find(Id("vorna.FileFormats"));
  for (Int i = 0; i < ExtensionPoint::GetCount(formats); ++i) {
    const Id* key = nullptr;
    StrongRef<FileFormatInterface> format =
        GetObjectFromData<FileFormatInterface>(ExtensionPoint::GetEntry(formats, i, &key));
    Result<Bool> claims = format ? format.Detect(url) : Result<Bool>(false);
    if (!claims.IsError() && claims.GetValue()) detected.push_back({key->GetCString(), format.GetPointer()});
  }
  return detected;
}

Bool Claimed(const std::vector<Detected>& detected, const void* format) {
  for (const Detected& d : detected)
    if (d.format == format) return true;
  return false;
}

// The handler of a claiming format with the highest GetDependends, and its member id.
StrongRef<FileFormatHandlerInterface> ChooseHandler(const std::vector<Detected>& detected, std::string& id) {
  StrongRef<FileFormatHandlerInterface> best;
  ExtensionPointHandle* handlers = ExtensionPoint::Find(Id("vorna.FileFormatHandlers"));
  for (Int i = 0; i < ExtensionPoint::GetCount(handlers); ++i) {
    const Id* key = nullptr;
    StrongRef<FileFormatHandlerInterface> handler =
        GetObjectFromData<FileFormatHandlerInterface>(ExtensionPoint::GetEntry(handlers, i, &key));
    if (!handler || !Claimed(detected, handler.GetFileFormat().GetPointer())) continue;
    if (!best || handler.GetDependends() > best.GetDependends()) {
      best = handler;
      id = key->GetCString();
    }
  }
  return best;
}

ErrorResult NoReader(const Url& url) {
  String message = FormatToString("No reader for @", url.ToString());
  return RaiseError(g_IoErrorObject, SEARCH_LOCATION, &message);
}

}  // namespace

Result<FoundLoader> FindLoader(const Url& url) {
  FoundLoader found;
  std::vector<Detected> detected = DetectFormats(url);
  for (const Detected& d : detected) found.detected.push_back(d.id);
  StrongRef<FileFormatHandlerInterface> handler = ChooseHandler(detected, found.handler);
  if (!handler) return NoReader(url);
  VORNA_ASSIGN_OR_RETURN(ObjectRef loader, handler.CreateHandler(url));
  found.loader = MediaConverter(Cast<MediaConverterInterface>(loader));
  if (!found.loader) return RaiseError(g_MediaSessionWrongTypeErrorObject, SEARCH_LOCATION);
  return found;
}

}  // namespace vorna::host
