#include "png_file.h"

#include <png.h>

namespace tessel::testing {

bool ReadPng(const std::string& path, PngPicture& picture) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str())) return false;
  bool rgb = image.format == PNG_FORMAT_RGB;
  bool rgba = image.format == PNG_FORMAT_RGBA;
  if (!rgb && !rgba) {
    png_image_free(&image);
    return false;
  }
  picture.width = int(image.width);
  picture.height = int(image.height);
  picture.channels = rgb ? 3 : 4;
  picture.samples.resize(PNG_IMAGE_SIZE(image));
  return png_image_finish_read(&image, nullptr, picture.samples.data(), 0, nullptr) != 0;
}

}  // namespace tessel::testing
