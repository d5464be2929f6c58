#pragma once

#include <string>
#include <vector>

#include "postscript/level3/images/ImageLayout.h"

namespace quillpress::level3 {

// Looks the samples of a row up in a table of colours, for tables that PDF has no room for.
class IndexedRows {
 public:
  // `table` holds `components` bytes a colour. A sample s of n bits stands for the colour
  // low + s (high - low) / (2^n - 1), or the nearest that there is.
  IndexedRows(const ImageLayout& indexed, std::string table, int components, double low, double high);

  [[nodiscard]] ImageLayout layout() const { return {indexed_.width, indexed_.height, components_, 8}; }
  // Borrowed until the next call.
  Bytes expand(Bytes row);

 private:
  ImageLayout indexed_;
  std::string table_;
  int components_;
  double low_;
  double step_;
  std::vector<Byte> row_;
};

}  // namespace quillpress::level3
