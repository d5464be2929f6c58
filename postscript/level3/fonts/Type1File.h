#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "postscript/level3/fonts/Type1Font.h"

namespace quillpress::level3 {

// A Type 1 font file (.t1, .pfa or .pfb), read without an interpreter: its layout is fixed by custom.
struct Type1File {
  std::string fontName;
  Type1Font::Data data;
  // StandardEncoding unless the file has one of its own; "" where a code has no glyph.
  std::array<std::string, 256> encoding;
  // Names and charstrings, in the file's order.
  std::vector<std::pair<std::string_view, std::string_view>> charstrings;
  // Where they are.
  std::unique_ptr<const std::string> privatePart;
};

Type1File readType1File(std::string_view bytes);

}  // namespace quillpress::level3
