#include "postscript/level3/fonts/OutlineFont.h"

namespace quillpress::level3 {

std::optional<GlyphIndex> OutlineFont::glyphNamed(std::string_view /*name*/) const {
  return std::nullopt;
}

std::optional<GlyphIndex> OutlineFont::glyphOfCid(std::uint32_t /*cid*/) const {
  return std::nullopt;
}

std::string OutlineFont::glyphName(GlyphIndex /*glyph*/) const {
  return {};
}

}  // namespace quillpress::level3
