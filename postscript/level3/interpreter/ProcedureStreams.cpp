#include "postscript/level3/interpreter/ProcedureStreams.h"

#include <algorithm>
#include <cstring>

#include "postscript/level3/streams/CallbackStreams.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

Object popString(Interpreter& interpreter) {
  ObjectStack& operands = interpreter.operands();
  if (operands.depth() == 0) raise(ErrorName::kStackUnderflow);
  const Object string = operands.top();
  if (!string.isString()) raise(ErrorName::kTypeCheck);
  operands.pop();
  return string;
}

// Strings that a procedure takes full and gives back to be filled.
class ProcedureSink final : public ByteSink {
 public:
  ProcedureSink(Interpreter& interpreter, const Object& procedure)
      : interpreter_(interpreter), procedure_(procedure) {}

 private:
  void take(Bytes bytes) override;
  void handOn() override {
    if (used_ > 0) exchange(true);
  }
  void release() override {
    if (isOpen()) exchange(false);
  }
  void exchange(bool moreToCome);

  Interpreter& interpreter_;
  Object procedure_;
  std::shared_ptr<Rooted> string_;  // between two calls nobody else may know it
  std::size_t used_ = 0;
};

// Hands over what has been written. Before the first write that is nothing, and asks for a string.
void ProcedureSink::exchange(bool moreToCome) {
  Interpreter& interpreter = interpreter_;
  ObjectStack& operands = interpreter.operands();
  operands.require(2);
  const std::shared_ptr<Rooted> full = std::move(string_);
  const auto used = static_cast<std::uint32_t>(std::exchange(used_, 0));
  operands.push(full ? full->value.interval(0, used) : interpreter.memory().newString(std::size_t{0}));
  operands.push(Object::boolean(moreToCome));
  interpreter.runAndWait(procedure_);
  const Object string = popString(interpreter);
  if (!moreToCome) return;
  if (!string.isWritable()) raise(ErrorName::kInvalidAccess);
  string_ = std::make_shared<Rooted>(interpreter.memory(), string);
}

void ProcedureSink::take(Bytes bytes) {
  while (!bytes.empty() && isOpen()) {
    if (!string_ || used_ == string_->value.length()) exchange(true);
    if (!string_) return;
    const std::size_t room = string_->value.length() - used_;
    // A target that has no room will never have any.
    if (room == 0) return fail();
    const std::size_t count = std::min(bytes.size(), room);
    std::memcpy(string_->value.bytes() + used_, bytes.data(), count);
    used_ += count;
    bytes = bytes.subspan(count);
  }
}

}  // namespace

SourcePointer sourceOf(Interpreter& interpreter, const Object& operand) {
  if (operand.isFile()) {
    if (!operand.isReadable() || !fileOf(operand).isReadable()) raise(ErrorName::kInvalidAccess);
    return fileOf(operand).sourcePointer();
  }
  if (operand.isString()) {
    if (!operand.isReadable()) raise(ErrorName::kInvalidAccess);
    return std::make_shared<MemorySource>(bytesOf(textOf(operand)));
  }
  if (!operand.isProcedure()) raise(ErrorName::kTypeCheck);
  return std::make_shared<PieceSource>([&interpreter, operand]() -> std::optional<Bytes> {
    interpreter.runAndWait(operand);
    const Object string = popString(interpreter);
    if (!string.isReadable()) raise(ErrorName::kInvalidAccess);
    return bytesOf(textOf(string));
  });
}

SinkPointer targetOf(Interpreter& interpreter, const Object& operand) {
  if (operand.isFile()) {
    if (!operand.isWritable() || !fileOf(operand).isWritable()) raise(ErrorName::kInvalidAccess);
    return fileOf(operand).sinkPointer();
  }
  if (operand.isString()) {
    if (!operand.isWritable()) raise(ErrorName::kInvalidAccess);
    return std::make_shared<BufferSink>(std::span(operand.bytes(), operand.length()));
  }
  if (!operand.isProcedure()) raise(ErrorName::kTypeCheck);
  return std::make_shared<ProcedureSink>(interpreter, operand);
}

}  // namespace quillpress::level3
