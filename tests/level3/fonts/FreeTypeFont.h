#pragma once

#include <ft2build.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>
#include FT_FREETYPE_H

#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3::testing {

// A font as FreeType reads it, to compare with; in the font's own units.
class FreeTypeFont {
 public:
  explicit FreeTypeFont(std::string bytes);
  ~FreeTypeFont();
  FreeTypeFont(const FreeTypeFont&) = delete;
  FreeTypeFont& operator=(const FreeTypeFont&) = delete;

  bool isOpen() const { return face_ != nullptr; }
  unsigned glyphCount() const { return static_cast<unsigned>(face_->num_glyphs); }
  unsigned unitsPerEm() const { return face_->units_per_EM; }
  unsigned glyphNamed(const std::string& name) const;
  unsigned glyphOfCode(FT_Encoding encoding, unsigned long code) const;
  std::string glyphName(unsigned glyph) const;

  // Nothing when FreeType refuses the glyph.
  std::optional<Path> outline(unsigned glyph) const;
  double advance(unsigned glyph) const;

 private:
  std::string bytes_;
  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
};

std::string bytesOfFile(const std::string& path);

// The subpaths in a form that does not depend on how they are closed: without lines back to the start,
// without lines of no length and
// empty subpaths.
std::vector<std::vector<Point>> contoursOf(const Path& path);

// Whether both draw the same, point for point.
bool areNear(const Path& left, const Path& right, double tolerance);

}  // namespace quillpress::level3::testing
