#pragma once

#include <vector>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Whether an operand is a string that holds an encoded number array.
bool isNumberString(const Object& object);

// The numbers of an array or of an encoded number string. Throws typecheck, rangecheck, invalidaccess.
std::vector<double> numbersOfArrayOrString(const Object& object);

}  // namespace quillpress::level3
