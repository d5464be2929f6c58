#include "postscript/lib/pdf/PaintingOperators.h"

#include "postscript/lib/base/Ex.h"

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

void ClipOperator::execute(Interpreter& /*interpreter*/) {
  converter.endPath("W n ");
}

void EoclipOperator::execute(Interpreter& /*interpreter*/) {
  converter.endPath("W* n ");
}

void RectclipOperator::execute(Interpreter& interpreter) {
  const Point size = popPoint(interpreter);
  const Point corner = popPoint(interpreter);
  if (size.x < 0 || size.y < 0) THROW_EX("Negative widths or height not supported by rectclip");
  PageContent& content = converter.content();
  content.appendNumber(corner.x);
  for (const double number : {corner.y, size.x, size.y}) {
    content.append(" ");
    content.appendNumber(number);
  }
  content.append(" re W n\n");
  converter.noteNothingWritten();
}

void InitclipOperator::execute(Interpreter& /*interpreter*/) {}

void ClippathOperator::execute(Interpreter& /*interpreter*/) {}

}  // namespace quillpress
