#pragma once

#include "postscript/level3/fonts/CidFont.h"
#include "postscript/level3/text/OutlineFace.h"

namespace quillpress::level3 {

// A face for a CIDFont of type 0: charstrings by CID, all at once in GlyphData or one by one in
// GlyphDirectory.
class CidFace final : public OutlineFace {
 public:
  // Throws invalidfont.
  static std::shared_ptr<Face> make(Fonts& fonts, const Object& font);

  CidFace(Fonts& fonts, const Object& font, const std::shared_ptr<OutlineProgram>& program);

 private:
  Object sourceOf(const Object& font, const GlyphKey& key) override;
  std::optional<Found> read(const Object& font, const GlyphKey& key, const Object& source) override;
  bool isNotdef(const GlyphKey& key) const override { return key.code == 0; }

  CidFont& outlines_;
  Name* glyphDirectory_;
};

}  // namespace quillpress::level3
