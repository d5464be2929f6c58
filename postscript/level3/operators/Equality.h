#pragma once

#include "postscript/level3/objects/Object.h"

namespace quillpress::level3 {

// What `eq` says: numbers by value, strings and names by their text, other composites when they are the same
// piece of the same storage. Throws invalidaccess for a string that may not be read.
bool areEqual(const Object& a, const Object& b);

}  // namespace quillpress::level3
