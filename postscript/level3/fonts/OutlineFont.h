#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "postscript/level3/fonts/FontError.h"
#include "postscript/level3/geometry/Path.h"

namespace quillpress::level3 {

// Numbers a glyph of one font: for TrueType and CFF the font's own glyph index, else the order of arrival. A
// glyph keeps its number as long as the font lives.
using GlyphIndex = std::uint32_t;

// How far a glyph moves the current point when lines run down, and where the origin of vertical writing lies,
// as seen from that of horizontal writing.
struct VerticalMetrics {
  Point advance;
  Point origin;
};

// All in character space: what FontMatrix of the font's dictionary maps to text space. Type 1 glyphs have
// about 1000 units to the em there, TrueType glyphs exactly 1.
struct Glyph {
  Path path;
  Point advance;
  std::optional<VerticalMetrics> vertical;

  Box bounds() const { return path.boundingBox(); }
};

// What a font file in a PDF can be: /FontFile3 of subtype Type1C or CIDFontType0C, or /FontFile2.
enum class FontFileKind : std::uint8_t { kType1C, kCidFontType0C, kTrueType };

// What a subset shall hold.
struct SubsetRequest {
  struct Code {
    std::uint8_t code;
    GlyphIndex glyph;
  };

  // As it stands in the PDF, tag included ("ABCDEF+Times").
  std::string fontName;
  // In any order, repeated or not; glyph 0 of the subset is .notdef in any case.
  std::vector<GlyphIndex> glyphs;
  // For simple fonts: what the font's own encoding (Type 1) or character map (TrueType) says. May be empty.
  std::vector<Code> encoding;
  // Whether it is for a composite font: Type1C becomes CIDFontType0C.
  bool isComposite = false;
  // For a composite font: the CIDs of `glyphs`, above 0 and rising; when there are none, from 1 on. (TrueType
  // has no room for them: the PDF tells what glyph a CID has.)
  std::vector<std::uint16_t> cids = {};
};

struct FontSubset {
  FontFileKind kind = FontFileKind::kType1C;
  std::string bytes;
  // The place of each glyph asked for. One that cannot be read has place 0, where .notdef is; in a
  // CIDFontType0C it is empty, and the glyphs asked for have the places from 1 on, in their order.
  std::unordered_map<GlyphIndex, std::uint16_t> indices;
  // The name that a glyph has in a Type1C subset, by its index there; for the names in /Differences. Names
  // are made unique. Empty for other kinds.
  std::vector<std::string> names;
};

// A font whose glyphs are outlines. Nothing in it is trusted: functions throw FontError where data is broken,
// and their time is bounded.
class OutlineFont {
 public:
  OutlineFont() = default;
  virtual ~OutlineFont() = default;
  OutlineFont(const OutlineFont&) = delete;
  OutlineFont& operator=(const OutlineFont&) = delete;

  // Nothing when there is none of the name (number, CID).
  virtual std::optional<GlyphIndex> glyphNamed(std::string_view name) const;
  virtual std::optional<GlyphIndex> glyphOfCid(std::uint32_t cid) const;

  // One more than the largest number of a glyph.
  virtual std::size_t glyphCount() const = 0;

  // Empty where glyphs have no names.
  virtual std::string glyphName(GlyphIndex glyph) const;

  virtual Glyph glyph(GlyphIndex glyph) const = 0;

  virtual FontSubset subset(const SubsetRequest& request) const = 0;
};

}  // namespace quillpress::level3
