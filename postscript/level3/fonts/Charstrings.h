#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "postscript/level3/fonts/FontError.h"
#include "postscript/level3/fonts/GlyphProgram.h"

namespace quillpress::level3 {

// How deeply subroutines may call each other. The formats allow 10.
inline constexpr int kDeepestCall = 24;

// Subroutines by number, as plain bytes.
struct SubroutineTable {
  std::size_t count = 0;
  std::function<std::string_view(std::size_t)> at;
};

// What a charstring refers to.
struct CharstringContext {
  SubroutineTable local;
  SubroutineTable global;
  double defaultWidthX = 0;
  double nominalWidthX = 0;
  // Of a multiple-master instance.
  std::span<const double> weightVector;
  // The plain charstring that StandardEncoding has for a code; for accented characters.
  std::function<std::string(std::uint8_t)> standardGlyph;
};

// Run a charstring, which is not encrypted. Depth, operands and steps are bounded; whatever cannot be run is
// a FontError.
GlyphProgram runType1Charstring(std::string_view charstring, const CharstringContext& context);
GlyphProgram runType2Charstring(std::string_view charstring, const CharstringContext& context);

// The codes of the two characters that an accented one (seac) is made of, base first; empty for others.
std::string accentPartsOfType1(std::string_view charstring, const CharstringContext& context);

// Writes a glyph as a Type 2 charstring without subroutines.
std::string type2Charstring(const GlyphProgram& program, double defaultWidthX, double nominalWidthX);

}  // namespace quillpress::level3
