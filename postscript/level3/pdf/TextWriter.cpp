#include "postscript/level3/pdf/TextWriter.h"

#include <cmath>

#include "postscript/level3/pdf/PdfNumbers.h"

namespace quillpress::level3 {

namespace {

// Font sizes are written with so many places more than coordinates: an error in them grows along the line.
constexpr int kSizePlaces = 2;
constexpr int kMatrixPlaces = 6;
constexpr double kThousand = 1000;
// Farther apart, two strings are shorter than one with a large number in it.
constexpr double kFarthestAdjustment = 20'000;

double rounded(double value, int decimals) {
  const double scale = powerOfTen(decimals);
  return std::round(value * scale) / scale;
}

int sizePlaces(int decimals) {
  return std::min(decimals + kSizePlaces, 9);
}

void appendOperand(std::string& content, double value, int decimals) {
  appendNumber(content, value, decimals);
  content += ' ';
}

}  // namespace

void TextWriter::open(std::string& content) {
  if (isOpen_) return;
  content += "BT\n";
  isOpen_ = true;
  linear_ = {};
  line_ = {};
  pen_ = 0;
}

void TextWriter::flushRun(std::string& content) {
  if (runLength_ == 0 && parts_.empty()) return;
  if (parts_.empty()) {
    appendString(content, run());
    content += "Tj\n";
  } else {
    content += '[';
    content += parts_;
    if (runLength_ != 0) appendString(content, run());
    content += "]TJ\n";
  }
  runLength_ = 0;
  parts_.clear();
}

void TextWriter::close(std::string& content) {
  if (!isOpen_) return;
  flushRun(content);
  content += "ET\n";
  isOpen_ = false;
}

void TextWriter::useFont(std::string& content, ContentResources& resources, TextState& state,
                         const TextGlyph& glyph) {
  if (state.mode != glyph.mode) {
    flushRun(content);
    appendInteger(content, static_cast<std::int64_t>(glyph.mode));
    content += " Tr\n";
    state.mode = glyph.mode;
  }
  if (state.font == glyph.font && state.size == shape_.units) return;
  flushRun(content);
  resources.use(ResourceKind::kFont, glyph.font, content);
  content += ' ';
  appendOperand(content, shape_.size, sizePlaces(shape_.decimals));
  content += "Tf\n";
  state.font = glyph.font;
  state.size = shape_.units;
}

// A line in the same direction as the last is told by its distance, any other by a matrix.
void TextWriter::beginLine(std::string& content, const ContentSpace& space, Point origin) {
  flushRun(content);
  pen_ = 0;
  const Linear& linear = shape_.linear;
  if (linear == linear_) {
    const Matrix axes{linear.a, linear.b, linear.c, linear.d, 0, 0};
    Point distance = shape_.inverse.applyToDistance(origin - line_);
    distance = {rounded(distance.x, space.decimals), rounded(distance.y, space.decimals)};
    appendOperand(content, distance.x, space.decimals);
    appendOperand(content, distance.y, space.decimals);
    content += "Td\n";
    line_ = line_ + axes.applyToDistance(distance);
    return;
  }
  for (const double value : {linear.a, linear.b, linear.c, linear.d})
    appendOperand(content, value, kMatrixPlaces);
  appendOperand(content, origin.x, space.decimals);
  appendOperand(content, origin.y, space.decimals);
  content += "Tm\n";
  linear_ = linear;
  line_ = {rounded(origin.x, space.decimals), rounded(origin.y, space.decimals)};
}

bool TextWriter::Shape::isOf(const TextGlyph& glyph, const ContentSpace& space) const {
  const Matrix& matrix = glyph.toDevice;
  return toDevice.a == matrix.a && toDevice.b == matrix.b && toDevice.c == matrix.c &&
         toDevice.d == matrix.d && decimals == space.decimals;
}

TextWriter::Shape TextWriter::shapeOf(const TextGlyph& glyph, const ContentSpace& space) {
  Shape shape;
  shape.toDevice = glyph.toDevice;
  shape.decimals = space.decimals;
  const Matrix toContent = glyph.toDevice * space.fromDevice;
  const double height = std::hypot(toContent.c, toContent.d);
  const int places = sizePlaces(space.decimals);
  // A size that is too small to be written shows nothing.
  shape.units = toFixed(height, places);
  if (shape.units <= 0 || !std::isfinite(height) || !toContent.inverse()) return shape;
  shape.size = static_cast<double>(shape.units) / powerOfTen(places);
  shape.tolerance = 0.5 / powerOfTen(space.decimals);
  shape.farthest = kFarthestAdjustment * shape.size / kThousand;
  shape.linear = {rounded(toContent.a / height, kMatrixPlaces), rounded(toContent.b / height, kMatrixPlaces),
                  rounded(toContent.c / height, kMatrixPlaces), rounded(toContent.d / height, kMatrixPlaces)};
  const Linear& linear = shape.linear;
  const std::optional<Matrix> inverse = Matrix{linear.a, linear.b, linear.c, linear.d, 0, 0}.inverse();
  shape.isShown = inverse.has_value();
  if (inverse) shape.inverse = *inverse;
  return shape;
}

// Cuts the string by what lies between the pen and a glyph.
void TextWriter::adjust(double gap) {
  // More places where a thousandth of the size is more than can be seen.
  const int decimals = shape_.size / kThousand > shape_.tolerance ? 1 : 0;
  const double scale = powerOfTen(decimals);
  const double units = std::round(-gap * kThousand / shape_.size * scale);
  if (units == 0) return;
  if (runLength_ != 0) appendString(parts_, run());
  runLength_ = 0;
  appendFixed(parts_, static_cast<std::int64_t>(units), decimals);
  pen_ -= units / scale * shape_.size / kThousand;
}

void TextWriter::show(std::string& content, ContentResources& resources, TextState& state,
                      const ContentSpace& space, const TextGlyph& glyph) {
  // Most glyphs have size, direction and font from the one before.
  if (!shape_.isOf(glyph, space)) shape_ = shapeOf(glyph, space);
  if (!shape_.isShown) return;
  open(content);
  if (state.font != glyph.font || state.size != shape_.units || state.mode != glyph.mode) {
    useFont(content, resources, state, glyph);
  }
  moveTo(content, space, space.fromDevice.apply({glyph.toDevice.tx, glyph.toDevice.ty}),
         shape_.linear == linear_);
  add(glyph.code, glyph.codeBytes, glyph.width);
}

}  // namespace quillpress::level3
