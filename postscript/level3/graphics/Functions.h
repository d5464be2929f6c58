#pragma once

#include <cstddef>

#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/pdf/PdfFile.h"

namespace quillpress::level3 {

// Writes a function dictionary of type 0, 2 or 3. Throws what operators that take functions throw.
ObjectNumber writeFunctionDictionary(Interpreter& interpreter, const Object& dictionary, PdfFile& file);

// All that can be read from a file, or a string's bytes. Throws typecheck, invalidaccess, limitcheck.
std::string bytesOfSource(Interpreter& interpreter, const Object& source, std::size_t most);

}  // namespace quillpress::level3
