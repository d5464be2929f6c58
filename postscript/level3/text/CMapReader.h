#pragma once

#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/text/CMap.h"

namespace quillpress::level3 {

// What begincmap and its like have gathered for a CMap dictionary. Throws invalidfont.
const CMap& cmapOf(Interpreter& interpreter, const Object& dictionary);

// The CMap of a name: the job's own, else one of those below. Throws undefinedresource.
Object findCMap(Interpreter& interpreter, const Object& key);

// A CMap that every job can name: Identity-H and Identity-V, and those of the system's packages. Throws
// undefinedresource.
Object predefinedCMap(Interpreter& interpreter, std::string_view name);

}  // namespace quillpress::level3
