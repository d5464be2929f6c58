#include "postscript/level3/graphics/ImageStrips.h"

#include <cmath>

namespace quillpress::level3 {

namespace {

// In device pixels. Jobs compute places in single precision.
constexpr double kTolerance = 0.01;
// What a picture may take in memory; one that is larger is painted in parts.
constexpr std::size_t kMostBytes = 32UL * 1024 * 1024;

bool isAlike(const ImageDescription& one, const ImageDescription& other) {
  return one.layout.width == other.layout.width && one.layout.components == other.layout.components &&
         one.layout.bits == other.layout.bits && one.isStencil == other.isStencil &&
         one.colourSpace == other.colourSpace && one.decode == other.decode &&
         one.interpolate == other.interpolate && one.colourKey == other.colourKey;
}

bool isSameClip(const ClipPointer& one, const ClipPointer& other) {
  return one == other || (one && other && one->isSameAs(*other));
}

bool isNear(double one, double other) {
  return std::abs(one - other) <= kTolerance;
}

// What is on top comes to lie below.
Matrix turnedOver(const Matrix& place) {
  return {place.a, place.b, -place.c, -place.d, place.tx + place.c, place.ty + place.d};
}

}  // namespace

bool ImageStrips::isNext(const Matrix& place) const {
  const Matrix& first = first_.place;
  const double rows = rows_->height();
  return isNear(place.a, first.a) && isNear(place.b, first.b) && isNear(place.c, first.c) &&
         isNear(place.d, first.d) && isNear(place.tx, first.tx - rows * first.c) &&
         isNear(place.ty, first.ty - rows * first.d);
}

bool ImageStrips::continuesWith(const ContentWriter& content, const ImageStrip& strip) {
  if (content_ != &content || !content.isPaintingLater()) return false;
  const bool isSame = isAlike(first_.description, strip.description) && first_.paint == strip.paint &&
                      first_.rare == strip.rare && isSameClip(first_.clip, strip.clip);
  const std::size_t rows = static_cast<std::size_t>(rows_->height()) + 1;
  if (!isSame || rows * strip.description.layout.rowBytes() > kMostBytes) return false;
  if (isNext(strip.place)) return true;
  const Matrix turned = turnedOver(strip.place);
  if (rows_->height() > 1) return isNext(turned);
  const Matrix before = std::exchange(first_.place, turnedOver(first_.place));
  if (isNext(turned)) return true;
  first_.place = before;
  return false;
}

void ImageStrips::add(ContentWriter& content, const ImageStrip& strip, Bytes row) {
  if (!continuesWith(content, strip)) {
    content.paintLater([this] { paint(); });
    content_ = &content;
    first_ = strip;
    rows_ = std::make_unique<HeldImage>(strip.description.layout);
  }
  rows_->add(row);
}

void ImageStrips::paint() {
  const std::unique_ptr<HeldImage> rows = std::move(rows_);
  const ImageStrip strip = std::move(first_);
  const ObjectNumber image = rows->write(file_, strip.description);
  Matrix place = strip.place;
  const double below = rows->height() - 1;
  place = {place.a,
           place.b,
           place.c * (below + 1),
           place.d * (below + 1),
           place.tx - below * place.c,
           place.ty - below * place.d};
  if (strip.paint) {
    content_->drawMask(image, place, *strip.paint, strip.clip, strip.rare);
  } else {
    content_->draw(image, place, transformed(Box{0, 0, 1, 1}, place), strip.clip, strip.rare);
  }
}

}  // namespace quillpress::level3
