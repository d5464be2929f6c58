#include <algorithm>
#include <new>
#include <utility>

#include "postscript/level3/interpreter/Interpreter.h"
#include "postscript/level3/streams/MemoryStreams.h"

namespace quillpress::level3 {

namespace {

// Often enough for a deadline, rarely enough to cost nothing.
constexpr int kPatience = 4096;

// The rest of a procedure whose next element is at `next`.
Object restOf(const Object& procedure, const Object* next, const Object* end) {
  const auto count = static_cast<std::uint32_t>(end - next);
  return procedure.interval(procedure.length() - count, count);
}

// An object that a procedure holds as data, a procedure within it too: what is not executed, or stands for
// itself.
constexpr bool isDataInProcedure(Object::Tag tag) {
  constexpr std::uint32_t kExecuted =
      (1U << Object::executable(Type::kName)) | (1U << Object::executable(Type::kOperator)) |
      (1U << Object::executable(Type::kString)) | (1U << Object::executable(Type::kFile)) |
      (1U << Object::executable(Type::kNull));
  return ((kExecuted >> tag) & 1) == 0;
}

}  // namespace

inline void Interpreter::call(const Operator& called) {
  if (operands_.depth() < called.operandCount) rejectOperands(called);
  const Object* operand = operands_.end();
  const std::uint32_t* accepted = called.operands.data();
  for (const Object* const deepest = operand - called.operandCount; operand != deepest; ++accepted) {
    --operand;
    if (((*accepted >> operand->tag()) & 1) == 0) rejectOperands(called);
  }
  called.function(*this);
}

// From the top down: an operand of the wrong type is found before a missing one below it, mostly.
void Interpreter::rejectOperands(const Operator& called) const {
  if (called.countsFirst && operands_.depth() < called.operandCount) raise(ErrorName::kStackUnderflow);
  for (std::size_t i = 0; i < called.operandCount; ++i) {
    if (i >= operands_.depth()) raise(ErrorName::kStackUnderflow);
    if (((called.operands[i] >> operands_.top(i).tag()) & 1) == 0) raise(ErrorName::kTypeCheck);
  }
  raise(ErrorName::kTypeCheck);
}

// The interpreter's loop. One function, because what every object passes through should stay in registers:
// the place in the procedure that is being executed. That procedure is the topmost object of the execution
// stack; what is left of it is written there only when something else is put above it.
//
// A procedure that has come to its last element leaves the stack before that element's own procedure enters
// it, so that a loop written as a recursion at the end of a procedure needs no room.
void Interpreter::runLoop() {
  const Object* next = nullptr;
  const Object* end = nullptr;  // null when no procedure is being executed
  // What is said to have failed when something fails: the operator that is being called, or else this.
  Object taken;
  const Object* object = &taken;
  const Operator* called = nullptr;
  for (;;) {
    try {
      for (;;) {
        if (next != end) {
          object = next++;
          if (isDataInProcedure(object->tag())) {
            operands_.push(*object);
            continue;
          }
        } else {
          if (end != nullptr) {
            execution_.pop();
            // Mostly back to the procedure that called this one.
            if (resume(next, end)) continue;
          }
          next = end = nullptr;
          if (--patience_ < 0) housekeeping();
          object = &taken;
          const Next outcome = takeNext(taken, next, end);
          if (outcome == Next::kAgain) continue;
          if (outcome == Next::kEnd) return;
        }
        const Object* procedure = object;
      dispatch:
        switch (object->tag()) {
          case Object::executable(Type::kName): {
            const Object* const value = dictionaries().find(object->asName());
            if (value == nullptr) raise(ErrorName::kUndefined);
            if (value->tag() == Object::executable(Type::kOperator)) {
              called = value->asOperator();
              goto callOperator;
            }
            if (value->isProcedure()) {
              // The name stays in hand: it is what an error will be said to be in.
              procedure = value;
              goto callProcedure;
            }
            if (value->isExecutable()) {
              // A name that stands for itself, say, must not hang the interpreter.
              if (--patience_ < 0) housekeeping();
              taken = *value;
              object = procedure = &taken;
              goto dispatch;
            }
            operands_.push(*value);
            continue;
          }
          case Object::executable(Type::kOperator):
            called = object->asOperator();
            goto callOperator;
          case Object::executable(Type::kArray):
          case Object::executable(Type::kPackedArray):
            goto callProcedure;
          case Object::executable(Type::kString):
          case Object::executable(Type::kFile):
            if (end != nullptr && next != end) execution_.top() = restOf(execution_.top(), next, end);
            if (end != nullptr && next == end) execution_.pop();
            next = end = nullptr;
            execution_.push(*object);
            continue;
          case Object::executable(Type::kNull):
            continue;
          default:
            operands_.push(*object);
            continue;
        }

      callProcedure:
        if (procedure->access() == Access::kNone) raise(ErrorName::kInvalidAccess);
        if (end != nullptr) {
          if (next == end) {
            execution_.pop();
          } else {
            execution_.top() = restOf(execution_.top(), next, end);
          }
          next = end = nullptr;
        }
        if (procedure->length() == 0) continue;
        execution_.push(*procedure);
        next = procedure->elements();
        end = next + procedure->length();
        if (--patience_ < 0) housekeeping();
        continue;

      callOperator:
        const Object* const before = execution_.end();
        call(*called);
        called = nullptr;
        if (execution_.end() == before) continue;
        // Control went elsewhere: down, or to what now stands above this procedure.
        if (!wasCut_ && end != nullptr) {
          const std::size_t above = static_cast<std::size_t>(execution_.end() - before);
          Object& suspended = execution_.top(above);
          if (next != end) {
            suspended = restOf(suspended, next, end);
          } else {
            std::copy(&suspended + 1, &suspended + 1 + above, &suspended);
            execution_.pop();
          }
        }
        wasCut_ = false;
        next = end = nullptr;
      }
    } catch (const PostscriptError& error) {
      suspendProcedure(next, end);
      next = end = nullptr;
      const Object failed = called != nullptr ? Object::operatorOf(called) : *object;
      called = nullptr;
      enterHandler(error.name, error.command == nullptr ? failed : Object::executableName(error.command));
    } catch (const std::bad_alloc&) {
      suspendProcedure(next, end);
      next = end = nullptr;
      const Object failed = called != nullptr ? Object::operatorOf(called) : *object;
      called = nullptr;
      enterHandler(ErrorName::kVmError, failed);
    } catch (const Stop&) {
      // Out of a nested run: its `stopped` context, if any, is on this side.
      next = end = nullptr;
      called = nullptr;
      stop();
      wasCut_ = false;
    }
  }
}

// Goes on with the topmost procedure of the execution stack; false when something else is there.
inline bool Interpreter::resume(const Object*& next, const Object*& end) const {
  const Object& top = execution_.top();
  const bool isProcedure =
      top.tag() == Object::executable(Type::kArray) || top.tag() == Object::executable(Type::kPackedArray);
  if (!isProcedure || top.access() == Access::kNone) return false;
  next = top.elements();
  end = next + top.length();
  return true;
}

// Takes the topmost object off the execution stack, or goes on with it: a procedure is loaded, a file or
// string gives its next token, a loop makes its next turn.
inline Interpreter::Next Interpreter::takeNext(Object& object, const Object*& next, const Object*& end) {
  const Object& top = execution_.top();
  switch (top.tag()) {
    case Object::executable(Type::kArray):
    case Object::executable(Type::kPackedArray):
      if (top.access() == Access::kNone) {
        object = top;
        execution_.pop();
        raise(ErrorName::kInvalidAccess);
      }
      if (top.length() == 0) {
        execution_.pop();
        return Next::kAgain;
      }
      next = top.elements();
      end = next + top.length();
      return Next::kAgain;
    case Object::executable(Type::kOperator): {
      object = top;
      const Operator& called = *object.asOperator();
      switch (called.kind) {
        case OperatorKind::kLoop:
          called.function(*this);
          wasCut_ = false;
          return Next::kAgain;
        case OperatorKind::kStopped:
          operands_.push(Object::boolean(false));
          execution_.pop();
          return Next::kAgain;
        case OperatorKind::kBarrier:
          execution_.pop();
          return Next::kEnd;
        case OperatorKind::kPlain:
          break;
      }
      execution_.pop();
      return Next::kObject;
    }
    case Object::executable(Type::kFile):
      return scanFile(object);
    case Object::executable(Type::kString):
      return scanString(object);
    default:
      object = top;
      execution_.pop();
      return Next::kObject;
  }
}

Interpreter::Next Interpreter::scanFile(Object& object) {
  object = execution_.top();
  if (object.access() == Access::kNone) {
    execution_.pop();
    raise(ErrorName::kInvalidAccess);
  }
  File& file = fileOf(object);
  Object token;
  if (file.isClosed() || !file.isReadable() || !scanner_.scan(file.source(), token, nesting_ == 0)) {
    // The end of a file that is executed closes it.
    execution_.pop();
    if (!file.isClosed()) file.close();
    return Next::kAgain;
  }
  object = token;
  if (!token.isProcedure() || scanner_.wasSequence()) return Next::kObject;
  operands_.push(token);
  return Next::kAgain;
}

Interpreter::Next Interpreter::scanString(Object& object) {
  object = execution_.top();
  if (object.access() == Access::kNone) {
    execution_.pop();
    raise(ErrorName::kInvalidAccess);
  }
  MemorySource source(bytesOf(textOf(object)));
  Object token;
  if (!scanner_.scan(source, token)) {
    execution_.pop();
    return Next::kAgain;
  }
  const auto used = static_cast<std::uint32_t>(source.position());
  // A string that has been read to its end leaves before its last token, as a procedure does.
  if (used == object.length()) {
    execution_.pop();
  } else {
    execution_.top() = object.interval(used, object.length() - used);
  }
  object = token;
  if (!token.isProcedure() || scanner_.wasSequence()) return Next::kObject;
  operands_.push(token);
  return Next::kAgain;
}

// Before an error is handled: what the handler returns to.
void Interpreter::suspendProcedure(const Object* next, const Object* end) {
  wasCut_ = false;
  if (end == nullptr) return;
  if (next == end) {
    execution_.pop();
  } else {
    execution_.top() = restOf(execution_.top(), next, end);
  }
}

void Interpreter::endIfInterrupted() const {
  const int reason = interruption_.load(std::memory_order_relaxed);
  if (reason >= 0) throw Abort{static_cast<ErrorName>(reason)};
  if (deadline_ && std::chrono::steady_clock::now() >= *deadline_) throw Abort{ErrorName::kTimeout};
}

void Interpreter::housekeeping() {
  patience_ = kPatience;
  endIfInterrupted();
  if (!isCollectionDue_ && !memory_.wantsCollection()) return;
  isCollectionDue_ = false;
  memory_.collect();
}

void Interpreter::runAndWait(const Object& procedure) {
  if (nesting_ >= kMaxNesting) raise(ErrorName::kLimitCheck);
  // Whatever ends the nested run early takes the rest of it off the execution stack.
  class Nested {
   public:
    explicit Nested(Interpreter& interpreter)
        : interpreter_(interpreter),
          depth_(interpreter.execution_.depth()),
          hadOperandsAside_(std::exchange(interpreter.hasOperandsAside_, false)) {
      ++interpreter_.nesting_;
    }
    ~Nested() {
      --interpreter_.nesting_;
      interpreter_.hasOperandsAside_ = hadOperandsAside_;
      interpreter_.execution_.popTo(depth_);
    }

   private:
    Interpreter& interpreter_;
    std::size_t depth_;
    bool hadOperandsAside_;
  };
  execution_.require(2);
  const Nested nested(*this);
  execution_.push(barrier_);
  execution_.push(procedure.isExecutable() ? procedure : procedure.asExecutable());
  runLoop();
}

void Interpreter::exitLoop() {
  const std::span<Object> frames = execution_.all();
  for (std::size_t i = frames.size(); i > 0; --i) {
    const Object& object = frames[i - 1];
    if (object.tag() != Object::executable(Type::kOperator)) continue;
    const Operator& met = *object.asOperator();
    if (met.kind == OperatorKind::kLoop) {
      execution_.popTo(i - met.frameSize);
      wasCut_ = true;
      return;
    }
    if (met.kind != OperatorKind::kPlain) break;
  }
  raise(ErrorName::kInvalidExit);
}

void Interpreter::stop() {
  const std::span<Object> frames = execution_.all();
  for (std::size_t i = frames.size(); i > 0; --i) {
    const Object& object = frames[i - 1];
    if (object.tag() != Object::executable(Type::kOperator)) continue;
    const Operator& met = *object.asOperator();
    if (met.kind == OperatorKind::kBarrier) break;
    if (met.kind != OperatorKind::kStopped) continue;
    execution_.popTo(i - 1);
    wasCut_ = true;
    // Full of operands: the truth of this matters more than the topmost of them.
    if (operands_.room() == 0) operands_.pop();
    operands_.push(Object::boolean(true));
    return;
  }
  throw Stop{};
}

void Interpreter::quit() {
  throw Quit{};
}

void Interpreter::runStopped(const Object& object) {
  execution_.require(2);
  execution_.push(stopped_);
  execution_.push(object);
}

}  // namespace quillpress::level3
