#pragma once

#include "postscript/level3/fonts/CffFont.h"
#include "postscript/level3/text/OutlineFace.h"

namespace quillpress::level3 {

// A face for a font out of a FontSet: the program is there as a whole, glyphs are found by name or by CID.
class CffFace final : public OutlineFace {
 public:
  // Throws invalidfont.
  static std::shared_ptr<Face> make(Fonts& fonts, const Object& font);

  CffFace(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program);

 private:
  Object sourceOf(const Object& font, const GlyphKey& key) override;
  std::optional<Found> read(const Object& font, const GlyphKey& key, const Object& source) override;
  bool isNotdef(const GlyphKey& key) const override;

  CffFont& outlines_;
  Name* charStrings_;
  Name* notdef_;
};

// The entries by which a font's dictionary tells its FontSet's bytes, and its place among the fonts there.
inline constexpr std::string_view kFontSetKey = ".FontSet";
inline constexpr std::string_view kFontSetPlaceKey = ".FontSetPlace";

}  // namespace quillpress::level3
