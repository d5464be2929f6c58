#pragma once

#include <vector>

#include "postscript/level3/images/ImageLayout.h"

namespace quillpress::level3 {

// Takes a row apart in which each pixel begins with a sample of its mask (InterleaveType 1). `both` counts
// the mask as a component. The mask's row gets one bit a pixel, set where its sample is not 0.
class InterleavedMask {
 public:
  explicit InterleavedMask(const ImageLayout& both);

  void split(Bytes row);
  [[nodiscard]] Bytes image() const { return image_; }
  [[nodiscard]] Bytes mask() const { return mask_; }

  [[nodiscard]] ImageLayout imageLayout() const {
    return {both_.width, both_.height, both_.components - 1, both_.bits};
  }
  [[nodiscard]] ImageLayout maskLayout() const { return {both_.width, both_.height, 1, 1}; }

 private:
  ImageLayout both_;
  std::vector<Byte> image_;
  std::vector<Byte> mask_;
};

// How many rows of mask and image follow each other when they are interleaved by rows (InterleaveType 2): the
// mask's come first. Of the two numbers one is 1. False when the heights do not divide each other.
struct RowInterleave {
  int maskRows = 1;
  int imageRows = 1;

  static bool find(int maskHeight, int imageHeight, RowInterleave& found);
};

}  // namespace quillpress::level3
