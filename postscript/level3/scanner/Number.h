#pragma once

#include <optional>
#include <string_view>

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// The number that a token stands for - integer, real or radix number -, or nothing when it is a name.
//
// Integers have 64 bits; one that is too large becomes a real. A radix number may use all 64 bits, so that
// 16#FFFFFFFFFFFFFFFF is -1; a larger one, and a real beyond single precision, throws limitcheck.
std::optional<Object> parseNumber(std::string_view text);

}  // namespace quillpress::level3
