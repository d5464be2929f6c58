#pragma once

#include <optional>
#include <string>
#include <vector>

#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

// An image as PDF describes it, apart from its data.
struct ImageDescription {
  ImageLayout layout;       // as the language has it
  bool isStencil = false;   // painted with the current colour where its samples say so
  std::string colourSpace;  // in PDF's words; of a stencil empty
  // What the least and the greatest sample of each component stand for, in PDF's words; empty for the usual.
  std::vector<double> decode = {};
  bool interpolate = false;
  ObjectNumber mask = 0;  // a stencil that says where the image is painted
  std::vector<unsigned> colourKey =
      {};  // the least and the greatest sample of each component that are not painted

  // The entries of its dictionary; `filter` is its data's, with its parameters.
  [[nodiscard]] std::string entries(std::string_view filter) const;
};

// Takes the data of an image into the file. Short data is held, and written once however often it comes;
// longer data goes out as it comes, and until the sink is closed nothing else can be written to the file.
class ImageObjectSink final : public ByteSink {
 public:
  ImageObjectSink(PdfFile& file, std::string entries) : file_(file), entries_(std::move(entries)) {}
  ~ImageObjectSink() override;

  // REQUIRES: it has been closed
  [[nodiscard]] ObjectNumber number() const { return number_; }

 private:
  static constexpr std::size_t kHeld = 1U << 18;

  void take(Bytes bytes) override;
  void release() override;
  void finishStream();

  PdfFile& file_;
  std::string entries_;
  std::string held_;
  std::optional<PdfFile::OpenStream> stream_;
  ObjectNumber number_ = 0;
};

// Writes an image from its rows, compressed. Rows that do not come are filled with `missing`.
ObjectNumber writeImage(PdfFile& file, const ImageDescription& description, ImageRows& rows, Byte missing);

}  // namespace quillpress::level3
