// The published colour profiles: one host block per profile of the catalogue, in
// vorna.ColorProfiles under its member name.
#pragma once

#include "vorna/colorprofile.h"
#include "vorna/data.h"

namespace vorna::host {

void RegisterColorProfileProvider();
void PublishColorProfiles();
// The published profile of a member name such as "srgb"; null when there is none.
ColorProfile FindColorProfile(const Char* name);
// A Data that holds one more reference to profile, of the type the published profiles
// have; the key vorna.mediaformat.image.colorprofile takes such a Data.
Data MakeColorProfileData(const ColorProfile& profile);

}  // namespace vorna::host
