#include "postscript/level3/graphics/ReducedImage.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "postscript/level3/images/AveragedRows.h"
#include "postscript/level3/images/ImageRows.h"
#include "postscript/level3/images/LossyImage.h"
#include "postscript/level3/images/PassedImage.h"

namespace quillpress::level3 {

namespace {

// Of pictures that came as JPEG data and have to be made anew because of their pixels alone.
constexpr int kUsualQuality = 85;

// Pixels along a side that is so many device units long; not more than there are.
int pixelsFor(int pixels, double length, double unitsInInch, double resolution) {
  const double wanted = std::ceil(length / unitsInInch * resolution);
  return wanted < pixels ? std::max(1, static_cast<int>(wanted)) : pixels;
}

// The image's size in pixels as it goes into the file.
ImageLayout layoutFor(Graphics& graphics, const ImageLayout& layout, const Matrix& place) {
  const double resolution = graphics.images().resolution;
  if (!(resolution > 0)) return layout;
  constexpr double kPointsInInch = 72;
  const double unitsInInch = graphics.state().device->defaultMatrix.meanScale() * kPointsInInch;
  ImageLayout result = layout;
  result.width = pixelsFor(layout.width, std::hypot(place.a, place.b), unitsInInch, resolution);
  result.height = pixelsFor(layout.height, std::hypot(place.c, place.d), unitsInInch, resolution);
  return result;
}

class Reduction {
 public:
  Reduction(Graphics& graphics, const ImageDescription& description, const ImageLayout& target)
      : graphics_(graphics), description_(description), source_(description.layout), target_(target) {}

  [[nodiscard]] bool isSmaller() const {
    return target_.width < source_.width || target_.height < source_.height;
  }

  // With the quality that is asked for, 0 for one without loss. Nothing is written that takes `limit` bytes
  // or more.
  WrittenImage write(ImageRows& rows, int quality, std::size_t limit) {
    const auto nextRow = [&] {
      graphics_.interpreter().endIfInterrupted();
      return rows.next();
    };
    if (!isSmaller()) return compress(nextRow, quality, limit);
    AveragedRows averaged(source_, target_.width, target_.height);
    description_.layout = averaged.layout();
    WrittenImage written = compress([&] { return averaged.next(nextRow); }, quality, limit);
    // As tall on the page as all the rows that are in it.
    written.height = averaged.rowsRead();
    return written;
  }

 private:
  WrittenImage compress(const RowReader& nextRow, int quality, std::size_t limit) {
    PdfFile& file = graphics_.document().file();
    if (quality == 0 || !canBeLossy(description_))
      return writeImage(file, description_, nextRow, kMissingSample);
    return writeLossyImage(file, description_, nextRow, quality, limit);
  }

  Graphics& graphics_;
  ImageDescription description_;
  ImageLayout source_;
  ImageLayout target_;
};

WrittenImage writeJpegAnew(Graphics& graphics, const ImageDescription& description, Reduction& reduction,
                           DctDecoder& decoder, int quality) {
  const auto transform = decoder.colorTransform();
  const std::vector<Byte> data = takeJpeg(decoder);
  ImageRows rows({std::make_shared<DctDecoder>(std::make_shared<MemorySource>(data), transform)},
                 description.layout);
  WrittenImage written = reduction.write(rows, quality, data.size());
  if (written.number != 0) return written;
  DctDecoder again(std::make_shared<MemorySource>(data), transform);
  return passJpeg(graphics.document().file(), description, again);
}

}  // namespace

std::optional<WrittenImage> writeReduced(Graphics& graphics, const ImageDescription& description,
                                         const std::vector<SourcePointer>& sources, DctDecoder* jpeg,
                                         const Matrix& place) {
  const int quality = graphics.images().quality;
  Reduction reduction(graphics, description, layoutFor(graphics, description.layout, place));
  if (!description.isContinuous || (quality == 0 && !reduction.isSmaller())) return std::nullopt;
  if (jpeg != nullptr && canBeLossy(description))
    return writeJpegAnew(graphics, description, reduction, *jpeg, quality == 0 ? kUsualQuality : quality);
  ImageRows rows(sources, description.layout);
  WrittenImage written = reduction.write(rows, quality, std::numeric_limits<std::size_t>::max());
  if (rows.hasFailed()) raise(ErrorName::kIoError);
  return written;
}

}  // namespace quillpress::level3
