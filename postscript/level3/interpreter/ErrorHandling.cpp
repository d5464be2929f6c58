#include "postscript/level3/interpreter/Interpreter.h"

namespace quillpress::level3 {

namespace {

constexpr std::size_t kWorthCollecting = 1024UL * 1024;

// New values go to local memory, whatever the job has chosen, while this lives.
class LocalMemoryScope {
 public:
  explicit LocalMemoryScope(VirtualMemory& memory) : memory_(memory), wasGlobal_(memory.isGlobal()) {
    memory_.setGlobal(false);
  }
  ~LocalMemoryScope() { memory_.setGlobal(wasGlobal_); }
  LocalMemoryScope(const LocalMemoryScope&) = delete;
  LocalMemoryScope& operator=(const LocalMemoryScope&) = delete;

 private:
  VirtualMemory& memory_;
  bool wasGlobal_;
};

}  // namespace

// Between two objects unused values can be let go; an operator that found no room then gets a second chance,
// for its operands are still there.
bool Interpreter::canRetry(ErrorName name, const Object& command) {
  if (name != ErrorName::kVmError || !command.is(Type::kOperator)) return false;
  if (memory_.allocatedSinceCollection() < kWorthCollecting) return false;
  memory_.collect();
  return true;
}

// Calls the handler in errordict, with the object that failed on the operand stack.
void Interpreter::enterHandler(ErrorName name, const Object& command) {
  if (canRetry(name, command)) {
    execution_.push(command);
    return;
  }
  // Without room for the handler's operand that is the error, or a handler that fails itself goes on for
  // ever.
  if (operands_.room() < 2) name = ErrorName::kStackOverflow;
  gatherOverflow(name);
  if (execution_.room() < 2) gatherOverflow(ErrorName::kExecStackOverflow);
  Name* const errorName = memory_.name(textOf(name));
  if (const Object* const handler = errorDictionary_->find(errorName)) {
    operands_.push(command);
    execution_.push(*handler);
  } else {
    recordError(errorName, command);
    wasCut_ = false;
  }
}

// A stack that is too full leaves as one array, so that the handler has room.
void Interpreter::gatherOverflow(ErrorName name) {
  if (name == ErrorName::kStackOverflow) {
    const Object array = stackArray(operands_.all());
    operands_.popTo(0);
    operands_.push(array);
  } else if (name == ErrorName::kExecStackOverflow) {
    operands_.push(stackArray(execution_.all()));
    // The handler stops, so only the contexts that can catch that are of use; deeper levels must stay.
    std::size_t depth = execution_.depth();
    const std::span<Object> frames = execution_.all();
    while (depth > 0 && (frames[depth - 1].tag() != Object::executable(Type::kOperator) ||
                         frames[depth - 1].asOperator()->kind <= OperatorKind::kLoop)) {
      --depth;
    }
    execution_.popTo(depth);
  } else if (name == ErrorName::kDictStackOverflow) {
    std::vector<Object> stack;
    for (std::size_t i = 0; i < dictionaries().depth(); ++i) {
      stack.push_back(Object::dictionary(dictionaries().at(i)));
    }
    const Object array = stackArray(stack);
    dictionaries().clear();
    if (operands_.room() > 0) operands_.push(array);
  }
}

Object Interpreter::stackArray(std::span<const Object> stack) {
  const LocalMemoryScope local(memory_);
  try {
    return memory_.newArray(stack);
  } catch (const PostscriptError&) {
    // No room for that either; an error must not end in another one.
    return noStack_;
  }
}

void Interpreter::recordError(Name* errorName, const Object& command) {
  const auto set = [this](std::string_view key, const Object& value) {
    memory_.put(*errorState_, memory_.name(key), value);
  };
  set("newerror", Object::boolean(true));
  set("errorname", Object::literalName(errorName));
  set("command", command);
  const Object* const recorded = errorState_->find(memory_.name("recordstacks"));
  if (recorded != nullptr && recorded->is(Type::kBoolean) && recorded->asBoolean()) {
    std::vector<Object> dictionaryStack;
    for (std::size_t i = 0; i < dictionaries().depth(); ++i) {
      dictionaryStack.push_back(Object::dictionary(dictionaries().at(i)));
    }
    set("ostack", stackArray(operands_.all()));
    set("estack", stackArray(execution_.all()));
    set("dstack", stackArray(dictionaryStack));
  }
  stop();
}

}  // namespace quillpress::level3
