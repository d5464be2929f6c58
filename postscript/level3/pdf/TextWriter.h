#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "postscript/level3/geometry/Box.h"
#include "postscript/level3/pdf/ContentResources.h"
#include "postscript/level3/pdf/PathText.h"

namespace quillpress::level3 {

// How a glyph's outline is painted, by the number that `Tr` takes.
enum class TextMode : std::uint8_t { kFill = 0, kStroke = 1, kInvisible = 3 };

// One glyph of a font in the file, as content shows it.
struct TextGlyph {
  ObjectNumber font = 0;
  std::uint32_t code = 0;
  std::uint8_t codeBytes = 1;
  TextMode mode = TextMode::kFill;
  // How far PDF moves on after it: text space units at font size 1, exactly as the font's Widths say.
  double width = 0;
  // Text space at font size 1 to device space, with the glyph's origin.
  Matrix toDevice;
};

// A glyph that differs from the last one in its place and code alone.
struct NextGlyph {
  ObjectNumber font = 0;
  std::uint32_t code = 0;
  std::uint8_t codeBytes = 1;
  double width = 0;  // as a TextGlyph's
  // In device space, as the rest.
  Point origin;
  // How far from there it paints at most, in each direction.
  double reach = 0;
};

// The part of the text state that outlives a text object.
struct TextState {
  ObjectNumber font = 0;
  std::int64_t size = 0;  // in units of the writer's
  TextMode mode = TextMode::kFill;
};

// Writes text objects. Glyphs that follow each other on a line become one string; where the job puts a glyph
// elsewhere than its predecessor's width does, the string is cut by the difference, which is always taken
// from what a reader of the PDF has added up, so that rounding never grows along a line.
class TextWriter {
 public:
  bool isOpen() const { return isOpen_; }

  // REQUIRES: nothing but text is written between the first glyph and close(); always the same space.
  void show(std::string& content, ContentResources& resources, TextState& state, const ContentSpace& space,
            const TextGlyph& glyph);

  // Whether the last glyph is in the text object, so that others may follow it.
  bool hasLast() const { return isOpen_ && shape_.isShown; }
  // REQUIRES: hasLast(); the font is that of the last glyph.
  void showNext(std::string& content, const ContentSpace& space, const NextGlyph& glyph);

  // Ends the text object, if there is one.
  void close(std::string& content);

 private:
  static constexpr std::size_t kLongestRun = 2000;
  static constexpr std::size_t kMostCodeBytes = 2;

  struct Linear {
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    friend bool operator==(const Linear&, const Linear&) = default;
  };

  // What a glyph's matrix comes to but for its place.
  struct Shape {
    Matrix toDevice;
    int decimals = -1;
    bool isShown = false;  // not what is too small or has no inverse
    std::int64_t units = 0;
    double size = 0;
    Linear linear;
    Matrix inverse;  // of the linear part
    // What cannot be seen, and what is too far for an adjustment, along the line.
    double tolerance = 0;
    double farthest = 0;

    bool isOf(const TextGlyph& glyph, const ContentSpace& space) const;
  };

  static Shape shapeOf(const TextGlyph& glyph, const ContentSpace& space);
  void open(std::string& content);
  void useFont(std::string& content, ContentResources& resources, TextState& state, const TextGlyph& glyph);
  void moveTo(std::string& content, const ContentSpace& space, Point origin, bool hasSameAxes);
  void beginLine(std::string& content, const ContentSpace& space, Point origin);
  void add(std::uint32_t code, std::uint8_t codeBytes, double width);
  void adjust(double gap);
  std::string_view run() const { return {run_.data(), runLength_}; }
  void flushRun(std::string& content);

  bool isOpen_ = false;
  Shape shape_;  // of the last glyph: most have it from the one before
  Linear linear_;
  // Where the line begins, in content space, as it has been written.
  Point line_;
  // How far the string has moved from there, in units of the line's matrix.
  double pen_ = 0;
  // The strings and adjustments of a TJ, and the string that is being gathered.
  std::string parts_;
  std::array<char, kLongestRun + kMostCodeBytes> run_;
  std::size_t runLength_ = 0;
};

// Along the line, if the place is on it, or to a new one.
inline void TextWriter::moveTo(std::string& content, const ContentSpace& space, Point origin,
                               bool hasSameAxes) {
  const Point distance = shape_.inverse.applyToDistance(origin - line_);
  const double gap = distance.x - pen_;
  const bool isOnLine = hasSameAxes && std::abs(distance.y) <= shape_.tolerance &&
                        std::abs(gap) <= shape_.farthest && runLength_ < kLongestRun;
  if (!isOnLine) {
    beginLine(content, space, origin);
  } else if (std::abs(gap) > shape_.tolerance) {
    adjust(gap);
  }
}

inline void TextWriter::add(std::uint32_t code, std::uint8_t codeBytes, double width) {
  if (codeBytes == 2) run_[runLength_++] = static_cast<char>(code >> 8);
  run_[runLength_++] = static_cast<char>(code & 0xff);
  pen_ += width * shape_.size;
}

inline void TextWriter::showNext(std::string& content, const ContentSpace& space, const NextGlyph& glyph) {
  moveTo(content, space, space.fromDevice.apply(glyph.origin), true);
  add(glyph.code, glyph.codeBytes, glyph.width);
}

}  // namespace quillpress::level3
