#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "postscript/level3/images/ImageCompressor.h"
#include "postscript/level3/pdf/PdfFile.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

// An image as PDF describes it, apart from its data.
struct ImageDescription {
  ImageLayout layout;  // as the language has it
  // Whether neighbouring samples mean neighbouring colours, and there are more than two.
  bool isContinuous = false;
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
  // The array; REQUIRES: there is one.
  [[nodiscard]] std::string decodeText() const;
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

struct WrittenImage {
  ObjectNumber number = 0;   // 0 when not one row came, or it is inline
  int height = 0;            // less than it should have when the data ended early
  std::string inlined = {};  // the whole of it instead, for the content
};

// The next row of an image, borrowed until the next call; empty when there is none.
using RowReader = std::function<Bytes()>;

// Writes an image from its rows, compressed. Of a long image the height is in the file before all rows have
// come; those that do not are filled with `missing`.
WrittenImage writeImage(PdfFile& file, ImageDescription description, const RowReader& nextRow, Byte missing);

// Rows that are compressed in memory, for an image that cannot be described before another one is complete.
class HeldImage {
 public:
  explicit HeldImage(const ImageLayout& layout);

  void add(Bytes row);
  [[nodiscard]] int height() const { return height_; }
  // Returns how many bytes the data takes. No row can be added then.
  std::size_t finish();
  // `description` is of the same layout; its height becomes that of the rows that came.
  ObjectNumber write(PdfFile& file, ImageDescription description);

 private:
  ImageLayout layout_;
  std::shared_ptr<MemorySink> data_;
  PredictorParameters predictor_;
  ImageCompressor compressor_;
  std::vector<Byte> converted_;
  int height_ = 0;
  bool isFinished_ = false;
};

}  // namespace quillpress::level3
