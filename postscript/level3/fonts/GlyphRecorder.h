#pragma once

#include "postscript/level3/fonts/GlyphProgram.h"

namespace quillpress::level3 {

// More than any glyph needs, and few enough to be copied at each change.
inline constexpr std::size_t kMostStems = 512;

// Puts a glyph's program together as a charstring runs. Drawing is relative to the current point, stems to an
// origin.
class GlyphRecorder {
 public:
  // Where a part of the glyph begins: an accent's place, or the glyph's own origin. Its stems start anew.
  void beginPart(Point origin);

  Point origin() const { return origin_; }
  Point current() const { return current_; }
  void setCurrent(Point point) { current_ = point; }
  void setAdvance(Point advance) { program_.advance = advance; }

  // Moves the current point alone, as inside a flex of Type 1.
  void step(Point distance) { current_ = current_ + distance; }

  void move(Point distance);
  void line(Point distance);
  // Each distance starts where the one before ends.
  void curve(Point first, Point second, Point third);
  // Six absolute points.
  void flex(const std::array<Point, 6>& points, double depth);
  void close();

  // Relative to the part's origin.
  void addStem(double position, double width, bool isVertical);
  void dropStems();
  // Exactly these, as absolute stems.
  void setStems(std::vector<Stem> stems);
  void addCounters(std::vector<Stem> stems);

  // Ends the glyph.
  GlyphProgram finish();

 private:
  // Drawing needs an open subpath and the stems that count from here.
  void prepare();
  void add(GlyphProgram::Kind kind) { program_.kinds.push_back(kind); }
  void addPoint(Point point) { program_.points.push_back(point); }
  void flushStems();

  GlyphProgram program_;
  Point origin_;
  Point current_;
  std::vector<Stem> stems_;
  bool stemsChanged_ = false;
  bool isOpen_ = false;
};

// A stem with its edges in order; widths of -20 and -21 stay, as they tell which edge counts.
Stem normalised(const Stem& stem);

}  // namespace quillpress::level3
