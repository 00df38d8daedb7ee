// The published colour profiles: one host block per profile of the catalogue, in
// vorna.ColorProfiles under its member name.
#pragma once

#include "vorna/colorprofile.h"

namespace vorna::host {

void RegisterColorProfileProvider();
void PublishColorProfiles();
// The published profile of a member name such as "srgb"; null when there is none.
ColorProfile FindColorProfile(const Char* name);

}  // namespace vorna::host
