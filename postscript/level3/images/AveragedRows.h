#pragma once

#include <vector>

#include "postscript/level3/images/ImageObject.h"

namespace quillpress::level3 {

// An image with fewer pixels: each is the mean of those that lie where it lies, with their share.
class AveragedRows {
 public:
  // REQUIRES: neither side grows, and is at least 1
  AveragedRows(const ImageLayout& source, int width, int height);

  // Samples have 8 bits whatever those of the source have.
  [[nodiscard]] const ImageLayout& layout() const { return layout_; }
  // Rows of the source that have been read.
  [[nodiscard]] int rowsRead() const { return rowsRead_; }

  // The next row, from as many of the source's as it takes, borrowed until the next call; empty when there is
  // none. The last row of a source that ends early is the mean of what has come.
  Bytes next(const RowReader& nextRow);

 private:
  // Both sides are measured in units that make the pixels of source and target whole numbers long: one of the
  // source is as long as the target has pixels, and the other way round.
  void averageAcross(Bytes row);
  Bytes finishRow(int gathered);

  ImageLayout source_;
  ImageLayout layout_;
  std::vector<double> across_;
  std::vector<double> sums_;
  std::vector<Byte> row_;
  int rowsRead_ = 0;
  // What of the row in across_ belongs to target rows to come.
  int left_ = 0;
};

}  // namespace quillpress::level3
