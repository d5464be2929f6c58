#pragma once

#include <string_view>

namespace quillpress {

// The start-up prologue: three PostScript texts that run, in this order, before any job text. Each ends with
// a line feed, because a token is only complete once a delimiter follows it.

// One- and two-letter names for common operators, defined in the current dictionary. Each is the value that
// the operator's name has now, so an operator that is replaced later keeps its old abbreviation.
extern const std::string_view kAbbreviationsText;

// The array of 256 glyph names that the language calls StandardEncoding; /.notdef where a code has no glyph.
extern const std::string_view kStandardEncodingText;

// The font that stands in for every font a job asks for without having defined it. REQUIRES: StandardEncoding
// is defined.
extern const std::string_view kHelveticaText;

}  // namespace quillpress
