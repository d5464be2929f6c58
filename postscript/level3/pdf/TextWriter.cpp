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
constexpr std::size_t kLongestRun = 2000;

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
  if (run_.empty() && parts_.empty()) return;
  if (parts_.empty()) {
    appendString(content, run_);
    content += "Tj\n";
  } else {
    content += '[';
    content += parts_;
    if (!run_.empty()) appendString(content, run_);
    content += "]TJ\n";
  }
  run_.clear();
  parts_.clear();
}

void TextWriter::close(std::string& content) {
  if (!isOpen_) return;
  flushRun(content);
  content += "ET\n";
  isOpen_ = false;
}

void TextWriter::useFont(std::string& content, ContentResources& resources, TextState& state,
                         const TextGlyph& glyph, std::int64_t size) {
  if (state.mode != glyph.mode) {
    flushRun(content);
    appendInteger(content, static_cast<std::int64_t>(glyph.mode));
    content += " Tr\n";
    state.mode = glyph.mode;
  }
  if (state.font == glyph.font && state.size == size) return;
  flushRun(content);
  resources.use(ResourceKind::kFont, glyph.font, content);
  content += ' ';
  state.font = glyph.font;
  state.size = size;
}

// A line in the same direction as the last is told by its distance, any other by a matrix.
void TextWriter::moveTo(std::string& content, const ContentSpace& space, const Shape& shape, Point origin) {
  flushRun(content);
  pen_ = 0;
  const Linear& linear = shape.linear;
  if (linear == linear_) {
    const Matrix axes{linear.a, linear.b, linear.c, linear.d, 0, 0};
    Point distance = shape.inverse.applyToDistance(origin - line_);
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

const TextWriter::Shape& TextWriter::shapeFor(const Matrix& toContent, int decimals) {
  const Matrix& last = shape_.toContent;
  const bool isSame = last.a == toContent.a && last.b == toContent.b && last.c == toContent.c &&
                      last.d == toContent.d && shape_.decimals == decimals;
  if (isSame) return shape_;
  shape_ = {};
  shape_.toContent = toContent;
  shape_.decimals = decimals;
  const double height = std::hypot(toContent.c, toContent.d);
  const int places = sizePlaces(decimals);
  // A size that is too small to be written shows nothing.
  shape_.units = toFixed(height, places);
  if (shape_.units <= 0 || !std::isfinite(height) || !toContent.inverse()) return shape_;
  shape_.size = static_cast<double>(shape_.units) / powerOfTen(places);
  shape_.linear = {rounded(toContent.a / height, kMatrixPlaces), rounded(toContent.b / height, kMatrixPlaces),
                   rounded(toContent.c / height, kMatrixPlaces),
                   rounded(toContent.d / height, kMatrixPlaces)};
  const Linear& linear = shape_.linear;
  const std::optional<Matrix> inverse = Matrix{linear.a, linear.b, linear.c, linear.d, 0, 0}.inverse();
  shape_.isShown = inverse.has_value();
  if (inverse) shape_.inverse = *inverse;
  return shape_;
}

void TextWriter::show(std::string& content, ContentResources& resources, TextState& state,
                      const ContentSpace& space, const TextGlyph& glyph) {
  const Matrix toContent = glyph.toDevice * space.fromDevice;
  const Shape& shape = shapeFor(toContent, space.decimals);
  if (!shape.isShown) return;
  const double size = shape.size;

  open(content);
  const bool changesFont = state.font != glyph.font || state.size != shape.units;
  useFont(content, resources, state, glyph, shape.units);
  if (changesFont) {
    appendOperand(content, size, sizePlaces(space.decimals));
    content += "Tf\n";
  }
  const Point origin{toContent.tx, toContent.ty};
  const double tolerance = 0.5 / powerOfTen(space.decimals);
  const Point distance = shape.inverse.applyToDistance(origin - line_);
  const double gap = distance.x - pen_;
  const bool isOnLine = shape.linear == linear_ && std::abs(distance.y) <= tolerance &&
                        std::abs(gap) <= kFarthestAdjustment * size / kThousand && run_.size() < kLongestRun;
  if (!isOnLine) {
    moveTo(content, space, shape, origin);
  } else if (std::abs(gap) > tolerance) {
    // More places where a thousandth of the size is more than can be seen.
    const int decimals = size / kThousand > tolerance ? 1 : 0;
    const double adjustment = rounded(-gap * kThousand / size, decimals);
    if (adjustment != 0) {
      if (!run_.empty()) appendString(parts_, run_);
      run_.clear();
      appendNumber(parts_, adjustment, decimals);
      pen_ -= adjustment * size / kThousand;
    }
  }
  if (glyph.codeBytes == 2) run_ += static_cast<char>(glyph.code >> 8);
  run_ += static_cast<char>(glyph.code & 0xff);
  pen_ += glyph.width * size;
}

}  // namespace quillpress::level3
