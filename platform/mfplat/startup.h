// Whether MFStartup is in force: readers and writers can only be made while it is.
#pragma once

namespace tessel::platform {

bool MediaFoundationStarted();

}  // namespace tessel::platform
