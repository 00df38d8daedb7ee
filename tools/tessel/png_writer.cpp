#include "png_writer.h"

#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <vector>

namespace tessel::cli {

namespace {

// The rows as libpng takes them, without alpha when the picture is opaque.
std::vector<uint8_t> PackRows(const RgbaImage& image, int channels) {
  if (channels == 4) return image.pixels;
  std::vector<uint8_t> rows(size_t(image.width * image.height * 3));
  for (size_t i = 0, j = 0; i < image.pixels.size(); i += 4, j += 3) std::memcpy(&rows[j], &image.pixels[i], 3);
  return rows;
}

// libpng reports failures by longjmp; nothing with a destructor lives in this frame.
bool Encode(std::FILE* file, const RgbaImage& image, const std::vector<uint8_t>& packed, int channels,
            std::vector<png_bytep>& rows) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  if (!info) {
    png_destroy_write_struct(&png, nullptr);
    return false;
  }
  if (setjmp(png_jmpbuf(png))) {
    png_destroy_write_struct(&png, &info);
    return false;
  }
  png_init_io(png, file);
  png_set_IHDR(png, info, png_uint_32(image.width), png_uint_32(image.height), 8,
               channels == 4 ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (int64_t y = 0; y < image.height; ++y)
    rows[size_t(y)] = const_cast<png_bytep>(&packed[size_t(y * image.width * channels)]);
  png_write_image(png, rows.data());
  png_write_end(png, nullptr);
  png_destroy_write_struct(&png, &info);
  return true;
}

}  // namespace

bool WritePng(const std::string& path, const RgbaImage& image, std::string& error) {
  if (image.width <= 0 || image.height <= 0) {
    error = path + ": cannot write an empty picture";
    return false;
  }
  int channels = image.IsOpaque() ? 3 : 4;
  std::vector<uint8_t> packed = PackRows(image, channels);
  std::vector<png_bytep> rows(size_t(image.height));
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (!file) {
    error = path + ": " + std::strerror(errno);
    return false;
  }
  bool encoded = Encode(file, image, packed, channels, rows);
  bool closed = std::fclose(file) == 0;
  if (!encoded || !closed) {
    error = path + ": writing the PNG failed";
    return false;
  }
  return true;
}

}  // namespace tessel::cli
