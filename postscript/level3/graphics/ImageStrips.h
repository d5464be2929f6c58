#pragma once

#include <memory>
#include <optional>

#include "postscript/level3/geometry/Clip.h"
#include "postscript/level3/images/ImageObject.h"
#include "postscript/level3/pdf/ContentWriter.h"

namespace quillpress::level3 {

// An image of one row, and how it is painted.
struct ImageStrip {
  ImageDescription description;
  // The unit square to device space.
  Matrix place;
  // Of a stencil.
  std::optional<Paint> paint;
  ClipPointer clip;
  RareParameters rare;
};

// Programs paint pictures row by row. Strips that lie one below the other, or one above the other, are held
// and become one image, which is smaller, and which viewers show without seams.
class ImageStrips {
 public:
  explicit ImageStrips(PdfFile& file) : file_(file) {}

  // Paints a strip, sooner or later, but before anything else is painted on the content.
  void add(ContentWriter& content, const ImageStrip& strip, Bytes row);

 private:
  bool continuesWith(const ContentWriter& content, const ImageStrip& strip);
  bool isNext(const Matrix& place) const;
  void paint();

  PdfFile& file_;
  ContentWriter* content_ = nullptr;
  // The first strip. Where they go up, it is turned over: then each lies below the one before in its own
  // terms, and one row is the same from both sides.
  ImageStrip first_;
  std::unique_ptr<HeldImage> rows_;
};

}  // namespace quillpress::level3
