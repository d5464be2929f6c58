#include "postscript/lib/pdf/LineOperators.h"

#include "postscript/lib/base/Ex.h"

namespace quillpress {

namespace {

constexpr std::size_t kMaxDashText = 1000;

// Pops an integer and writes it with an operator.
void writeStyle(Interpreter& interpreter, PageContent& content, const char* wrongTypeMessage,
                std::string_view operatorText) {
  const Ref<PostscriptObject> operand = interpreter.operandStack().pop();
  const auto* style = as<IntegerObject>(operand);
  // A real is refused even where it is whole: the number is written as it stands.
  if (style == nullptr) THROW_EX(wrongTypeMessage);
  content.append(std::to_string(style->value));
  content.append(operatorText);
}

// A buffer once held this text; its size is what jobs with long patterns were refused by.
std::string dashText(const ArrayObject& dashes) {
  std::string text("[");
  const auto count = static_cast<std::ptrdiff_t>(dashes.count());
  for (std::ptrdiff_t i = 0; i < count; ++i) {
    if (i > 0) text.push_back(' ');
    appendNumber(text, dashes.number(i));
    // No more of a hostile array than it takes to know.
    if (text.size() > kMaxDashText) break;
  }
  text.append("] ");
  // Kept: the name in the text is no operator's; the field knows it so (lines/setdash.ps).
  if (text.size() > kMaxDashText) THROW_EX("Out of buffer space in setdashlimit");
  return text;
}

}  // namespace

// Written even when it is the same: the state starts at 0, but a PDF page at 1.
void SetlinewidthOperator::execute(Interpreter& interpreter) {
  const double width = popNumber(interpreter);
  converter.state().lineWidth = width;
  converter.content().appendNumber(width);
  converter.content().append(" w ");
}

void CurrentlinewidthOperator::execute(Interpreter& interpreter) {
  interpreter.pushReal(converter.state().lineWidth);
}

void SetlinecapOperator::execute(Interpreter& interpreter) {
  writeStyle(interpreter, converter.content(), "Illegal param type for setlinecap", " J ");
}

void SetlinejoinOperator::execute(Interpreter& interpreter) {
  writeStyle(interpreter, converter.content(), "Illegal param type for setlinejoin", " j ");
}

void SetmiterlimitOperator::execute(Interpreter& interpreter) {
  const double limit = popNumber(interpreter);
  converter.content().appendNumber(limit);
  converter.content().append(" M ");
}

void SetdashOperator::execute(Interpreter& interpreter) {
  // Nothing is written before both operands are known to be right.
  const double offset = popNumber(interpreter);
  const Ref<ArrayObject> dashes = interpreter.popArrayObject();
  converter.content().append(dashText(*dashes));
  converter.content().appendNumber(offset);
  converter.content().append(" d\n");
}

}  // namespace quillpress
