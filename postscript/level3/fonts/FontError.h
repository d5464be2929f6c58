#pragma once

#include <stdexcept>

namespace quillpress::level3 {

// A font program or one of its glyphs cannot be read. Whoever asked for the font makes invalidfont of it;
// whoever asked for a glyph may show nothing in its place.
class FontError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quillpress::level3
