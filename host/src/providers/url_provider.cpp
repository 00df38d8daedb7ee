// vorna.UrlInterface#1 as the host serves it: a block of a scheme and a UTF-8 path.
// A null block is the static empty url.
#include <strings.h>
#include <unistd.h>

#include <cctype>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "providers/host_services.h"
#include "providers/providers.h"
#include "vorna/errorbase.h"
#include "vorna/formatstring.h"
#include "vorna/url.h"

namespace vorna::host {

namespace {

constexpr SourceLocation URL_LOCATION{"host/url", 1, 0};

struct UrlBlock {
  Id scheme;
  std::string path;
};

const UrlBlock g_emptyUrl;

const UrlBlock& Read(const void* block) { return block ? *static_cast<const UrlBlock*>(block) : g_emptyUrl; }
UrlBlock& Write(void* block) { return *static_cast<UrlBlock*>(block); }

void* UrlAlloc(const SourceLocation& location) {
  void* block = System::AllocCounted(sizeof(UrlBlock), location);
  return block ? new (block) UrlBlock() : nullptr;
}

void UrlFree(void* block) {
  static_cast<UrlBlock*>(block)->~UrlBlock();
  System::FreeCounted(block);
}

void* UrlClone(const void* source, const SourceLocation& location) {
  void* block = UrlAlloc(location);
  if (block) Write(block) = Read(source);
  return block;
}

const Id* const KNOWN_SCHEMES[] = {
    &URLSCHEME_HANDLER, &URLSCHEME_FILE,  &URLSCHEME_AUTHORITY, &URLSCHEME_RELATIVE,     &URLSCHEME_VOLUME,
    &URLSCHEME_NETWORK, &URLSCHEME_STORAGE, &URLSCHEME_ZIP,     &URLSCHEME_GZIP,         &URLSCHEME_MEMORY,
    &URLSCHEME_TCP,     &URLSCHEME_WEBSOCKET, &URLSCHEME_WEBSOCKETSECURE, &URLSCHEME_HTTP, &URLSCHEME_HTTPS,
    &URLSCHEME_FTP,     &URLSCHEME_SFTP,  &URLSCHEME_PERFORCE,  &URLSCHEME_CRYPTO,       &URLSCHEME_CACHE,
    &URLSCHEME_PIPE,    &URLSCHEME_STDOUT, &URLSCHEME_STDERR,   &URLSCHEME_STDIN,        &URLSCHEME_APKASSET};

// A letter, then letters, digits, '+', '-' or '.'.
Bool IsSchemeName(std::string_view text) {
  if (text.empty() || !std::isalpha(UChar(text[0]))) return false;
  for (Char c : text)
    if (!std::isalnum(UChar(c)) && c != '+' && c != '-' && c != '.') return false;
  return true;
}

// The known schemes borrow their literal; others get an id of their own.
Bool SetScheme(UrlBlock& url, std::string_view text) {
  for (const Id* known : KNOWN_SCHEMES)
    if (text == std::string_view(known->GetCString(), size_t(known->GetLength()))) {
      url.scheme = *known;
      return true;
    }
  return url.scheme.Init(text.data(), Int(text.size()));
}

// A relative plain path is taken against the working directory.
std::string AbsolutePath(std::string_view path) {
  if (path.starts_with('/')) return std::string(path);
  Char directory[4096];
  if (!getcwd(directory, sizeof(directory))) return std::string(path);
  std::string absolute = directory;
  if (!absolute.ends_with('/')) absolute += '/';
  return absolute.append(path);
}

void DropTrailingSlashes(std::string& path) {
  while (path.size() > 1 && path.back() == '/') path.pop_back();
}

Result<void> Set(void* block, const Char* text, Int length) {
  UrlBlock& url = Write(block);
  std::string_view whole(text, size_t(length));
  size_t separator = whole.find("://");
  url.scheme.Reset();
  url.path.clear();
  if (separator != std::string_view::npos && IsSchemeName(whole.substr(0, separator))) {
    if (!SetScheme(url, whole.substr(0, separator))) return CreateError(URL_LOCATION, 0);
    url.path = whole.substr(separator + 3);
  } else if (!whole.empty()) {
    url.scheme = URLSCHEME_FILE;
    url.path = AbsolutePath(whole);
  }
  DropTrailingSlashes(url.path);
  return OK;
}

String MakeString(std::string_view text) {
  String result;
  (void)result.SetCString(text.data(), Int(text.size()));
  return result;
}

std::string_view SchemeText(const UrlBlock& url) {
  return std::string_view(url.scheme.GetCString(), size_t(url.scheme.GetLength()));
}

Id GetScheme(const void* block) { return Read(block).scheme; }

String GetPath(const void* block) { return MakeString(Read(block).path); }

// A path cut short by a failed allocation would name another file: no memory is an error.
Result<String> GetSystemPath(const void* block) {
  const UrlBlock& url = Read(block);
  if (url.scheme == URLSCHEME_FILE || url.scheme == URLSCHEME_RELATIVE) {
    String path;
    VORNA_RETURN_ON_ERROR(path.SetCString(url.path.data(), Int(url.path.size())));
    return path;
  }
  String message = FormatToString("@://@ has no system path", url.scheme, url.path.c_str());
  return RaiseError(g_UnsupportedOperationErrorObject, URL_LOCATION, &message);
}

std::string Text(const UrlBlock& url) {
  if (url.scheme.IsEmpty()) return url.path;
  return std::string(SchemeText(url)) + "://" + url.path;
}

String ToString(const void* block) { return MakeString(Text(Read(block))); }

std::string_view NameOf(const UrlBlock& url) {
  std::string_view path = url.path;
  return path == "/" ? std::string_view() : path.substr(path.rfind('/') + 1);
}

// The place of the suffix's dot in the path, or npos. A name that starts with its
// only dot has no suffix.
size_t SuffixDot(const UrlBlock& url) {
  std::string_view name = NameOf(url);
  size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return std::string_view::npos;
  return url.path.size() - name.size() + dot;
}

String GetName(const void* block) { return MakeString(NameOf(Read(block))); }

String GetSuffix(const void* block) {
  const UrlBlock& url = Read(block);
  size_t dot = SuffixDot(url);
  return MakeString(dot == std::string_view::npos ? std::string_view() : std::string_view(url.path).substr(dot + 1));
}

Bool CheckSuffix(const void* block, const Char* suffix) {
  const UrlBlock& url = Read(block);
  size_t dot = SuffixDot(url);
  if (dot == std::string_view::npos) return *suffix == 0;
  return strcasecmp(url.path.c_str() + dot + 1, suffix) == 0;
}

Bool SetSuffix(void* block, const Char* suffix) {
  UrlBlock& url = Write(block);
  if (NameOf(url).empty()) return false;
  size_t dot = SuffixDot(url);
  if (dot != std::string_view::npos) url.path.erase(dot);
  if (*suffix) url.path.append(".").append(suffix);
  return true;
}

Bool SetDirectoryOf(void* block, const void* source) {
  UrlBlock& directory = Write(block);
  const UrlBlock& url = Read(source);
  size_t slash = url.path.rfind('/');
  if (slash == std::string::npos || url.path == "/") {
    directory = UrlBlock();
    return true;
  }
  directory.scheme = url.scheme;
  directory.path = url.path.substr(0, slash == 0 ? 1 : slash);
  return true;
}

Bool Append(void* block, const Char* name, Int length) {
  UrlBlock& url = Write(block);
  std::string_view part(name, size_t(length));
  while (part.starts_with('/')) part.remove_prefix(1);
  if (part.empty()) return true;
  if (!url.path.empty() && !url.path.ends_with('/')) url.path += '/';
  url.path.append(part);
  DropTrailingSlashes(url.path);
  return true;
}

Bool IsEmpty(const void* block) {
  const UrlBlock& url = Read(block);
  return url.scheme.IsEmpty() && url.path.empty();
}

Int Compare(const void* a, const void* b) {
  const UrlBlock& x = Read(a);
  const UrlBlock& y = Read(b);
  if (int order = SchemeText(x).compare(SchemeText(y))) return order < 0 ? -1 : 1;
  int order = x.path.compare(y.path);
  return order < 0 ? -1 : order > 0 ? 1 : 0;
}

UInt GetHashCode(const void* block) {
  std::string text = Text(Read(block));
  return Id::HashText(text.data(), Int(text.size()));
}

UrlInterface::Table MakeTable() {
  UrlInterface::Table table{};
  table.Free = &UrlFree;
  table.Alloc = &UrlAlloc;
  table.Clone = &UrlClone;
  table.Set = &Set;
  table.GetScheme = &GetScheme;
  table.GetPath = &GetPath;
  table.GetSystemPath = &GetSystemPath;
  table.ToString = &ToString;
  table.GetName = &GetName;
  table.GetSuffix = &GetSuffix;
  table.CheckSuffix = &CheckSuffix;
  table.SetSuffix = &SetSuffix;
  table.SetDirectoryOf = &SetDirectoryOf;
  table.Append = &Append;
  table.IsEmpty = &IsEmpty;
  table.Compare = &Compare;
  table.GetHashCode = &GetHashCode;
  return table;
}

const UrlInterface::Table g_table = MakeTable();

}  // namespace

void RegisterUrlProvider() { RegisterProvider(UrlInterface::ID, &g_table, UrlInterface::COUNT); }

std::string UrlPathText(const Url& url) { return Read(url.GetBlock()).path; }

}  // namespace vorna::host
