#pragma once

#include <string_view>

#include "postscript/lib/interpreter/MemorySet.h"

namespace quillpress {

// The number that a token's text spells, literal; null when the text is no number and hence a name.
// Deliberate: a lone sign is the integer 0, and an exponent may not carry a sign.
Ref<PostscriptObject> numberFromToken(std::string_view text, const MemorySet& memory);

}  // namespace quillpress
