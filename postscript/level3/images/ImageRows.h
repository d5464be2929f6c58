#pragma once

#include <vector>

#include "postscript/level3/images/ImageLayout.h"

namespace quillpress::level3 {

// The rows of an image, from one source with interleaved components or from one source for each component.
class ImageRows {
 public:
  // One source, or layout.components of them.
  ImageRows(std::vector<SourcePointer> sources, const ImageLayout& layout);

  [[nodiscard]] const ImageLayout& layout() const { return layout_; }

  // The next row, borrowed until the next call; empty when a source has ended before a whole one, or failed.
  Bytes next();
  [[nodiscard]] bool hasFailed() const;

 private:
  [[nodiscard]] Bytes end() const;
  bool readPlanes();
  Bytes nextInterleaved();

  std::vector<SourcePointer> sources_;
  ImageLayout layout_;
  std::vector<Byte> row_;
  std::vector<std::vector<Byte>> planes_;
};

// A string as the data of an image: it begins again when it is used up. An empty one has nothing.
class RepeatedString final : public ByteSource {
 public:
  explicit RepeatedString(Bytes string) : string_(string.begin(), string.end()) {}

 private:
  Bytes nextBlock() override { return string_; }

  std::vector<Byte> string_;
};

}  // namespace quillpress::level3
