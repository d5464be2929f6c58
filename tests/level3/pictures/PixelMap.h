#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace quillpress::level3 {

// A page as a renderer has drawn it: three channels of 0 to 255, row by row from the top.
struct PixelMap {
  std::size_t width = 0;
  std::size_t height = 0;
  std::vector<unsigned char> samples;

  bool isSameSizeAs(const PixelMap& other) const { return width == other.width && height == other.height; }
};

// Reads a binary PPM file; throws std::runtime_error when it is none.
PixelMap readPixelMap(const std::filesystem::path& file);

// How far two pages of one size are apart, from 0 to 1: the mean over all pixels and channels, once each page
// is blurred with 3 x 3 pixels. The blur allows for edges that two ways of writing one drawing put
// differently.
double meanDifference(const PixelMap& one, const PixelMap& other);

}  // namespace quillpress::level3
