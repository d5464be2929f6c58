#pragma once

#include "postscript/level3/fonts/TrueTypeFont.h"
#include "postscript/level3/text/OutlineFace.h"

namespace quillpress::level3 {

// A face for TrueType outlines: a font of type 42, whose CharStrings map names to glyph numbers, or a CIDFont
// of type 2, whose CIDMap does so for CIDs. Glyphs may also come one by one in GlyphDirectory.
class Type42Face final : public OutlineFace {
 public:
  // Throws invalidfont.
  static std::shared_ptr<Face> make(Fonts& fonts, const Object& font);

  Type42Face(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program);

 private:
  Object sourceOf(const Object& font, const GlyphKey& key) override;
  std::optional<Found> read(const Object& font, const GlyphKey& key, const Object& source) override;
  std::u32string ownText(GlyphIndex index) override;
  bool isNotdef(const GlyphKey& key) const override;

  bool hasName(const Object& font, const GlyphKey& key) const;
  std::optional<GlyphIndex> numberOf(const Object& font, const GlyphKey& key);
  std::optional<GlyphIndex> numberOfCid(const Object& font, std::uint32_t cid);
  void addParts(const Object& font, GlyphIndex index);

  TrueTypeFont& outlines_;
  Name* charStrings_;
  Name* glyphDirectory_;
  Name* cidMap_;
  Name* notdef_;
  int metricsCount_;
};

}  // namespace quillpress::level3
