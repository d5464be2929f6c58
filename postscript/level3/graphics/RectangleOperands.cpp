#include "postscript/level3/graphics/RectangleOperands.h"

#include "postscript/level3/graphics/MatrixOperands.h"
#include "postscript/level3/graphics/NumberStrings.h"

namespace quillpress::level3 {

namespace {

// Anticlockwise in user space, whatever the signs of width and height: as filling with the nonzero rule needs
// it when rectangles overlap.
void appendRectangle(Path& path, const Matrix& matrix, double x, double y, double width, double height) {
  const Box box = Box::ofCorners({x, y}, {x + width, y + height});
  path.moveTo(matrix.apply({box.left, box.bottom}));
  path.lineTo(matrix.apply({box.right, box.bottom}));
  path.lineTo(matrix.apply({box.right, box.top}));
  path.lineTo(matrix.apply({box.left, box.top}));
  path.close();
}

}  // namespace

RectangleOperands rectangleOperands(Interpreter& interpreter, std::size_t first, const Matrix& matrix) {
  const ObjectStack& operands = interpreter.operands();
  RectangleOperands result;
  requireOperands(interpreter, first + 1);
  const Object& top = operands.top(first);
  if (top.isArray() || top.isString()) {
    const std::vector<double> numbers = numbersOfArrayOrString(top);
    if (numbers.size() % 4 != 0) raise(ErrorName::kTypeCheck);
    for (std::size_t index = 0; index < numbers.size(); index += 4) {
      appendRectangle(result.path, matrix, numbers[index], numbers[index + 1], numbers[index + 2],
                      numbers[index + 3]);
    }
    result.operands = 1;
    return result;
  }
  requireOperands(interpreter, first + 4);
  appendRectangle(result.path, matrix, numberOf(operands.top(first + 3)), numberOf(operands.top(first + 2)),
                  numberOf(operands.top(first + 1)), numberOf(operands.top(first)));
  result.operands = 4;
  return result;
}

}  // namespace quillpress::level3
