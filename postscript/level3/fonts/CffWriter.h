#pragma once

#include <functional>

#include "postscript/level3/fonts/CharstringPrivate.h"
#include "postscript/level3/fonts/GlyphProgram.h"
#include "postscript/level3/fonts/OutlineFont.h"
#include "postscript/level3/geometry/Matrix.h"

namespace quillpress::level3 {

// A font with charstrings, as the writer of CFF sees it.
struct CffSource {
  struct FontDictionary {
    // Charstring units to text space.
    Matrix matrix{0.001, 0, 0, 0.001, 0, 0};
    const CharstringPrivate* privateData = nullptr;
  };

  std::vector<FontDictionary> fontDictionaries;
  // What stands for missing characters, when the font has it.
  std::optional<GlyphIndex> notdef;
  std::function<GlyphProgram(GlyphIndex)> program;
  // Nothing: glyphs have no names.
  std::function<std::string(GlyphIndex)> name;
  // Nothing: there is only one.
  std::function<std::size_t(GlyphIndex)> fontDictionary;
};

// A Type1C font file, or a CIDFontType0C one for composite fonts. Glyphs that cannot be read are left out.
FontSubset cffSubset(const SubsetRequest& request, const CffSource& source);

}  // namespace quillpress::level3
