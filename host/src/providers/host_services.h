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
void RegisterUrlProvider();
void RegisterThreadServicesProviders();
void RegisterLockServicesProvider();
void PublishDataTypes();
void RegisterDataTypeLibProvider();
void RegisterDataDescriptionProvider();
// Drops the block types made while the host ran.
void ForgetBlockTypes();

}  // namespace vorna::host
