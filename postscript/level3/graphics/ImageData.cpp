#include "postscript/level3/graphics/ImageData.h"

#include "postscript/level3/interpreter/ProcedureStreams.h"

namespace quillpress::level3 {

namespace {

// A procedure may leave its own things on the stack; the string is what lies on top.
Object stringFrom(Interpreter& interpreter, const Object& procedure) {
  interpreter.runAndWait(procedure);
  ObjectStack& operands = interpreter.operands();
  if (operands.depth() == 0) raise(ErrorName::kStackUnderflow);
  if (!operands.top().isString()) raise(ErrorName::kTypeCheck);
  if (!operands.top().isReadable()) raise(ErrorName::kInvalidAccess);
  const Object string = operands.top();
  operands.pop();
  return string;
}

}  // namespace

OperandsAside::OperandsAside(Interpreter& interpreter, std::size_t count)
    : interpreter_(interpreter), depth_(interpreter.execution().depth()) {
  interpreter.execution().require(count);
  for (const Object& operand : interpreter.operands().last(count)) interpreter.execution().push(operand);
  interpreter.operands().pop(count);
  interpreter.setOperandsAside(true);
}

SourcePointer imageSource(Interpreter& interpreter, const Object& operand) {
  if (operand.isFile()) return fileOf(operand).sourcePointer();
  if (operand.isString()) return std::make_shared<RepeatedString>(bytesOf(textOf(operand)));
  return std::make_shared<ProcedureSource>(interpreter, [&interpreter, operand]() -> std::optional<Bytes> {
    return bytesOf(textOf(stringFrom(interpreter, operand)));
  });
}

std::vector<SourcePointer> imageSources(Interpreter& interpreter, std::span<const Object> operands) {
  std::vector<SourcePointer> sources;
  for (const Object& operand : operands) sources.push_back(imageSource(interpreter, operand));
  return sources;
}

}  // namespace quillpress::level3
