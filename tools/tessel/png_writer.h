// Writes a picture as an 8-bit PNG file: RGB when every pixel is opaque, RGBA
// otherwise.
#pragma once

#include <string>

#include "rgba_image.h"

namespace tessel::cli {

// False with a message in error when the file cannot be written.
bool WritePng(const std::string& path, const RgbaImage& image, std::string& error);

}  // namespace tessel::cli
