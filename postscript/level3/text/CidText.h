#pragma once

#include <string>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// What a CID means in the character collection that its font names in CIDSystemInfo, from the tables of the
// system's package poppler-data. Empty where these do not tell.
std::u32string textOfCid(Interpreter& interpreter, const Object& font, std::uint32_t cid);

}  // namespace quillpress::level3
