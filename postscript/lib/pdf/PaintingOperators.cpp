#include "postscript/lib/pdf/PaintingOperators.h"

#include <array>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

void StrokeOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "S ");
}

void FillOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "f\n");
}

void EofillOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "f*\n");
}

void ClipOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "W n ");
}

void EoclipOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "W* n ");
}

void RectclipOperator::execute(Interpreter& interpreter) {
  const Point size = popPoint(interpreter);
  const Point corner = popPoint(interpreter);
  if (size.x < 0 || size.y < 0) THROW_EX("Negative widths or height not supported by rectclip");
  converter.content().appendNumbers(std::array{corner.x, corner.y, size.x, size.y}, " re W n\n");
  converter.path().noteNothingWritten();
}

void InitclipOperator::execute(Interpreter& /*interpreter*/) {}

void ClippathOperator::execute(Interpreter& /*interpreter*/) {}

}  // namespace quillpress
