// Export marker of the platform library. Every function the Windows headers of this
// folder declare is implemented in libtessel_platform.so and exported with it.
#pragma once

#define TESSEL_PLATFORM_API __attribute__((visibility("default")))
#define WINAPI
#define STDMETHODCALLTYPE
