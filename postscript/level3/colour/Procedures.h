#pragma once

#include <span>
#include <string>

#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// Runs a procedure of the job on objects: inputs pushed in order, results taken from the stack in order.
// Throws stackunderflow or typecheck when the results are not there or no numbers.
void evaluate(Interpreter& interpreter, const Object& procedure, std::span<const Object> inputs,
              std::span<double> results);

// The same on real numbers.
void evaluate(Interpreter& interpreter, const Object& procedure, std::span<const double> inputs,
              std::span<double> results);

// The procedure in the words of PDF's calculator functions, "{ ... }"; empty when it uses anything else.
std::string calculatorText(Interpreter& interpreter, const Object& procedure);

}  // namespace quillpress::level3
