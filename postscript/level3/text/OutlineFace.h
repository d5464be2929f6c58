#pragma once

#include <unordered_map>

#include "postscript/level3/text/RecentGlyphs.h"

namespace quillpress::level3 {

class Fonts;

// A face whose glyphs are outlines. Derived classes find the glyphs in the font's dictionary.
class OutlineFace : public Face {
 public:
  OutlineFace(Fonts& fonts, const Object& font, std::shared_ptr<OutlineProgram> program);

  FaceGlyph& glyph(const Object& font, const GlyphKey& key) final;
  Box boundsOf(const FaceGlyph& glyph, const Matrix& toDevice) const final;
  void paint(FaceGlyph& glyph, const GlyphPlace& place, Ink& ink) final;
  void appendOutline(FaceGlyph& glyph, const GlyphPlace& place, Path& path) final;
  void trace(Tracer& tracer) const final;

 protected:
  // What the font has for the glyph, or null; cheap, since it is asked for each time that one is shown.
  virtual Object sourceOf(const Object& font, const GlyphKey& key) = 0;
  // The glyph of the program, or what stands in for one that is missing.
  struct Found {
    GlyphIndex index = 0;
    bool isStandIn = false;
  };
  // Nothing when there is neither. `source` is what sourceOf() said.
  virtual std::optional<Found> read(const Object& font, const GlyphKey& key, const Object& source) = 0;
  // What the font's own tables say that the glyph means.
  virtual std::u32string ownText(GlyphIndex /*index*/) { return {}; }
  virtual bool isNotdef(const GlyphKey& key) const = 0;

  Fonts& fonts() { return fonts_; }
  OutlineProgram& program() { return *program_; }

 private:
  static std::uint64_t identityOf(const GlyphKey& key);
  void measure(const Object& font, const GlyphKey& key, FaceGlyph& glyph);
  void applyMetrics(const Object& font, const GlyphKey& key, FaceGlyph& glyph);
  void applyDeviceProcedure(const Object& font, const GlyphKey& key, FaceGlyph& glyph);
  std::u32string meaningOf(const Object& font, const GlyphKey& key, GlyphIndex index);
  bool hasCode(const Object& font, const GlyphKey& key);

  std::shared_ptr<OutlineProgram> program_;
  // Outlined glyphs are drawn with lines of this width; below 0 when they are filled.
  double strokeWidth_ = -1;
  Fonts& fonts_;
  std::unordered_map<std::uint64_t, FaceGlyph> glyphs_;
  RecentGlyphs<FaceGlyph> recent_;
};

}  // namespace quillpress::level3
