// TrueType fonts. The first byte tells how many bytes at the end are a glyph that is added to the font.

#include "postscript/level3/fonts/TrueTypeFont.h"
#include "tests/fuzz/support/FontChecks.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

void runTrueTypeFonts(Input input) {
  if (input.empty()) return;
  const std::size_t added = input[0];
  const std::string bytes(input.begin() + 1, input.end());
  const std::size_t end = added < bytes.size() ? bytes.size() - added : bytes.size();
  try {
    level3::TrueTypeFont font({bytes.substr(0, end / 4 * 2), bytes.substr(end / 4 * 2, end - end / 4 * 2)});
    if (end < bytes.size()) font.add(1, std::string_view(bytes).substr(end), bytes[0] % 2 == 0 ? 0 : 4);
    font.unicodeOf(1);
    checkFont(font, Units::kSame);
    font.missingParts(1);
  } catch (const level3::FontError&) {
    // As it shall be.
  }
}

}  // namespace quillpress::fuzz
