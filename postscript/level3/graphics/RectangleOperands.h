#pragma once

#include "postscript/level3/geometry/Path.h"
#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

// The rectangles that rectfill, rectstroke and rectclip take, four numbers on the stack or any number of them
// in an array or number string, whose topmost operand is `first` below the top. `operands` says how many they
// were.
struct RectangleOperands {
  Path path;  // in device space
  std::size_t operands = 0;
};
RectangleOperands rectangleOperands(Interpreter& interpreter, std::size_t first, const Matrix& matrix);

}  // namespace quillpress::level3
