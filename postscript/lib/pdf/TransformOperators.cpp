#include "postscript/lib/pdf/TransformOperators.h"

#include <cmath>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

// Told by its kind alone: these operators otherwise take numbers, and an array can be nothing else.
// Pops the matrix operand of the forms that have one.
Ref<ArrayObject> popOptionalMatrix(Interpreter& interpreter) {
  if (as<ArrayObject>(interpreter.operandStack().peek(0)) == nullptr) return nullptr;
  return interpreter.popArrayObject();
}

void fillAndPush(Interpreter& interpreter, const Matrix& matrix, Ref<ArrayObject> destination) {
  matrix.storeTo(*destination);
  interpreter.operandStack().push(std::move(destination));
}

// Makes user space begin with `step`.
void applyToCurrentMatrix(Postscript2Pdf& converter, const Matrix& step) {
  // The state follows even when the matrix was too flat to be written: transform must give what was
  // set.
  converter.writeMatrix(step);
  GraphicsState& state = converter.state();
  state.ctm = step.times(state.ctm);
}

// The two forms of translate, scale and rotate.
template <typename PopStep>
void transformUserSpace(Interpreter& interpreter, Postscript2Pdf& converter, PopStep popStep) {
  Ref<ArrayObject> destination = popOptionalMatrix(interpreter);
  // The numbers are popped below the matrix operand.
  const Matrix step = popStep();
  if (destination) {
    fillAndPush(interpreter, step, std::move(destination));
  } else {
    applyToCurrentMatrix(converter, step);
  }
}

// The two forms of transform and its kin; `map` gets the matrix and the point.
template <typename Map>
void pushMapped(Interpreter& interpreter, Postscript2Pdf& converter, Map map) {
  const Ref<ArrayObject> operand = popOptionalMatrix(interpreter);
  const Point point = popPoint(interpreter);
  const Point mapped = map(operand ? Matrix::of(*operand) : converter.state().ctm, point);
  interpreter.pushReal(mapped.x);
  interpreter.pushReal(mapped.y);
}

}  // namespace

void ConcatOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  const auto* array = as<ArrayObject>(operand);
  if (array == nullptr) THROW_EX("Illegal param to concat operator");
  applyToCurrentMatrix(converter, Matrix::of(*array));
}

void SetmatrixOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  const auto* array = as<ArrayObject>(operand);
  if (array == nullptr) THROW_EX("Matrix param expected for setmatrix operator");
  // PDF can only multiply, so what is written leads from the matrix that is to the one that is wanted.
  const Matrix wanted = Matrix::of(*array);
  converter.writeMatrix(wanted.times(converter.state().ctm.inverse()));
  converter.state().ctm = wanted;
}

void CurrentmatrixOperator::execute(Interpreter& interpreter) {
  fillAndPush(interpreter, converter.state().ctm, interpreter.popArrayObject());
}

void DefaultmatrixOperator::execute(Interpreter& interpreter) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  auto* array = as<ArrayObject>(operand);
  if (array == nullptr) THROW_EX("Illegal param type to defaultmatrix");
  fillAndPush(interpreter, converter.defaultMatrix(), array);
}

void TranslateOperator::execute(Interpreter& interpreter) {
  transformUserSpace(interpreter, converter, [&] {
    const Point offset = popPoint(interpreter);
    return Matrix{1, 0, 0, 1, offset.x, offset.y};
  });
}

void ScaleOperator::execute(Interpreter& interpreter) {
  transformUserSpace(interpreter, converter, [&] {
    const Point factors = popPoint(interpreter);
    return Matrix{factors.x, 0, 0, factors.y, 0, 0};
  });
}

void RotateOperator::execute(Interpreter& interpreter) {
  transformUserSpace(interpreter, converter, [&] {
    // The ten decimals of pi again, so that rotate gives the matrix that sin and cos would.
    const double radians = popNumber(interpreter) * kPi / 180.0;
    const double cosine = std::cos(radians);
    const double sine = std::sin(radians);
    return Matrix{cosine, sine, -sine, cosine, 0, 0};
  });
}

void TransformOperator::execute(Interpreter& interpreter) {
  pushMapped(interpreter, converter,
             [](const Matrix& matrix, Point point) { return transform(matrix, point); });
}

void ItransformOperator::execute(Interpreter& interpreter) {
  pushMapped(interpreter, converter,
             [](const Matrix& matrix, Point point) { return transform(matrix.inverse(), point); });
}

void DtransformOperator::execute(Interpreter& interpreter) {
  pushMapped(interpreter, converter,
             [](const Matrix& matrix, Point point) { return transformDistance(matrix, point); });
}

void IdtransformOperator::execute(Interpreter& interpreter) {
  pushMapped(interpreter, converter,
             [](const Matrix& matrix, Point point) { return transformDistance(matrix.inverse(), point); });
}

}  // namespace quillpress
