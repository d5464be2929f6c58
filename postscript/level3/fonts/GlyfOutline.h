#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "postscript/level3/fonts/OutlineFont.h"

namespace quillpress::level3 {

// One component of a composite glyph.
struct GlyfComponent {
  GlyphIndex glyph = 0;
  // Where its number stands in the data of the composite.
  std::size_t numberPlace = 0;
  // Scale or rotation; where the component goes is in the arguments.
  Matrix matrix;
  bool argumentsAreDistance = false;
  bool isDistanceScaled = false;
  int argument1 = 0;
  int argument2 = 0;
};

// The components of a glyph of the glyf table; none of a simple glyph.
std::vector<GlyfComponent> componentsOf(std::string_view data);

// A glyph's outline with all components, in font units.
class GlyfOutline {
 public:
  // The data of a glyph, nothing when there is no such glyph.
  using Source = std::function<std::optional<std::string_view>(GlyphIndex)>;

  GlyfOutline(const Source& source, GlyphIndex glyph);

  bool isEmpty() const { return points_.empty(); }
  // What the glyph's header says.
  int left() const { return left_; }
  int top() const { return top_; }

  Path path() const;

 private:
  struct OutlinePoint {
    Point point;
    bool isOnCurve = false;
    bool endsContour = false;
  };

  void add(GlyphIndex glyph, int depth);
  void addSimple(std::string_view data);
  void addComposite(std::string_view data, int depth);

  const Source& source_;
  std::vector<OutlinePoint> points_;
  std::size_t componentsLeft_;
  int left_ = 0;
  int top_ = 0;
};

}  // namespace quillpress::level3
