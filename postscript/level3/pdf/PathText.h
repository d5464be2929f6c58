#pragma once

#include <cstddef>
#include <string>

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

// The coordinates that content is written in: a space that device space is mapped to, and places after the
// point.
struct ContentSpace {
  Matrix fromDevice;
  int decimals = 2;

  // With as many places as tell an eighth of a device pixel apart.
  static ContentSpace forMatrix(const Matrix& fromDevice);
};

// Appends "x y m" and so on, one blank or line end after each operator. Rectangles become `re`; a last move
// that nothing follows, and lines that end where they begin once rounded, are left out where `isFilled` says
// that nobody would see them. Gives back how many subpaths there are.
std::size_t appendPath(std::string& text, const Path& path, const ContentSpace& space, bool isFilled);

}  // namespace quillpress::level3
