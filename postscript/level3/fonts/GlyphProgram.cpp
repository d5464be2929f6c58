#include "postscript/level3/fonts/GlyphProgram.h"

namespace quillpress::level3 {

Path GlyphProgram::path() const {
  Path path;
  const Point* point = points.data();
  for (const Kind kind : kinds) {
    switch (kind) {
      case Kind::kMove:
        path.moveTo(point[0]);
        break;
      case Kind::kLine:
        path.lineTo(point[0]);
        break;
      case Kind::kFlex:
        path.curveTo(point[0], point[1], point[2]);
        path.curveTo(point[3], point[4], point[5]);
        break;
      case Kind::kCurve:
        path.curveTo(point[0], point[1], point[2]);
        break;
      case Kind::kClose:
        path.close();
        break;
      case Kind::kHints:
        break;
    }
    point += pointCount(kind);
  }
  return path;
}

}  // namespace quillpress::level3
