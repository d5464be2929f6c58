#pragma once

#include <unordered_map>

#include "postscript/level3/text/RecentGlyphs.h"

namespace quillpress::level3 {

class Fonts;
class Type3Program;

// A face whose glyphs are procedures of the job. A glyph that is a mere shape is drawn once, at a size of its
// own, and is a character of a Type 3 font from then on; one with colours is drawn each time, since it may
// look different each time, and equal drawings become one character.
class Type3Face final : public Face {
 public:
  // Throws invalidfont.
  Type3Face(Fonts& fonts, const Object& font);

  FaceGlyph& glyph(const Object& font, const GlyphKey& key) override;
  Box boundsOf(const FaceGlyph& glyph, const Matrix& toDevice) const override;
  void paint(FaceGlyph& glyph, const GlyphPlace& place, Ink& ink) override;
  void appendOutline(FaceGlyph& glyph, const GlyphPlace& place, Path& path) override;

 private:
  struct Drawn {
    FaceGlyph glyph;
    bool isMask = false;
  };
  using Key = std::pair<Name*, std::uint32_t>;
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<Name*>()(key.first) ^ std::hash<std::uint32_t>()(key.second);
    }
  };

  Key identityOf(const GlyphKey& key) const;
  void draw(const Object& font, const GlyphKey& key, Drawn& drawn);
  void runProcedure(const Object& font, const GlyphKey& key);

  Fonts& fonts_;
  Type3Program* program_;
  Matrix matrix_;
  Matrix inverse_;
  bool hasGlyphProcedure_;
  ObjectNumber home_ = 0;  // see Type3Program::use()
  std::unordered_map<Key, Drawn, KeyHash> glyphs_;
  RecentGlyphs<Drawn> recent_;
};

}  // namespace quillpress::level3
