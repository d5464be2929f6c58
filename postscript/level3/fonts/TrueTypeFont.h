#pragma once

#include <array>
#include <map>

#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/fonts/SfntTables.h"

namespace quillpress::level3 {

// A TrueType font as Type 42 fonts and CIDFonts of type 2 carry it. GlyphIndex is the font's own.
class TrueTypeFont final : public OutlineFont {
 public:
  // The strings of sfnts, in order. An odd one's last byte is padding. Tables may be missing, also glyf and
  // loca when glyphs are added.
  explicit TrueTypeFont(const std::vector<std::string>& sfnts);

  // Adds an entry of GlyphDirectory, which goes before what glyf and hmtx have. Its first 2 x metricsCount
  // bytes are metrics: with 2 the advance and left side bearing, with 4 the vertical ones in front of them,
  // with 0 none. An empty entry is a glyph without an outline.
  void add(GlyphIndex glyph, std::string_view entry, int metricsCount = 0);
  bool hasAdded(GlyphIndex glyph) const { return added_.contains(glyph); }

  // The glyphs that a composite is made of, at any depth, that neither glyf has nor have been added.
  std::vector<GlyphIndex> missingParts(GlyphIndex glyph) const;

  unsigned unitsPerEm() const { return unitsPerEm_; }

  // What the font's Unicode cmap maps to the glyph, the lowest when there are several; 0 when nothing does.
  char32_t unicodeOf(GlyphIndex glyph) const;

  // CIDs are glyph indices here.
  std::optional<GlyphIndex> glyphOfCid(std::uint32_t cid) const override;
  std::size_t glyphCount() const override;
  Glyph glyph(GlyphIndex glyph) const override;
  FontSubset subset(const SubsetRequest& request) const override;

 private:
  // How far a glyph moves the current point, and where its outline begins.
  struct Metrics {
    int advance = 0;
    int bearing = 0;
  };
  struct Added {
    std::string outline;
    std::optional<Metrics> horizontal;
    std::optional<Metrics> vertical;
  };

  // Nothing when the font does not have the glyph.
  std::optional<std::string_view> outlineData(GlyphIndex glyph) const;
  std::optional<Metrics> metricsOf(GlyphIndex glyph, std::string_view header, std::string_view table) const;
  // The left side bearing is that of the outline where the font says nothing.
  Metrics horizontalMetrics(GlyphIndex glyph) const;
  std::optional<Metrics> verticalMetrics(GlyphIndex glyph) const;
  bool isReadable(GlyphIndex glyph) const;
  std::vector<GlyphIndex> glyphsWithParts(const SubsetRequest& request) const;

  SfntTables tables_;
  unsigned unitsPerEm_ = 1000;
  bool hasLongPlaces_ = false;
  std::size_t countInTables_ = 0;
  std::map<GlyphIndex, Added> added_;
  mutable std::optional<std::unordered_map<GlyphIndex, char32_t>> characters_;
};

}  // namespace quillpress::level3
