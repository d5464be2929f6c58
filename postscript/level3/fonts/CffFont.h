#pragma once

#include <array>
#include <memory>

#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

struct CffTables;

// One font of a CFF FontSet, with names or with CIDs. GlyphIndex is the font's own.
class CffFont final : public OutlineFont {
 public:
  // The names of the fonts that a FontSet holds.
  static std::vector<std::string> fontNames(std::string_view bytes);

  explicit CffFont(std::string bytes, std::size_t font = 0);
  ~CffFont() override;

  const std::string& name() const;
  bool isCid() const;
  // Character space to text space; FontMatrix of the font's dictionary.
  const Matrix& matrix() const;
  const Box& bounds() const;
  // The CID of a glyph; of a font with names, the glyph's own number.
  std::uint32_t cidOf(GlyphIndex glyph) const;
  // The font's own encoding: a glyph for each code, 0 where it has none.
  const std::array<GlyphIndex, 256>& encoding() const;

  std::optional<GlyphIndex> glyphNamed(std::string_view name) const override;
  std::optional<GlyphIndex> glyphOfCid(std::uint32_t cid) const override;
  std::size_t glyphCount() const override;
  std::string glyphName(GlyphIndex glyph) const override;
  Glyph glyph(GlyphIndex glyph) const override;
  FontSubset subset(const SubsetRequest& request) const override;

 private:
  std::unique_ptr<const CffTables> tables_;
};

}  // namespace quillpress::level3
