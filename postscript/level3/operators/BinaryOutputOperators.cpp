#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/operators/LanguageOperators.h"
#include "postscript/level3/operators/SequenceWriter.h"

namespace quillpress::level3 {

namespace {

// Formats 1 and 3 write the high byte first, 2 and 4 the low one; 0 writes nothing in binary.
ByteOrder orderOf(int format) {
  if (format == 0) raise(ErrorName::kUndefined);
  return format % 2 == 1 ? ByteOrder::kHighFirst : ByteOrder::kLowFirst;
}

void write(Interpreter& interpreter, ByteSink& sink) {
  const ObjectStack& operands = interpreter.operands();
  const auto tag = static_cast<std::uint8_t>(countOf(operands.top(0), 255));
  SequenceWriter writer(orderOf(interpreter.scanner().objectFormat()));
  if (!sink.write(writer.write(operands.top(1), tag))) raise(ErrorName::kIoError);
}

// any tag ->
void printobject(Interpreter& interpreter) {
  write(interpreter, interpreter.output());
  interpreter.operands().pop(2);
}

// file any tag ->
void writeobject(Interpreter& interpreter) {
  write(interpreter, sinkOf(interpreter.operands().top(2)));
  interpreter.operands().pop(3);
}

constexpr OperatorRow kBinaryOutputOperators[] = {
    {"printobject", "count any int", printobject},
    {"writeobject", "count file any int", writeobject},
};

}  // namespace

void addBinaryOutputOperators(Interpreter& interpreter) {
  interpreter.addOperators(kBinaryOutputOperators);
}

}  // namespace quillpress::level3
