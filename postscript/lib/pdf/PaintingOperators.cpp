#include "postscript/lib/pdf/PaintingOperators.h"

#include <array>

#include "postscript/lib/base/Ex.h"

namespace quillpress {

// Written with or without a path: PDF readers take an operator without one for nothing.
void StrokeOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "S ");
}

void FillOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "f\n");
}

void EofillOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "f*\n");
}

// With n, since PDF clips only with a painting operator; the path is gone afterwards, unlike in
// PostScript.
void ClipOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "W n ");
}

void EoclipOperator::execute(Interpreter& /*interpreter*/) {
  converter.path().writeEnd(converter.content(), "W* n ");
}

void RectclipOperator::execute(Interpreter& interpreter) {
  const Point size = popPoint(interpreter);
  const Point corner = popPoint(interpreter);
  // PDF would accept it, and turn the rectangle inside out for readers that count windings.
  if (size.x < 0 || size.y < 0) THROW_EX("Negative widths or height not supported by rectclip");
  converter.content().appendNumbers(std::array{corner.x, corner.y, size.x, size.y}, " re W n\n");
  converter.path().noteNothingWritten();
}

// PDF can only narrow a clip; what a job drew outside of its own would have to be kept until here.
void InitclipOperator::execute(Interpreter& /*interpreter*/) {}

void ClippathOperator::execute(Interpreter& /*interpreter*/) {}

}  // namespace quillpress
