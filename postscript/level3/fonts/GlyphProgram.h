#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

// A stem that a charstring declares, by its lower (left) edge. Widths of -20 and -21 mark single edges.
struct Stem {
  double position = 0;
  double width = 0;
  bool isVertical = false;

  // NOLINTNEXTLINE(modernize-use-nullptr): taken for the comparison that the compiler writes here
  friend auto operator<=>(const Stem&, const Stem&) = default;
};

// What a charstring draws and hints once all its subroutines have been run; points are absolute.
struct GlyphProgram {
  enum class Kind : std::uint8_t {
    kMove,   // 1 point
    kLine,   // 1 point
    kCurve,  // 3 points
    kFlex,   // 6 points: two curves that are drawn as a line when they are nearly one
    kClose,
    // From here on other stems count: those of the next entry of hintGroups.
    kHints,
  };

  Point advance;
  std::vector<Kind> kinds;
  std::vector<Point> points;
  // Hundredths of a device pixel, one for each flex.
  std::vector<double> flexDepths;
  std::vector<std::vector<Stem>> hintGroups;
  // Stems whose gaps are to be kept alike, one group after the other.
  std::vector<std::vector<Stem>> counterGroups;

  Path path() const;
};

constexpr std::size_t pointCount(GlyphProgram::Kind kind) {
  constexpr std::array<std::size_t, 6> kCounts{1, 1, 3, 6, 0, 0};
  return kCounts[static_cast<std::size_t>(kind)];
}

}  // namespace quillpress::level3
