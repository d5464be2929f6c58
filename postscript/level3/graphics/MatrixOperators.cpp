#include "postscript/level3/graphics/Graphics.h"
#include "postscript/level3/graphics/GraphicsOperators.h"
#include "postscript/level3/graphics/MatrixOperands.h"

namespace quillpress::level3 {

namespace {

// -> matrix
void newMatrix(Interpreter& interpreter) {
  interpreter.operands().require(1);
  const Object array = interpreter.memory().newArray(6);
  storeMatrix(interpreter, array, {});
  interpreter.operands().push(array);
}

// The operators below fill the matrix operand and leave it.
void fillOperand(Interpreter& interpreter, const Matrix& matrix) {
  const Object array = interpreter.operands().top();
  requireMatrixRoom(array);
  storeMatrix(interpreter, array, matrix);
}

// matrix -> matrix
void identMatrix(Interpreter& interpreter) {
  fillOperand(interpreter, {});
}
void defaultMatrix(Interpreter& interpreter) {
  fillOperand(interpreter, stateOf(interpreter).device->defaultMatrix);
}
void currentMatrix(Interpreter& interpreter) {
  fillOperand(interpreter, stateOf(interpreter).ctm);
}

// matrix ->
void setMatrix(Interpreter& interpreter) {
  stateOf(interpreter).ctm = matrixOf(interpreter.operands().top());
  interpreter.operands().pop();
}

void initMatrix(Interpreter& interpreter) {
  graphicsOf(interpreter).initMatrix();
}

// matrix1 matrix2 matrix3 -> matrix3
void concatMatrix(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Matrix product = matrixOf(operands.top(2)) * matrixOf(operands.top(1));
  const Object result = operands.top();
  requireMatrixRoom(result);
  storeMatrix(interpreter, result, product);
  operands.pop(2);
  operands.top() = result;
}

// matrix1 matrix2 -> matrix2
void invertMatrix(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const Object result = operands.top();
  requireMatrixRoom(result);
  storeMatrix(interpreter, result, inverseOf(matrixOf(operands.top(1))));
  operands.pop();
  operands.top() = result;
}

// matrix ->
void concat(Interpreter& interpreter) {
  GraphicsState& state = stateOf(interpreter);
  state.ctm = matrixOf(interpreter.operands().top()) * state.ctm;
  interpreter.operands().pop();
}

// `count` numbers change the current matrix; with a matrix above them, that is filled instead and left.
template <typename Make>
void changeMatrix(Interpreter& interpreter, std::size_t count, Make make) {
  ObjectStack& operands = interpreter.operands();
  if (operands.top().isArray()) {
    requireOperands(interpreter, count + 1);
    const Object array = operands.top();
    requireMatrixRoom(array);
    storeMatrix(interpreter, array, make(operands, 1));
    operands.pop(count);
    operands.top() = array;
    return;
  }
  requireOperands(interpreter, count);
  GraphicsState& state = stateOf(interpreter);
  state.ctm = make(operands, 0) * state.ctm;
  operands.pop(count);
}

// x y ->            or  x y matrix -> matrix
void translate(Interpreter& interpreter) {
  changeMatrix(interpreter, 2, [](const ObjectStack& operands, std::size_t first) {
    return Matrix::translation(numberOf(operands.top(first + 1)), numberOf(operands.top(first)));
  });
}
void scale(Interpreter& interpreter) {
  changeMatrix(interpreter, 2, [](const ObjectStack& operands, std::size_t first) {
    return Matrix::scaling(numberOf(operands.top(first + 1)), numberOf(operands.top(first)));
  });
}
// angle ->          or  angle matrix -> matrix
void rotate(Interpreter& interpreter) {
  changeMatrix(interpreter, 1, [](const ObjectStack& operands, std::size_t first) {
    return Matrix::rotation(numberOf(operands.top(first)));
  });
}

// x y -> x' y'      or  x y matrix -> x' y'
template <typename Map>
void mapPoint(Interpreter& interpreter, Map map) {
  ObjectStack& operands = interpreter.operands();
  const bool hasMatrix = operands.top().isArray();
  const std::size_t first = hasMatrix ? 1 : 0;
  requireOperands(interpreter, first + 2);
  const Matrix matrix = hasMatrix ? matrixOf(operands.top()) : stateOf(interpreter).ctm;
  const Point result = map(matrix, Point{numberOf(operands.top(first + 1)), numberOf(operands.top(first))});
  operands.pop(first);
  operands.top(1) = realOf(result.x);
  operands.top(0) = realOf(result.y);
}

void transform(Interpreter& interpreter) {
  mapPoint(interpreter, [](const Matrix& matrix, Point point) { return matrix.apply(point); });
}
void dtransform(Interpreter& interpreter) {
  mapPoint(interpreter, [](const Matrix& matrix, Point point) { return matrix.applyToDistance(point); });
}
void itransform(Interpreter& interpreter) {
  mapPoint(interpreter, [](const Matrix& matrix, Point point) { return inverseOf(matrix).apply(point); });
}
void idtransform(Interpreter& interpreter) {
  mapPoint(interpreter,
           [](const Matrix& matrix, Point point) { return inverseOf(matrix).applyToDistance(point); });
}

constexpr OperatorRow kMatrixOperators[] = {
    {"matrix", "", newMatrix},
    {"identmatrix", "array", identMatrix},
    {"defaultmatrix", "array", defaultMatrix},
    {"currentmatrix", "array", currentMatrix},
    {"setmatrix", "array", setMatrix},
    {"initmatrix", "", initMatrix},
    {"concatmatrix", "array array array", concatMatrix},
    {"invertmatrix", "array array", invertMatrix},
    {"concat", "array", concat},
    {"translate", "num num|array", translate},
    {"scale", "num num|array", scale},
    {"rotate", "num|array", rotate},
    {"transform", "num num|array", transform},
    {"dtransform", "num num|array", dtransform},
    {"itransform", "num num|array", itransform},
    {"idtransform", "num num|array", idtransform},
};

}  // namespace

void addMatrixOperators(Interpreter& interpreter) {
  interpreter.addOperators(kMatrixOperators);
}

}  // namespace quillpress::level3
