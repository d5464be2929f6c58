// Charstrings of both types: subroutines and glyphs, each ended by a form feed. The first byte tells the
// type.

#include "postscript/level3/fonts/Type1Font.h"
#include "tests/fuzz/support/FontChecks.h"
#include "tests/fuzz/support/Target.h"

namespace quillpress::fuzz {

namespace {

constexpr char kEnd = '\f';

std::vector<std::string> piecesOf(Input input) {
  std::vector<std::string> pieces(1);
  for (const std::uint8_t byte : input) {
    if (byte == kEnd) {
      pieces.emplace_back();
    } else {
      pieces.back() += static_cast<char>(byte);
    }
  }
  return pieces;
}

}  // namespace

void runCharstrings(Input input) {
  if (input.empty()) return;
  level3::Type1Font::Data data;
  data.privateData.lenIV = -1;
  data.privateData.charstringType = input[0] % 2 == 0 ? 1 : 2;
  data.weightVector = {0.25, 0.75};
  // The glyphs go by names of StandardEncoding, so that accented ones can find their parts.
  constexpr std::string_view kNames[] = {"A", "B", "grave", ".notdef"};
  std::vector<std::string> pieces = piecesOf(input.subspan(1));
  std::vector<std::string> glyphs;
  while (!pieces.empty() && glyphs.size() < std::size(kNames)) {
    glyphs.push_back(std::move(pieces.back()));
    pieces.pop_back();
  }
  data.privateData.subrs = std::move(pieces);
  level3::Type1Font font(std::move(data));
  for (std::size_t i = 0; i < glyphs.size(); ++i) font.add(kNames[i], glyphs[i]);
  try {
    font.missingParts(0);
  } catch (const level3::FontError&) {
    // The charstring cannot be run.
  }
  checkFont(font, Units::kSame);
}

}  // namespace quillpress::fuzz
