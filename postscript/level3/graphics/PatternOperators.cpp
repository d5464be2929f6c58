#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

// dict matrix -> pattern
void makePattern(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Matrix matrix = matrixOf(operands.top());
  const Object pattern = graphicsOf(interpreter).patterns().make(operands.top(1), matrix);
  operands.pop();
  operands.top() = pattern;
}

constexpr OperatorRow kPatternOperators[] = {{"makepattern", "dict array", makePattern}};

}  // namespace

void addPatternOperators(Interpreter& interpreter) {
  interpreter.addOperators(kPatternOperators);
}

}  // namespace quillpress::level3
