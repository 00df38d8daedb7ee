// The host's services, each registered as the provider of its interface at start.
#pragma once

namespace vorna::host {

void RegisterSystemProvider();
void RegisterClassProvider();
void RegisterExtensionPointProvider();
void RegisterStringProviders();
void RegisterStringConversionProvider();
void RegisterSystemWindowsProvider();
void RegisterDataDictionaryProvider();
void RegisterThreadServicesProviders();
void RegisterLockServicesProvider();
void PublishDataTypes();

}  // namespace vorna::host
