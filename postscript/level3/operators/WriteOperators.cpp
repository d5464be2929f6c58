#include <string>

#include "postscript/level3/operators/FileOperands.h"
#include "postscript/level3/operators/LanguageOperators.h"

namespace quillpress::level3 {

namespace {

void write(ByteSink& sink, Bytes bytes) {
  if (!sink.write(bytes)) raise(ErrorName::kIoError);
}

// file int ->
// The low eight bits count.
void writeByte(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  const auto byte = static_cast<Byte>(operands.top().asInteger() & 0xff);
  write(sinkOf(operands.top(1)), {&byte, 1});
  operands.pop(2);
}

// file string ->
void writestring(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ByteSink& sink = sinkOf(operands.top(1));
  requireReadable(operands.top());
  write(sink, bytesOf(textOf(operands.top())));
  operands.pop(2);
}

// file string ->
void writehexstring(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  ByteSink& sink = sinkOf(operands.top(1));
  requireReadable(operands.top());
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const Byte byte : bytesOf(textOf(operands.top()))) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0xf];
  }
  write(sink, bytesOf(text));
  operands.pop(2);
}

// file ->
// A file that is read is read to its end.
void flushfile(Interpreter& interpreter) {
  const Object& operand = interpreter.operands().top();
  const File& file = fileOf(operand);
  if (!file.isClosed()) {
    if (file.isReadable()) {
      file.source().drain();
      if (file.source().hasFailed()) raise(ErrorName::kIoError);
      file.source().close();
    } else if (!file.sink().flush()) {
      raise(ErrorName::kIoError);
    }
  }
  interpreter.operands().pop();
}

constexpr OperatorRow kWriteOperators[] = {
    {"write", "count file int", writeByte},
    {"writestring", "count file string", writestring},
    {"writehexstring", "count file string", writehexstring},
    {"flushfile", "file", flushfile},
};

}  // namespace

void addWriteOperators(Interpreter& interpreter) {
  interpreter.addOperators(kWriteOperators);
}

}  // namespace quillpress::level3
