#include "vorna/translationunit.h"

#include "vorna/url.h"
#include "vorna/resourceid.h"

#include <cstring>

namespace vorna {

VORNA_DEFINE_STATIC_INTERFACE(UrlInterface, nullptr, &UrlInterface::Table::Set, &UrlInterface::Table::GetScheme,
                              &UrlInterface::Table::GetPath, &UrlInterface::Table::GetSystemPath,
                              &UrlInterface::Table::ToString, &UrlInterface::Table::GetName,
                              &UrlInterface::Table::GetSuffix);

Result<void> Url::Set(const Char* text, Int length) {
  void* block = MakeWritable();
  if (!block) return ErrorResult{PrivateGetNullReturnError(1)};
  return UrlInterface::_table.Set(block, text, length < 0 ? Int(std::strlen(text)) : length);
}

Result<void> Url::Set(const String& text) {
  VORNA_ASSIGN_OR_RETURN(CString bytes, text.GetCString());
  return Set(bytes.GetCString(), bytes.GetLength());
}

Bool Url::SetSuffix(const Char* suffix) {
  void* block = MakeWritable();
  return block && UrlInterface::_table.SetSuffix(block, suffix);
}

Url Url::GetDirectory() const {
  Url directory;
  void* block = directory.MakeWritable();
  if (!block || !UrlInterface::_table.SetDirectoryOf(block, _block)) return Url();
  return directory;
}

Bool Url::Append(const Char* name, Int length) {
  void* block = MakeWritable();
  return block && UrlInterface::_table.Append(block, name, length < 0 ? Int(std::strlen(name)) : length);
}

Bool Url::Append(const String& name) {
  Result<CString> bytes = name.GetCString();
  return !bytes.IsError() && Append(bytes.GetValue().GetCString(), bytes.GetValue().GetLength());
}

VORNA_DEFINE_RESOURCE_ID(g_urlflagsUnbufferedFile, "vorna.urlflags.unbuffered_file");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsUsername, "vorna.urlflags.username");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsUserpassword, "vorna.urlflags.userpassword");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsQuery, "vorna.urlflags.query");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsFragment, "vorna.urlflags.fragment");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpAdditionalRequestHeader, "vorna.urlflags.http_additional_request_header");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpResponseHeader, "vorna.urlflags.http_response_header");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpFollowmovedfiles, "vorna.urlflags.http_followmovedfiles");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpPost, "vorna.urlflags.http_post");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpPostdata, "vorna.urlflags.http_postdata");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpNoProxyCaching, "vorna.urlflags.http_no_proxy_caching");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsHttpDisallowGzip, "vorna.urlflags.http_disallow_gzip");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsCacheInRam, "vorna.urlflags.cache_in_ram");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsFtpsFingerprint, "vorna.urlflags.ftps_fingerprint");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsNetworkSessiontimeout, "vorna.urlflags.network_sessiontimeout");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsNetworkConnecttimeout, "vorna.urlflags.network_connecttimeout");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsImagesequenceFps, "vorna.urlflags.imagesequence_fps");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsImagesequenceFirstframe, "vorna.urlflags.imagesequence_firstframe");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsImagesequenceLastframe, "vorna.urlflags.imagesequence_lastframe");
VORNA_DEFINE_RESOURCE_ID(g_urlflagsDummy, "vorna.urlflags.dummy");

}  // namespace vorna
