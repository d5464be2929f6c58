#include "postscript/lib/operators/MatrixOperators.h"

#include "postscript/lib/objects/Matrix.h"

namespace quillpress {

void MatrixOperator::execute(Interpreter& interpreter) {
  const Ref<ArrayObject> array = interpreter.memory().newArray();
  const Matrix identity;
  for (const double value : {identity.a, identity.b, identity.c, identity.d, identity.tx, identity.ty}) {
    array->elements().push(make<RealObject>(value));
  }
  interpreter.operandStack().push(array);
}

// The very operand is filled and comes back: jobs keep one array for this.
void IdentmatrixOperator::execute(Interpreter& interpreter) {
  Ref<ArrayObject> array = interpreter.popArrayObject();
  Matrix().storeTo(*array);
  interpreter.operandStack().push(std::move(array));
}

void ConcatmatrixOperator::execute(Interpreter& interpreter) {
  Ref<ArrayObject> product = interpreter.popArrayObject();
  const Ref<ArrayObject> second = interpreter.popArrayObject();
  const Ref<ArrayObject> first = interpreter.popArrayObject();
  // Read before it is stored, since the product may go into one of the factors.
  Matrix::of(*first).times(Matrix::of(*second)).storeTo(*product);
  interpreter.operandStack().push(std::move(product));
}

}  // namespace quillpress
