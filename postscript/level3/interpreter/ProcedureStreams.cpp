#include "postscript/level3/interpreter/ProcedureStreams.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>

#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// The operands of the operator that is waiting for a procedure. The procedure must leave them alone, and one
// that does not must not make that operator use what is gone.
class WaitingOperands final : public Roots {
 public:
  explicit WaitingOperands(Interpreter& interpreter)
      : operands_(interpreter.operands()),
        depth_(operands_.depth()),
        kept_(std::min(depth_, Operator::kMaxOperands)),
        scope_(interpreter.memory(), *this) {
    const std::span<const Object> topmost = operands_.last(kept_);
    std::copy(topmost.begin(), topmost.end(), objects_.begin());
  }

  void trace(Tracer& tracer) const override { tracer.visit(std::span(objects_).first(kept_)); }

  void putBack() {
    operands_.popTo(std::min(operands_.depth(), depth_ - kept_));
    while (operands_.depth() < depth_ - kept_) operands_.push(Object::null());
    for (std::size_t i = 0; i < kept_; ++i) operands_.push(objects_[i]);
  }

 private:
  ObjectStack& operands_;
  std::size_t depth_;
  std::size_t kept_;
  std::array<Object, Operator::kMaxOperands> objects_;
  RootsScope scope_;
};

// Runs a procedure on the given operands; returns the string that it leaves.
Object stringFrom(Interpreter& interpreter, const Object& procedure, std::span<const Object> given) {
  ObjectStack& operands = interpreter.operands();
  std::optional<WaitingOperands> waiting;
  if (!interpreter.hasOperandsAside()) waiting.emplace(interpreter);
  operands.require(given.size());
  for (const Object& operand : given) operands.push(operand);
  interpreter.runAndWait(procedure);
  const bool hasResult = operands.depth() > 0;
  const Object string = hasResult ? operands.top() : Object::null();
  if (waiting) {
    waiting->putBack();
  } else if (hasResult) {
    operands.pop();
  }
  if (!hasResult) raise(ErrorName::kStackUnderflow);
  if (!string.isString()) raise(ErrorName::kTypeCheck);
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
  const std::shared_ptr<Rooted> full = std::move(string_);
  const auto used = static_cast<std::uint32_t>(std::exchange(used_, 0));
  const Object text = full ? full->value.interval(0, used) : interpreter.memory().newString(std::size_t{0});
  const Object string = stringFrom(interpreter, procedure_, std::array{text, Object::boolean(moreToCome)});
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

void ProcedureSource::endedWithin(std::string_view what) {
  const Object program = interpreter_.currentFile();
  if (!program.isFile() || !fileOf(program).isReadable()) return;
  ByteSource& source = fileOf(program).source();
  if (!source.refill()) source.endedWithin(what);
}

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
  return std::make_shared<ProcedureSource>(interpreter, [&interpreter, operand]() -> std::optional<Bytes> {
    const Object string = stringFrom(interpreter, operand, {});
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
