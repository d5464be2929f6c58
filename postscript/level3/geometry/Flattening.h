#pragma once

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

// The path with curves replaced by lines that stay within `flatness` of them, in units of the path's space.
Path flattened(const Path& path, double flatness);

// Appends the lines for one curve; its beginning is the path's current point.
void appendFlattened(Path& path, Point begin, Point control1, Point control2, Point end, double flatness);

}  // namespace quillpress::level3
