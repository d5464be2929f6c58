#pragma once

#include "postscript/level3/fonts/Type1Font.h"
#include "postscript/level3/text/OutlineFace.h"

namespace quillpress::level3 {

// A face for a font of type 1: charstrings by name, which may come one by one.
class Type1Face final : public OutlineFace {
 public:
  // Throws invalidfont.
  static std::shared_ptr<Face> make(Fonts& fonts, const Object& font);

  Type1Face(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program);

 private:
  Object sourceOf(const Object& font, const GlyphKey& key) override;
  std::optional<Found> read(const Object& font, const GlyphKey& key, const Object& source) override;
  bool isNotdef(const GlyphKey& key) const override;
  void addParts(const Object& charStrings, GlyphIndex index);

  Type1Font& outlines_;
  Name* charStrings_;
  Name* notdef_;
};

// What a Private dictionary says, subroutines included. Throws invalidfont.
CharstringPrivate readPrivate(Interpreter& interpreter, const Object& dictionary);

// The em's share of one unit of character space, by the font's matrix.
double unitOf(const Matrix& matrix);

}  // namespace quillpress::level3
