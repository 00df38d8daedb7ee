// Publishing of the pixel vocabulary: formats, groups and the named objects of
// channel types, colour spaces, blends and storage classes.
#pragma once

namespace vorna::host {

void PublishPixelFormats();
void PublishPixelVocabulary();

}  // namespace vorna::host
