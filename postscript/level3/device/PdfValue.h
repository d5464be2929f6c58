#pragma once

#include <string>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// A value of the job as PDF writes it; null for what PDF has no word for.
std::string pdfValueOf(const Object& object);

}  // namespace quillpress::level3
