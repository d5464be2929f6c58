// FontSets of CFF.

#include "postscript/level3/fonts/CffFont.h"
#include "tests/fuzz/support/FontChecks.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

void runCffFonts(Input input) {
  const std::string bytes(input.begin(), input.end());
  try {
    level3::CffFont::fontNames(bytes);
    const level3::CffFont font(bytes);
    checkFont(font, font.isCid() ? Units::kOther : Units::kSame);
    font.glyphNamed("A");
    font.glyphOfCid(font.cidOf(1));
  } catch (const level3::FontError&) {
    // As it shall be.
  }
}

}  // namespace quillpress::fuzz
