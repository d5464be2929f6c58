#include "postscript/lib/pdf/PaintingOperators.h"

namespace quillpress {

void StrokeOperator::execute(Interpreter& /*interpreter*/) {
  converter.endPath("S ");
}

void FillOperator::execute(Interpreter& /*interpreter*/) {
  converter.endPath("f\n");
}

void EofillOperator::execute(Interpreter& /*interpreter*/) {
  converter.endPath("f*\n");
}

}  // namespace quillpress
