#pragma once

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// `copy` for two composites: array, string, dictionary or graphics state.
void copyComposite(Interpreter& interpreter);

// Copies the elements or bytes of `from` into the start of `to`, which may lie in the same storage.
// REQUIRES: both arrays or both strings, `to` writable and at least as long. Throws invalidaccess when a
// local value would come into a global array.
void copyElements(VirtualMemory& memory, const Object& from, const Object& to);

}  // namespace quillpress::level3
